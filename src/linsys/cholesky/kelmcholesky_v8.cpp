// The exported four-lane 32f kernels: CholoDec_32f_V8 behind the contiguous
// kelmCholeskyDecomp_ma_32f of orders 3 to 6, CholBackSubst_32f_V8 and
// CholBackSubst_32f_S2_V8 behind the strided kelmCholeskyBackSubst_mva_32f.
// They check nothing: their callers have.
#include "common/dispatch.h"
#include "kernels.h"

namespace kelm {
namespace {

using Dense32 = Strided<float, true>;
using General32 = Strided<float, false>;

// Groups of four matrices, then the last count mod 4 one at a time; the first
// failing group or matrix ends the call.
template <int N>
KELM_WIDE kelStatus chol4_decomp(Dense32 s, Dense32 d, int count)
{
    int k = 0;
    for (; k + 4 <= count; k += 4)
        if (kelStatus st = chol4_decomp_group<N>(group_of(s, k, 4), group_of(d, k, 4))) return st;
    for (; k < count; ++k)
        if (kelStatus st = chol4_decomp_group<N>(group_of(s, k, 1), group_of(d, k, 1))) return st;
    return kelOk;
}

// One factor, held in locals for orders 3 to 6; vectors four at a time, then
// one at a time.
template <int N, class S, class B>
KELM_WIDE void chol4_mva(S s, B b, B x, int count)
{
    float l[N][N];
    const auto f = s[0];
#pragma GCC unroll 8
    for (int i = 0; i < N; ++i)
#pragma GCC unroll 8
        for (int j = 0; j <= i; ++j) l[i][j] = f(i, j);
    int k = 0;
    for (; k + 4 <= count; k += 4) chol4_solve_group<N>(l, group_of(b, k, 4), group_of(x, k, 4));
    for (; k < count; ++k) chol4_solve_group<N>(l, group_of(b, k, 1), group_of(x, k, 1));
}

template <class S, class B>
KELM_WIDE void chol4_mva_com(S s, B b, B x, int n, int count)
{
    const auto f = s[0];
    int k = 0;
    for (; k + 4 <= count; k += 4) chol4_solve_group_com(f, group_of(b, k, 4), group_of(x, k, 4), n);
    for (; k < count; ++k) chol4_solve_group_com(f, group_of(b, k, 1), group_of(x, k, 1), n);
}

template <class S, class B>
kelStatus chol4_mva_any(S s, B b, B x, int n, int count)
{
    switch (n) {
    case 3: chol4_mva<3>(s, b, x, count); break;
    case 4: chol4_mva<4>(s, b, x, count); break;
    case 5: chol4_mva<5>(s, b, x, count); break;
    case 6: chol4_mva<6>(s, b, x, count); break;
    default: chol4_mva_com(s, b, x, n, count); break;
    }
    return kelOk;
}

}  // namespace

extern "C" KELM_API kelStatus CholoDec_32f_V8(const float* src, int srcObjStride, int srcRowStride, float* dst,
                                              int dstObjStride, int dstRowStride, int n, int count)
{
    const Dense32 s{bytes(src), srcObjStride, srcRowStride, 4}, d{bytes(dst), dstObjStride, dstRowStride, 4};
    switch (n) {
    case 3: return chol4_decomp<3>(s, d, count);
    case 4: return chol4_decomp<4>(s, d, count);
    case 5: return chol4_decomp<5>(s, d, count);
    case 6: return chol4_decomp<6>(s, d, count);
    default: return kelErrSize;
    }
}

extern "C" KELM_API kelStatus CholBackSubst_32f_V8(const float* src1, int src1RowStride, const float* src2,
                                                   int src2ObjStride, float* dst, int dstObjStride, int n, int count)
{
    return chol4_mva_any(Dense32{bytes(src1), 0, src1RowStride, 4}, Dense32{bytes(src2), src2ObjStride, 0, 4},
                         Dense32{bytes(dst), dstObjStride, 0, 4}, n, count);
}

extern "C" KELM_API kelStatus CholBackSubst_32f_S2_V8(const float* src1, int src1RowStride, int src1ElemStride,
                                                      const float* src2, int src2ObjStride, int src2ElemStride,
                                                      float* dst, int dstObjStride, int dstElemStride, int n, int count)
{
    return chol4_mva_any(General32{bytes(src1), 0, src1RowStride, src1ElemStride},
                         General32{bytes(src2), src2ObjStride, 0, src2ElemStride},
                         General32{bytes(dst), dstObjStride, 0, dstElemStride}, n, count);
}

}  // namespace kelm
