// Matrix-matrix products C = op(A) * op(B): kernels, parallel driver and the
// argument lists of every kelmMul member with two matrix operands.
//
// Every element is c(i, j) = ((0 + a(i,0)b(0,j)) + a(i,1)b(1,j)) + ... in the
// element type, one rounding per product and per addition, k ascending.  The
// sum really starts from +0: a -0 product alone gives +0.  The written-out
// orders on contiguous rows (two rows per eight-lane vector for 32f, four
// columns per vector for 64f), the four-column SSE path for 32f and the
// three-row, two-column SSE2 path for 64f all keep that order, so every path
// gives the same bits.  The object walkers are compiled for the baseline and
// for AVX2 (never with fused multiply-add), the clone picked at load.
//
// Operands are described as stored; TR1/TR2 say whether each is used
// transposed.  A single operand of an array call is a description whose
// object stride is 0.
#pragma once

#include <emmintrin.h>

#include <type_traits>

#include "common/check.h"
#include "common/desc.h"
#include "common/dispatch.h"
#include "common/parallel.h"
#include "common/vectors.h"

namespace kelm {

// Element (i, j) of op(X) from a view of the stored X.
template <bool TR, class V>
inline auto op_at(const V& v, int i, int j)
{
    return TR ? v(j, i) : v(i, j);
}

// One product, any views.  M, K, N above 0 are compile-time sizes.
template <class T, bool TR1, bool TR2, int M, int K, int N, class VA, class VB, class VC>
inline void mul_one(const VA& a, const VB& b, const VC& c, int m, int kk, int n)
{
    const int rows = M ? M : m, inner = K ? K : kk, cols = N ? N : n;
    for (int i = 0; i < rows; ++i)
        for (int j = 0; j < cols; ++j) {
            T s = T(0);
            for (int k = 0; k < inner; ++k) s = s + T(op_at<TR1>(a, i, k)) * T(op_at<TR2>(b, k, j));
            c(i, j) = s;
        }
}

// Loads four (32f) or two (64f) consecutive elements of row k of op(B).
template <bool TR2>
inline __m128 load_row(const DenseView<float, true>& b, int k, int j)
{
    return TR2 ? _mm_setr_ps(b(j, k), b(j + 1, k), b(j + 2, k), b(j + 3, k)) : _mm_loadu_ps(&b(k, j));
}
template <bool TR2>
inline __m128d load_row(const DenseView<double, true>& b, int k, int j)
{
    return TR2 ? _mm_setr_pd(b(j, k), b(j + 1, k)) : _mm_loadu_pd(&b(k, j));
}

// Scalar tail: columns from j0 on, every row.
template <class T, bool TR1, bool TR2, class V>
inline void mul_columns(const V& a, const V& b, const V& c, int rows, int inner, int j0, int cols)
{
    for (int i = 0; i < rows; ++i)
        for (int j = j0; j < cols; ++j) {
            T s = T(0);
            for (int k = 0; k < inner; ++k) s = s + op_at<TR1>(a, i, k) * op_at<TR2>(b, k, j);
            c(i, j) = s;
        }
}

// 32f, contiguous elements: four result columns at a time.  With a fixed
// inner order the rows of op(B) for a column block stay in registers.
template <class T, bool TR1, bool TR2, int M, int K, int N>
inline void mul_one(const DenseView<float, true>& a, const DenseView<float, true>& b,
                    const DenseView<float, true>& c, int m, int kk, int n)
{
    const int rows = M ? M : m, inner = K ? K : kk, cols = N ? N : n;
    const int full = cols - cols % 4;
    for (int j = 0; j < full; j += 4) {
        if constexpr (K > 0) {
            __m128 y[K];
            for (int k = 0; k < K; ++k) y[k] = load_row<TR2>(b, k, j);
            for (int i = 0; i < rows; ++i) {
                __m128 s = _mm_setzero_ps();
                for (int k = 0; k < K; ++k) s = _mm_add_ps(s, _mm_mul_ps(_mm_set1_ps(op_at<TR1>(a, i, k)), y[k]));
                _mm_storeu_ps(&c(i, j), s);
            }
        } else {
            for (int i = 0; i < rows; ++i) {
                __m128 s = _mm_setzero_ps();
                for (int k = 0; k < inner; ++k)
                    s = _mm_add_ps(s, _mm_mul_ps(_mm_set1_ps(op_at<TR1>(a, i, k)), load_row<TR2>(b, k, j)));
                _mm_storeu_ps(&c(i, j), s);
            }
        }
    }
    mul_columns<float, TR1, TR2>(a, b, c, rows, inner, full, cols);
}

// 64f, contiguous elements: up to three result rows at a time, two columns
// per vector, sharing the rows of op(B) among the rows of the result.
template <class T, bool TR1, bool TR2, int M, int K, int N>
inline void mul_one(const DenseView<double, true>& a, const DenseView<double, true>& b,
                    const DenseView<double, true>& c, int m, int kk, int n)
{
    const int rows = M ? M : m, inner = K ? K : kk, cols = N ? N : n;
    const int fullRows = rows - rows % 3, fullCols = cols - cols % 2;
    for (int j = 0; j < fullCols; j += 2) {
        constexpr int Held = K > 0 ? K : 1;
        __m128d y[Held];
        if constexpr (K > 0)
            for (int k = 0; k < K; ++k) y[k] = load_row<TR2>(b, k, j);
        auto row_of_b = [&](int k) {
            if constexpr (K > 0) return y[k];
            else return load_row<TR2>(b, k, j);
        };
        for (int i = 0; i < fullRows; i += 3) {
            __m128d s0 = _mm_setzero_pd(), s1 = _mm_setzero_pd(), s2 = _mm_setzero_pd();
            for (int k = 0; k < inner; ++k) {
                const __m128d v = row_of_b(k);
                s0 = _mm_add_pd(s0, _mm_mul_pd(_mm_set1_pd(op_at<TR1>(a, i, k)), v));
                s1 = _mm_add_pd(s1, _mm_mul_pd(_mm_set1_pd(op_at<TR1>(a, i + 1, k)), v));
                s2 = _mm_add_pd(s2, _mm_mul_pd(_mm_set1_pd(op_at<TR1>(a, i + 2, k)), v));
            }
            _mm_storeu_pd(&c(i, j), s0);
            _mm_storeu_pd(&c(i + 1, j), s1);
            _mm_storeu_pd(&c(i + 2, j), s2);
        }
        for (int i = fullRows; i < rows; ++i) {
            __m128d s = _mm_setzero_pd();
            for (int k = 0; k < inner; ++k) s = _mm_add_pd(s, _mm_mul_pd(_mm_set1_pd(op_at<TR1>(a, i, k)), row_of_b(k)));
            _mm_storeu_pd(&c(i, j), s);
        }
    }
    mul_columns<double, TR1, TR2>(a, b, c, rows, inner, fullCols, cols);
}

// --- written-out square orders on contiguous rows ------------------------------
// op(A) = A and op(B) = B, every element stride the element size.  One source
// serves the baseline and the AVX2 clone of the walker below.

template <int N, int Q>
constexpr int block_width = N - 4 * Q < 4 ? N - 4 * Q : 4;  // columns in block Q of four

template <class T>
inline T* row_at(Bytes p, ptrdiff_t row, int i) { return reinterpret_cast<T*>(p + i * row); }

// Loads the rows of B into registers, four columns per block: b[k][q] holds
// columns 4q.. of row k, loaded as L and laid out by place().
template <class T, class L, int N, class H, class V, class Place>
inline void hold_rows(H (&b)[N][(N + 3) / 4], const V& v, Place place)
{
    vx::unrolled<0, N>([&](auto k) {
        constexpr int K = decltype(k)::value;
        vx::unrolled<0, (N + 3) / 4>([&](auto q) {
            constexpr int J = decltype(q)::value;
            b[K][J] = place(vx::load<L, block_width<N, J>>(row_at<T>(v.p, v.row, K) + 4 * J));
        });
    });
}

// 32f: two result rows at a time in one eight-lane vector (row i in the low
// half, row i + 1 in the high half), four columns per half.  The rows of B,
// each block of four columns doubled over both halves, stay in registers.
template <int N>
struct MmDense32 {
    static constexpr int Q = (N + 3) / 4;
    vx::f8 b[N][Q];

