// The argument lists of Mul with two matrix operands, each written once for
// both element types.
#pragma once

#include "common/types.h"
#include "kernels.h"

namespace kelm {

// --- argument lists ----------------------------------------------------------
// Suffix 0: a single matrix, 1: an array of matrices.


#define KELM_MUL_SRC_S0(T, X) const T *X, int X##RowStride, int X##ElemStride, int X##Width, int X##Height
#define KELM_MUL_SRC_S1(T, X) \
    const T *X, int X##ObjStride, int X##RowStride, int X##ElemStride, int X##Width, int X##Height
#define KELM_MUL_SRC_P0(T, X) const T *const *X, int X##ObjShift, int X##Width, int X##Height
#define KELM_MUL_SRC_P1(T, X) const T *const *X, int X##ObjShift, int X##ObjStride, int X##Width, int X##Height
#define KELM_MUL_SRC_L0 KELM_MUL_SRC_S0
#define KELM_MUL_SRC_L1(T, X) \
    const T *const *X, int X##ObjShift, int X##RowStride, int X##ElemStride, int X##Width, int X##Height

#define KELM_MUL_DST_S0(T) T *dst, int dstRowStride, int dstElemStride
#define KELM_MUL_DST_S1(T) T *dst, int dstObjStride, int dstRowStride, int dstElemStride
#define KELM_MUL_DST_P0(T) T *const *dst, int dstObjShift
#define KELM_MUL_DST_P1(T) T *const *dst, int dstObjShift, int dstObjStride
#define KELM_MUL_DST_L1(T) T *const *dst, int dstObjShift, int dstRowStride, int dstElemStride

// Descriptions.
#define KELM_MUL_D_S0(T, X, W) mat(X, X##RowStride, X##ElemStride)
#define KELM_MUL_D_S1(T, X, W) mats(X, X##ObjStride, X##RowStride, X##ElemStride)
#define KELM_MUL_D_P0(T, X, W) ptrs<T>(X, X##ObjShift, 0, W)
#define KELM_MUL_D_P1(T, X, W) ptrs<T>(X, X##ObjShift, X##ObjStride, W)
#define KELM_MUL_D_L0 KELM_MUL_D_S0
#define KELM_MUL_D_L1(T, X, W) list(X, X##ObjShift, X##RowStride, X##ElemStride)

// Strides to test, per operand (a single operand of a _P call has none: the
// element size stands in, which always passes).
#define KELM_MUL_STR_S0(T, X) X##RowStride, X##ElemStride
#define KELM_MUL_STR_S1(T, X) X##ObjStride, X##RowStride, X##ElemStride
#define KELM_MUL_STR_P0(T, X) int(sizeof(T))
#define KELM_MUL_STR_P1(T, X) X##ObjStride
#define KELM_MUL_STR_L0 KELM_MUL_STR_S0
#define KELM_MUL_STR_L1(T, X) X##RowStride, X##ElemStride
// Shifts of a _L call: only the list operands have one.
#define KELM_MUL_SHF_L0(X) 0
#define KELM_MUL_SHF_L1(X) X##ObjShift

#define KELM_MUL_SIZES(TR1, TR2) \
    const MulSizes sz = mul_sizes<TR1, TR2>(src1Width, src1Height, src2Width, src2Height)

// Single pairs: strided and _P; null, size, agreement, then stride or shift.
#define KELM_MUL_MM_T(T, S, NAME, TR1, TR2)                                                                        \
    extern "C" KELM_API kelStatus NAME##_##S(KELM_MUL_SRC_S0(T, src1), KELM_MUL_SRC_S0(T, src2),                 \
                                             KELM_MUL_DST_S0(T))                                                  \
    {                                                                                                              \
        KELM_MUL_SIZES(TR1, TR2);                                                                                  \
        KELM_CHECKS(nulls(src1, src2, dst), sizes(src1Width, src1Height, src2Width, src2Height), agree(sz.agree), \
                    strides<T>(src1RowStride, src1ElemStride), strides<T>(src2RowStride, src2ElemStride),         \
                    strides<T>(dstRowStride, dstElemStride));                                                      \
        return mul_serial<TR1, TR2, false, false>(1, mat(src1, src1RowStride, src1ElemStride),                 \
                                                     mat(src2, src2RowStride, src2ElemStride),                    \
                                                     mat(dst, dstRowStride, dstElemStride), sz.m, sz.kk, sz.n);   \
    }                                                                                                              \
    extern "C" KELM_API kelStatus NAME##_##S##_P(KELM_MUL_SRC_P0(T, src1), KELM_MUL_SRC_P0(T, src2),             \
                                                 KELM_MUL_DST_P0(T))                                              \
    {                                                                                                              \
        KELM_MUL_SIZES(TR1, TR2);                                                                                  \
        KELM_CHECKS(nulls(src1, src2, dst), sizes(src1Width, src1Height, src2Width, src2Height), agree(sz.agree), \
                    shifts<T>(src1ObjShift, src2ObjShift, dstObjShift));                                           \
        return ownkelmMul<TR1, TR2, false, false>(1, ptrs<T>(src1, src1ObjShift, 0, src1Width),               \
                                                     ptrs<T>(src2, src2ObjShift, 0, src2Width),                   \
                                                     ptrs<T>(dst, dstObjShift, 0, sz.n), sz.m, sz.kk, sz.n);      \
    }
