// The argument lists of CholeskyDecomp and CholeskyBackSubst, each written
// once; every shape macro defines the strided, _P and (arrays) _L entries of
// one element type, and KELM_CHOL_<SHAPE>() defines both types.
//
// Checks, in this order for every entry: null (source or factor, right-hand
// vectors, destination), count (arrays), order, strides (the pointer forms
// test their object strides only), shifts (_P and _L).
#pragma once

#include "common/types.h"
#include "kernels.h"

// --- CholeskyDecomp_m -------------------------------------------------------------------

#define KELM_CHOL_DECOMP_M_T(T, S, _)                                                                          \
    extern "C" KELM_API kelStatus kelmCholeskyDecomp_m_##S(const T* src, int srcRowStride, int srcElemStride, \
                                                          T* dst, int dstRowStride, int dstElemStride, int n)  \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, dst), sizes(n), strides<T>(srcRowStride, srcElemStride, dstRowStride, dstElemStride)); \
        return with_unit_strides([&](const auto& s, const auto& d) { return ownkelmCholeskyDecomp_m(s[0], d[0], n); }, \
                                 mat(src, srcRowStride, srcElemStride), mat(dst, dstRowStride, dstElemStride)); \
    }                                                                                                          \
    extern "C" KELM_API kelStatus kelmCholeskyDecomp_m_##S##_P(const T* const* src, int srcObjShift,          \
                                                              T* const* dst, int dstObjShift, int n)           \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, dst), sizes(n), shifts<T>(srcObjShift, dstObjShift));                          \
        return ownkelmCholeskyDecomp_m(ptrs<T>(src, srcObjShift, 0, n)[0], ptrs<T>(dst, dstObjShift, 0, n)[0], n); \
    }
#define KELM_CHOL_DECOMP_M() KELM_FOR_TYPES(KELM_CHOL_DECOMP_M_T, _)

// --- CholeskyDecomp_ma ------------------------------------------------------------------

#define KELM_CHOL_DECOMP_MA_T(T, S, _)                                                                         \
    extern "C" KELM_API kelStatus kelmCholeskyDecomp_ma_##S(const T* src, int srcObjStride, int srcRowStride, \
                                                           int srcElemStride, T* dst, int dstObjStride,        \
                                                           int dstRowStride, int dstElemStride, int n, int count) \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, dst), counts(count), sizes(n),                                                  \
                    strides<T>(srcObjStride, srcRowStride, srcElemStride, dstObjStride, dstRowStride,          \
                               dstElemStride));                                                                \
        return chol_decomp_array(CholBounds<T>::decomp, count, mats(src, srcObjStride, srcRowStride, srcElemStride), \
                                 mats(dst, dstObjStride, dstRowStride, dstElemStride), n);                     \
    }                                                                                                          \
    extern "C" KELM_API kelStatus kelmCholeskyDecomp_ma_##S##_P(const T* const* src, int srcObjShift,         \
                                                               int srcObjStride, T* const* dst, int dstObjShift, \
                                                               int dstObjStride, int n, int count)             \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, dst), counts(count), sizes(n), strides<T>(srcObjStride, dstObjStride),         \
                    shifts<T>(srcObjShift, dstObjShift));                                                      \
        return chol_decomp_array(CholBounds<T>::decomp_P, count, ptrs<T>(src, srcObjShift, srcObjStride, n),   \
                                 ptrs<T>(dst, dstObjShift, dstObjStride, n), n);                               \
    }                                                                                                          \
    extern "C" KELM_API kelStatus kelmCholeskyDecomp_ma_##S##_L(const T* const* src, int srcObjShift,         \
                                                               int srcRowStride, int srcElemStride,            \
                                                               T* const* dst, int dstObjShift, int dstRowStride, \
                                                               int dstElemStride, int n, int count)            \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, dst), counts(count), sizes(n),                                                  \
                    strides<T>(srcRowStride, srcElemStride, dstRowStride, dstElemStride),                      \
                    shifts<T>(srcObjShift, dstObjShift));                                                      \
        return chol_decomp_array(CholBounds<T>::decomp_L, count, list(src, srcObjShift, srcRowStride, srcElemStride), \
                                 list(dst, dstObjShift, dstRowStride, dstElemStride), n);                      \
    }