    template <class V>
    void load_b(const V& v)
    {
        hold_rows<float, vx::f4, N>(b, v, [](vx::f4 x) { return vx::twice(x); });
    }

    template <class VA, class VC>
    void apply(const VA& a, const VC& c) const
    {
        vx::unrolled<0, N / 2>([&](auto r) {
            constexpr int I = 2 * decltype(r)::value;
            vx::f8 s[Q] = {};
            vx::unrolled<0, Q>([&](auto qa) {
                constexpr int QA = decltype(qa)::value, W = block_width<N, QA>;
                const vx::f8 pair =
                    N == 4 && a.row == 16 ? vx::load<vx::f8, 8>(row_at<float>(a.p, a.row, I))
                                          : vx::join(vx::load<vx::f4, W>(row_at<float>(a.p, a.row, I) + 4 * QA),
                                                     vx::load<vx::f4, W>(row_at<float>(a.p, a.row, I + 1) + 4 * QA));
                vx::unrolled<0, W>([&](auto kk) {
                    constexpr int KK = decltype(kk)::value;
                    const vx::f8 ak = vx::splat_halves<KK>(pair);
                    vx::unrolled<0, Q>([&](auto q) { s[q] = s[q] + ak * b[4 * QA + KK][q]; });
                });
            });
            if (N == 4 && c.row == 16) {  // packed rows: the pair is one run of eight
                vx::store<8>(row_at<float>(c.p, c.row, I), s[0]);
                return;
            }
            vx::unrolled<0, Q>([&](auto q) {
                constexpr int J = decltype(q)::value;
                vx::store<block_width<N, J>>(row_at<float>(c.p, c.row, I) + 4 * J, vx::lo(s[J]));
                vx::store<block_width<N, J>>(row_at<float>(c.p, c.row, I + 1) + 4 * J, vx::hi(s[J]));
            });
        });
        if constexpr (N % 2) {
            constexpr int I = N - 1;
            vx::f4 s[Q] = {};
            vx::unrolled<0, Q>([&](auto qa) {
                constexpr int QA = decltype(qa)::value, W = block_width<N, QA>;
                const vx::f4 row = vx::load<vx::f4, W>(row_at<float>(a.p, a.row, I) + 4 * QA);
                vx::unrolled<0, W>([&](auto kk) {
                    constexpr int KK = decltype(kk)::value;
                    const vx::f4 ak = vx::splat<KK>(row);
                    vx::unrolled<0, Q>([&](auto q) { s[q] = s[q] + ak * vx::lo(b[4 * QA + KK][q]); });
                });
            });
            vx::unrolled<0, Q>([&](auto q) {
                constexpr int J = decltype(q)::value;
                vx::store<block_width<N, J>>(row_at<float>(c.p, c.row, I) + 4 * J, s[J]);
            });
        }
    }
};

// 64f: one result row at a time, four columns per vector; each a(i, k) is
// spread over a vector and multiplies the held row k of B.
template <int N>
struct MmDense64 {
    static constexpr int Q = (N + 3) / 4;
    vx::d4 b[N][Q];