#define KELM_MUL_MM(NAME, TR1, TR2) KELM_FOR_TYPES(KELM_MUL_MM_T, NAME, TR1, TR2)

// An array entry's tail: decide on the work measure, then run the parallel
// driver or the serial kernel.
#define KELM_MUL_RUN(NAME, T, FORM, UNIT, TR1, TR2, A1, A2, DA, DB, DD)                                          \
    {                                                                                                              \
        const auto a_ = DA;                                                                                        \
        const auto b_ = DB;                                                                                        \
        const auto d_ = DD;                                                                                        \
        const I32 work = mul_work(A1, A2, src1Width, src1Height, src2Width, src2Height, sz.m, sz.n, count);       \
        if (mul_parallel<T, MulForm::FORM>(work, UNIT))                                                            \
            return ownOMP_##NAME(count, a_, b_, d_, sz.m, sz.kk, sz.n);                                            \
        return mul_serial<TR1, TR2, !A1, !A2>(count, a_, b_, d_, sz.m, sz.kk, sz.n);                              \
    }

#define KELM_MUL_UNIT(T) (src1ElemStride == int(sizeof(T)) && src2ElemStride == int(sizeof(T)) && \
                          dstElemStride == int(sizeof(T)))

// Array members (A1, A2: which source is an array): strided, _P and _L;
// null, count, size, agreement, stride, shift.
#define KELM_MUL_ARR_T(T, S, NAME, TR1, TR2, A1, A2)                                                              \
    extern "C" KELM_API kelStatus NAME##_##S(KELM_MUL_SRC_S##A1(T, src1), KELM_MUL_SRC_S##A2(T, src2),           \
                                             KELM_MUL_DST_S1(T), int count)                                       \
    {                                                                                                              \
        KELM_MUL_SIZES(TR1, TR2);                                                                                  \
        KELM_CHECKS(nulls(src1, src2, dst), counts(count), sizes(src1Width, src1Height, src2Width, src2Height),   \
                    agree(sz.agree), strides<T>(KELM_MUL_STR_S##A1(T, src1)),                                      \
                    strides<T>(KELM_MUL_STR_S##A2(T, src2)), strides<T>(KELM_MUL_STR_S1(T, dst)));                 \
        KELM_MUL_RUN(NAME, T, Strided, KELM_MUL_UNIT(T), TR1, TR2, A1, A2, KELM_MUL_D_S##A1(T, src1, 0),                \
                     KELM_MUL_D_S##A2(T, src2, 0), KELM_MUL_D_S1(T, dst, 0))                                       \
    }                                                                                                              \
    extern "C" KELM_API kelStatus NAME##_##S##_P(KELM_MUL_SRC_P##A1(T, src1), KELM_MUL_SRC_P##A2(T, src2),       \
                                                 KELM_MUL_DST_P1(T), int count)                                   \
    {                                                                                                              \
        KELM_MUL_SIZES(TR1, TR2);                                                                                  \
        KELM_CHECKS(nulls(src1, src2, dst), counts(count), sizes(src1Width, src1Height, src2Width, src2Height),   \
                    agree(sz.agree),                                                                               \
                    strides<T>(KELM_MUL_STR_P##A1(T, src1), KELM_MUL_STR_P##A2(T, src2), dstObjStride),           \
                    shifts<T>(src1ObjShift, src2ObjShift, dstObjShift));                                           \
        KELM_MUL_RUN(NAME, T, Pointer, true, TR1, TR2, A1, A2, KELM_MUL_D_P##A1(T, src1, src1Width),                    \
                     KELM_MUL_D_P##A2(T, src2, src2Width), KELM_MUL_D_P1(T, dst, sz.n))                            \
    }                                                                                                              \
    extern "C" KELM_API kelStatus NAME##_##S##_L(KELM_MUL_SRC_L##A1(T, src1), KELM_MUL_SRC_L##A2(T, src2),       \
                                                 KELM_MUL_DST_L1(T), int count)                                   \
    {                                                                                                              \
        KELM_MUL_SIZES(TR1, TR2);                                                                                  \
        KELM_CHECKS(nulls(src1, src2, dst), counts(count), sizes(src1Width, src1Height, src2Width, src2Height),   \
                    agree(sz.agree), strides<T>(KELM_MUL_STR_L##A1(T, src1)),                                      \
                    strides<T>(KELM_MUL_STR_L##A2(T, src2)), strides<T>(dstRowStride, dstElemStride),             \
                    shifts<T>(KELM_MUL_SHF_L##A1(src1), KELM_MUL_SHF_L##A2(src2), dstObjShift));                  \
        KELM_MUL_RUN(NAME, T, List, KELM_MUL_UNIT(T), TR1, TR2, A1, A2, KELM_MUL_D_L##A1(T, src1, 0),                   \
                     KELM_MUL_D_L##A2(T, src2, 0), KELM_MUL_D_L1(T, dst, 0))                                       \
    }
// The member's parallel driver (one template for both element types and all
// three descriptions), then its entries.
#define KELM_MUL_ARR(NAME, TR1, TR2, A1, A2)                                                   \
    template <class A, class B, class D>                                                       \
    kelStatus ownOMP_##NAME(int count, const A& a, const B& b, const D& d, int m, int kk, int n) \
    {                                                                                          \
        return ownOMP_kelmMul<TR1, TR2, !A1, !A2>(count, a, b, d, m, kk, n);                   \
    }                                                                                          \
    KELM_FOR_TYPES(KELM_MUL_ARR_T, NAME, TR1, TR2, A1, A2)

// The four transpositions of one array form: A1 and A2 say which operands are
// arrays, S1 and S2 are their name letters ("a" or nothing), so
// KELM_MUL_ARR_ALL(a, , 1, 0) defines kelmMul_mam, _mat, _tam and _tat.
#define KELM_MUL_ARR_ALL(S1, S2, A1, A2)                           \
    KELM_MUL_ARR(kelmMul_m##S1##m##S2, false, false, A1, A2)        \
    KELM_MUL_ARR(kelmMul_m##S1##t##S2, false, true, A1, A2)         \
    KELM_MUL_ARR(kelmMul_t##S1##m##S2, true, false, A1, A2)         \
    KELM_MUL_ARR(kelmMul_t##S1##t##S2, true, true, A1, A2)

}  // namespace kelm