#define KELM_CHOL_DECOMP_MA() KELM_FOR_TYPES(KELM_CHOL_DECOMP_MA_T, _)

// --- CholeskyBackSubst_mv ---------------------------------------------------------------

#define KELM_CHOL_BACKSUBST_MV_T(T, S, _)                                                                      \
    extern "C" KELM_API kelStatus kelmCholeskyBackSubst_mv_##S(const T* src1, int src1RowStride,              \
                                                              int src1ElemStride, const T* src2,               \
                                                              int src2ElemStride, T* dst, int dstElemStride, int n) \
    {                                                                                                          \
        KELM_CHECKS(nulls(src1, src2, dst), sizes(n),                                                          \
                    strides<T>(src1RowStride, src1ElemStride, src2ElemStride, dstElemStride));                 \
        return with_unit_strides(                                                                              \
            [&](const auto& s, const auto& b, const auto& x) { return ownkelmCholeskyBackSubst_mv(s[0], b[0], x[0], n); }, \
            mat(src1, src1RowStride, src1ElemStride), vec(src2, src2ElemStride), vec(dst, dstElemStride));     \
    }                                                                                                          \
    extern "C" KELM_API kelStatus kelmCholeskyBackSubst_mv_##S##_P(const T* const* src1, int src1ObjShift,    \
                                                                  const T* const* src2, int src2ObjShift,     \
                                                                  T* const* dst, int dstObjShift, int n)       \
    {                                                                                                          \
        KELM_CHECKS(nulls(src1, src2, dst), sizes(n), shifts<T>(src1ObjShift, src2ObjShift, dstObjShift));    \
        return ownkelmCholeskyBackSubst_mv(ptrs<T>(src1, src1ObjShift, 0, n)[0], ptrs<T>(src2, src2ObjShift, 0, n)[0], \
                                           ptrs<T>(dst, dstObjShift, 0, n)[0], n);                             \
    }
#define KELM_CHOL_BACKSUBST_MV() KELM_FOR_TYPES(KELM_CHOL_BACKSUBST_MV_T, _)

// --- CholeskyBackSubst_mva: one factor, an array of vectors -----------------------------

#define KELM_CHOL_BACKSUBST_MVA_T(T, S, _)                                                                     \
    extern "C" KELM_API kelStatus kelmCholeskyBackSubst_mva_##S(const T* src1, int src1RowStride,             \
                                                               int src1ElemStride, const T* src2,              \
                                                               int src2ObjStride, int src2ElemStride, T* dst,  \
                                                               int dstObjStride, int dstElemStride, int n,     \
                                                               int count)                                      \
    {                                                                                                          \
        KELM_CHECKS(nulls(src1, src2, dst), counts(count), sizes(n),                                           \
                    strides<T>(src1RowStride, src1ElemStride, src2ObjStride, src2ElemStride, dstObjStride,     \
                               dstElemStride));                                                                \
        return chol_mva_array(CholBounds<T>::mva, count, mat(src1, src1RowStride, src1ElemStride),             \
                              vecs(src2, src2ObjStride, src2ElemStride), vecs(dst, dstObjStride, dstElemStride), n); \
    }                                                                                                          \
    extern "C" KELM_API kelStatus kelmCholeskyBackSubst_mva_##S##_P(const T* const* src1, int src1ObjShift,   \
                                                                   const T* const* src2, int src2ObjShift,    \
                                                                   int src2ObjStride, T* const* dst,          \
                                                                   int dstObjShift, int dstObjStride, int n,  \
                                                                   int count)                                  \
    {                                                                                                          \
        KELM_CHECKS(nulls(src1, src2, dst), counts(count), sizes(n), strides<T>(src2ObjStride, dstObjStride), \
                    shifts<T>(src1ObjShift, src2ObjShift, dstObjShift));                                       \
        return chol_mva_array(CholBounds<T>::mva_P, count, ptrs<T>(src1, src1ObjShift, 0, n),                  \
                              ptrs<T>(src2, src2ObjShift, src2ObjStride, n), ptrs<T>(dst, dstObjShift, dstObjStride, n), n); \
    }                                                                                                          \
    extern "C" KELM_API kelStatus kelmCholeskyBackSubst_mva_##S##_L(const T* src1, int src1RowStride,         \
                                                                   int src1ElemStride, const T* const* src2,  \
                                                                   int src2ObjShift, int src2ElemStride,      \
                                                                   T* const* dst, int dstObjShift,            \
                                                                   int dstElemStride, int n, int count)        \
    {                                                                                                          \
        KELM_CHECKS(nulls(src1, src2, dst), counts(count), sizes(n),                                           \
                    strides<T>(src1RowStride, src1ElemStride, src2ElemStride, dstElemStride),                  \
                    shifts<T>(src2ObjShift, dstObjShift));                                                     \
        return chol_mva_array(CholBounds<T>::mva_L, count, mat(src1, src1RowStride, src1ElemStride),           \
                              list(src2, src2ObjShift, 0, src2ElemStride), list(dst, dstObjShift, 0, dstElemStride), n); \
    }