    template <class V>
    void load_b(const V& v)
    {
        hold_rows<double, vx::d4, N>(b, v, [](vx::d4 x) { return x; });
    }

    template <class VA, class VC>
    void apply(const VA& a, const VC& c) const
    {
        vx::unrolled<0, N>([&](auto r) {
            constexpr int I = decltype(r)::value;
            const double* ai = row_at<double>(a.p, a.row, I);
            vx::d4 s[Q] = {};
            vx::unrolled<0, N>([&](auto k) {
                constexpr int K = decltype(k)::value;
                const double x = ai[K];
                vx::unrolled<0, Q>([&](auto q) { s[q] = s[q] + x * b[K][q]; });
            });
            vx::unrolled<0, Q>([&](auto q) {
                constexpr int J = decltype(q)::value;
                vx::store<block_width<N, J>>(row_at<double>(c.p, c.row, I) + 4 * J, s[J]);
            });
        });
    }
};

template <class D>
constexpr bool dense_rows = std::is_same_v<D, Strided<typename D::Elem, true>> ||
                            std::is_same_v<D, List<typename D::Elem, true>>;

// The walker of the written-out orders on contiguous rows.  A single B (object
// stride 0) is loaded once for the whole run.
template <int N, class A, class B, class D>
static KELM_WIDE __attribute__((flatten)) void mm_dense_run(int count, const A& a, const B& b, const D& d)
{
    using K = std::conditional_t<sizeof(typename D::Elem) == 4, MmDense32<N>, MmDense64<N>>;
    K kernel;
    bool singleB = false;
    if constexpr (std::is_same_v<B, Strided<typename D::Elem, true>>) singleB = b.obj == 0;
    if (singleB) {
        kernel.load_b(b[0]);
        for (int k = 0; k < count; ++k) kernel.apply(a[k], d[k]);
    } else {
        for (int k = 0; k < count; ++k) {
            kernel.load_b(b[k]);
            kernel.apply(a[k], d[k]);
        }
    }
}

// Written-out orders in any other description or with a transposed operand:
// op(A) and op(B) of each object are gathered into local contiguous blocks,
// the product formed there as above and the result scattered out.
template <class T, bool TR1, bool TR2, int N, class A, class B, class D>
static KELM_WIDE __attribute__((flatten)) void mm_gather_run(int count, const A& a, const B& b, const D& d)
{
    using K = std::conditional_t<sizeof(T) == 4, MmDense32<N>, MmDense64<N>>;
    T la[N * N], lb[N * N], lc[N * N];
    const DenseView<T, true> va{bytes(la), ptrdiff_t(N * sizeof(T)), ptrdiff_t(sizeof(T))},
        vb{bytes(lb), ptrdiff_t(N * sizeof(T)), ptrdiff_t(sizeof(T))},
        vc{bytes(lc), ptrdiff_t(N * sizeof(T)), ptrdiff_t(sizeof(T))};
    K kernel;
    for (int k = 0; k < count; ++k) {
        const auto ak = a[k];
        const auto bk = b[k];
        for (int i = 0; i < N; ++i)
            for (int j = 0; j < N; ++j) {
                la[i * N + j] = op_at<TR1>(ak, i, j);
                lb[i * N + j] = op_at<TR2>(bk, i, j);
            }
        kernel.load_b(vb);
        kernel.apply(va, vc);
        const auto dk = d[k];
        for (int i = 0; i < N; ++i)
            for (int j = 0; j < N; ++j) dk(i, j) = lc[i * N + j];
    }
}

// Every other path: the views' own loops, widened as well.
template <class T, bool TR1, bool TR2, int N, class A, class B, class D>
static KELM_WIDE __attribute__((flatten)) void mm_walk(int count, const A& a, const B& b, const D& d, int m, int kk, int n)
{
    for (int k = 0; k < count; ++k) mul_one<T, TR1, TR2, N, N, N>(a[k], b[k], d[k], m, kk, n);
}

// A single operand of a fixed order, copied once into a local contiguous
// block so that it stays in cache and registers over the whole run.
template <class T, int N>
struct Hoisted {
    T e[N * N];
    template <class D>
    explicit Hoisted(const D& d)
    {
        const auto v = d[0];
        for (int i = 0; i < N; ++i)
            for (int j = 0; j < N; ++j) e[i * N + j] = v(i, j);
    }
    Strided<T, true> desc() const { return {bytes(e), 0, ptrdiff_t(N * sizeof(T)), ptrdiff_t(sizeof(T))}; }
};

// A run of count products.  N above 0: both operands square of order N.
// S1/S2: the operand is one matrix reused for every object.
template <bool TR1, bool TR2, bool S1, bool S2, int N, class A, class B, class D>
kelStatus mul_run(int count, const A& a, const B& b, const D& d, int m, int kk, int n)
{
    using T = typename D::Elem;
    if constexpr (N > 0 && S1 && !S2) {
        const Hoisted<T, N> h(a);
        return mul_run<TR1, TR2, false, false, N>(count, h.desc(), b, d, m, kk, n);
    } else if constexpr (N > 0 && S2 && !S1) {
        const Hoisted<T, N> h(b);
        return mul_run<TR1, TR2, false, false, N>(count, a, h.desc(), d, m, kk, n);
    } else {
        if constexpr (N > 0 && !TR1 && !TR2 && dense_rows<A> && dense_rows<B> && dense_rows<D>)
            mm_dense_run<N>(count, a, b, d);
        else if constexpr (N > 0)
            mm_gather_run<T, TR1, TR2, N>(count, a, b, d);
        else
            mm_walk<T, TR1, TR2, N>(count, a, b, d, m, kk, n);
        return kelOk;
    }
}

// The kernel of every description: square operands of orders 3 to 6 take
// written-out code (single pairs and arrays alike: the bits are those of the
// general loop either way), all other sizes the general loop.
template <bool TR1, bool TR2, bool S1, bool S2, class A, class B, class D>
kelStatus ownkelmMul(int count, const A& a, const B& b, const D& d, int m, int kk, int n)
{
    if (m == kk && kk == n) {
        switch (n) {
        case 3: return mul_run<TR1, TR2, S1, S2, 3>(count, a, b, d, m, kk, n);
        case 4: return mul_run<TR1, TR2, S1, S2, 4>(count, a, b, d, m, kk, n);
        case 5: return mul_run<TR1, TR2, S1, S2, 5>(count, a, b, d, m, kk, n);
        case 6: return mul_run<TR1, TR2, S1, S2, 6>(count, a, b, d, m, kk, n);
        default: break;
        }
    }
    return mul_run<TR1, TR2, false, false, 0>(count, a, b, d, m, kk, n);
}

// Serial path: the contiguous kernel when every element stride is the element
// size, else the general-stride one.
template <bool TR1, bool TR2, bool S1, bool S2, class A, class B, class D>
kelStatus mul_serial(int count, const A& a, const B& b, const D& d, int m, int kk, int n)
{
    return with_unit_strides(
        [&](const auto& x, const auto& y, const auto& z) {
            return ownkelmMul<TR1, TR2, S1, S2>(count, x, y, z, m, kk, n);
        },
        a, b, d);
}

// The parallel driver shared by the array members: the same kernel on each
// thread's block.
template <bool TR1, bool TR2, bool S1, bool S2, class A, class B, class D>
kelStatus ownOMP_kelmMul(int count, const A& a, const B& b, const D& d, int m, int kk, int n)
{
    return with_unit_strides(
        [&](const auto& x, const auto& y, const auto& z) {
            return split_over(
                count,
                [&](int mine, const auto& xa, const auto& yb, const auto& zd) {
                    return ownkelmMul<TR1, TR2, S1, S2>(mine, xa, yb, zd, m, kk, n);
                },
                x, y, z);
        },
        a, b, d);
}

// Sizes of op(A) (m x kk) and op(B) (kk x n) from the stored sizes.
struct MulSizes {
    int m, kk, n;
    bool agree;
};
template <bool TR1, bool TR2>
inline MulSizes mul_sizes(int w1, int h1, int w2, int h2)
{
    const int m = TR1 ? w1 : h1, k1 = TR1 ? h1 : w1;
    const int k2 = TR2 ? w2 : h2, n = TR2 ? h2 : w2;
    return {m, k1, n, k1 == k2};
}

// Work measure: every matrix element the call touches, arrays count times,
// in wrapping signed 32-bit arithmetic.
inline I32 mul_work(bool A1, bool A2, int w1, int h1, int w2, int h2, int m, int n, int count)
{
    return I32(w1) * h1 * (A1 ? count : 1) + I32(w2) * h2 * (A2 ? count : 1) + I32(n) * m * count;
}

enum class MulForm { Strided, Pointer, List };

template <class T, MulForm F>
inline bool mul_parallel(I32 work, bool unit)
{
    int limit = 1440;
    if (F == MulForm::Strided && unit) limit = sizeof(T) == 4 ? 2500 : 3600;
    if (F == MulForm::List && unit) limit = 3600;
    return work > limit;
}

}  // namespace kelm