#define KELM_CHOL_BACKSUBST_MVA() KELM_FOR_TYPES(KELM_CHOL_BACKSUBST_MVA_T, _)

// --- CholeskyBackSubst_mava: arrays of factors and of vectors, paired -------------------

#define KELM_CHOL_BACKSUBST_MAVA_T(T, S, _)                                                                    \
    extern "C" KELM_API kelStatus kelmCholeskyBackSubst_mava_##S(const T* src1, int src1ObjStride,            \
                                                                int src1RowStride, int src1ElemStride,         \
                                                                const T* src2, int src2ObjStride,              \
                                                                int src2ElemStride, T* dst, int dstObjStride,  \
                                                                int dstElemStride, int n, int count)           \
    {                                                                                                          \
        KELM_CHECKS(nulls(src1, src2, dst), counts(count), sizes(n),                                           \
                    strides<T>(src1ObjStride, src1RowStride, src1ElemStride, src2ObjStride, src2ElemStride,    \
                               dstObjStride, dstElemStride));                                                  \
        return chol_mava_array(CholBounds<T>::mava, count, mats(src1, src1ObjStride, src1RowStride, src1ElemStride), \
                               vecs(src2, src2ObjStride, src2ElemStride), vecs(dst, dstObjStride, dstElemStride), n); \
    }                                                                                                          \
    extern "C" KELM_API kelStatus kelmCholeskyBackSubst_mava_##S##_P(const T* const* src1, int src1ObjShift,  \
                                                                    int src1ObjStride, const T* const* src2,  \
                                                                    int src2ObjShift, int src2ObjStride,      \
                                                                    T* const* dst, int dstObjShift,           \
                                                                    int dstObjStride, int n, int count)        \
    {                                                                                                          \
        KELM_CHECKS(nulls(src1, src2, dst), counts(count), sizes(n),                                           \
                    strides<T>(src1ObjStride, src2ObjStride, dstObjStride),                                    \
                    shifts<T>(src1ObjShift, src2ObjShift, dstObjShift));                                       \
        return chol_mava_array(CholBounds<T>::mava_P, count, ptrs<T>(src1, src1ObjShift, src1ObjStride, n),    \
                               ptrs<T>(src2, src2ObjShift, src2ObjStride, n),                                  \
                               ptrs<T>(dst, dstObjShift, dstObjStride, n), n);                                 \
    }                                                                                                          \
    extern "C" KELM_API kelStatus kelmCholeskyBackSubst_mava_##S##_L(const T* const* src1, int src1ObjShift,  \
                                                                    int src1RowStride, int src1ElemStride,    \
                                                                    const T* const* src2, int src2ObjShift,   \
                                                                    int src2ElemStride, T* const* dst,        \
                                                                    int dstObjShift, int dstElemStride, int n, \
                                                                    int count)                                 \
    {                                                                                                          \
        KELM_CHECKS(nulls(src1, src2, dst), counts(count), sizes(n),                                           \
                    strides<T>(src1RowStride, src1ElemStride, src2ElemStride, dstElemStride),                  \
                    shifts<T>(src1ObjShift, src2ObjShift, dstObjShift));                                       \
        return chol_mava_array(CholBounds<T>::mava_L, count, list(src1, src1ObjShift, src1RowStride, src1ElemStride), \
                               list(src2, src2ObjShift, 0, src2ElemStride), list(dst, dstObjShift, 0, dstElemStride), n); \
    }
#define KELM_CHOL_BACKSUBST_MAVA() KELM_FOR_TYPES(KELM_CHOL_BACKSUBST_MAVA_T, _)
