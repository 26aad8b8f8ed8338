// The argument lists of QRDecomp and QRBackSubst, each written once; every
// shape macro defines the strided, _P and (arrays) _L entries of one element
// type, and KELM_QR_<SHAPE>() defines both types.
//
// Checks, in this order for every entry: null (matrix or factor, buffer,
// right-hand vectors, destination), count (arrays), width and height, strides
// (the pointer forms test their object strides only), shifts (_P and _L), and
// last a matrix wider than high.
#pragma once

#include "common/types.h"
#include "kernels.h"

// --- QRDecomp_m --------------------------------------------------------------------------

#define KELM_QR_DECOMP_M_T(T, S, _)                                                                             \
    extern "C" KELM_API kelStatus kelmQRDecomp_m_##S(const T* src, int srcRowStride, int srcElemStride,          \
                                                    T* buffer, T* dst, int dstRowStride, int dstElemStride,     \
                                                    int width, int height)                                      \
    {                                                                                                           \
        KELM_CHECKS(nulls(src, buffer, dst), sizes(width, height),                                              \
                    strides<T>(srcRowStride, srcElemStride, dstRowStride, dstElemStride), agree(width <= height)); \
        return with_unit_strides(                                                                               \
            [&](const auto& s, const auto& d) { return ownkelmQRDecomp_m(s[0], buffer, d[0], width, height); }, \
            mat(src, srcRowStride, srcElemStride), mat(dst, dstRowStride, dstElemStride));                      \
    }                                                                                                           \
    extern "C" KELM_API kelStatus kelmQRDecomp_m_##S##_P(const T* const* src, int srcObjShift, T* buffer,       \
                                                        T* const* dst, int dstObjShift, int width, int height)  \
    {                                                                                                           \
        KELM_CHECKS(nulls(src, buffer, dst), sizes(width, height), shifts<T>(srcObjShift, dstObjShift),        \
                    agree(width <= height));                                                                    \
        return ownkelmQRDecomp_m(ptrs<T>(src, srcObjShift, 0, width)[0], buffer,                                \
                                 ptrs<T>(dst, dstObjShift, 0, width)[0], width, height);                        \
    }
#define KELM_QR_DECOMP_M() KELM_FOR_TYPES(KELM_QR_DECOMP_M_T, _)

// --- QRDecomp_ma ---------------------------------------------------------------------------

#define KELM_QR_DECOMP_MA_T(T, S, _)                                                                            \
    extern "C" KELM_API kelStatus kelmQRDecomp_ma_##S(const T* src, int srcObjStride, int srcRowStride,         \
                                                     int srcElemStride, T* buffer, T* dst, int dstObjStride,    \
                                                     int dstRowStride, int dstElemStride, int width,            \
                                                     int height, int count)                                     \
    {                                                                                                           \
        KELM_CHECKS(nulls(src, buffer, dst), counts(count), sizes(width, height),                               \
                    strides<T>(srcObjStride, srcRowStride, srcElemStride, dstObjStride, dstRowStride,           \
                               dstElemStride),                                                                  \
                    agree(width <= height));                                                                    \
        return qr_decomp_array(count, mats(src, srcObjStride, srcRowStride, srcElemStride), buffer,             \
                               mats(dst, dstObjStride, dstRowStride, dstElemStride), width, height);           \
    }                                                                                                           \
    extern "C" KELM_API kelStatus kelmQRDecomp_ma_##S##_P(const T* const* src, int srcObjShift,                 \
                                                         int srcObjStride, T* buffer, T* const* dst,            \
                                                         int dstObjShift, int dstObjStride, int width,          \
                                                         int height, int count)                                 \
    {                                                                                                           \
        KELM_CHECKS(nulls(src, buffer, dst), counts(count), sizes(width, height),                               \
                    strides<T>(srcObjStride, dstObjStride), shifts<T>(srcObjShift, dstObjShift),                \
                    agree(width <= height));                                                                    \
        return qr_decomp_array(count, ptrs<T>(src, srcObjShift, srcObjStride, width), buffer,                   \
                               ptrs<T>(dst, dstObjShift, dstObjStride, width), width, height);                  \
    }                                                                                                           \
    extern "C" KELM_API kelStatus kelmQRDecomp_ma_##S##_L(const T* const* src, int srcObjShift,                 \
                                                         int srcRowStride, int srcElemStride, T* buffer,        \
                                                         T* const* dst, int dstObjShift, int dstRowStride,      \
                                                         int dstElemStride, int width, int height, int count)   \
    {                                                                                                           \
        KELM_CHECKS(nulls(src, buffer, dst), counts(count), sizes(width, height),                               \
                    strides<T>(srcRowStride, srcElemStride, dstRowStride, dstElemStride),                       \
                    shifts<T>(srcObjShift, dstObjShift), agree(width <= height));                               \
        return qr_decomp_array(count, list(src, srcObjShift, srcRowStride, srcElemStride), buffer,              \
                               list(dst, dstObjShift, dstRowStride, dstElemStride), width, height);             \
    }
#define KELM_QR_DECOMP_MA() KELM_FOR_TYPES(KELM_QR_DECOMP_MA_T, _)

// --- QRBackSubst_mv ----------------------------------------------------------------------

#define KELM_QR_BACKSUBST_MV_T(T, S, _)                                                                         \
    extern "C" KELM_API kelStatus kelmQRBackSubst_mv_##S(const T* src1, int src1RowStride, int src1ElemStride,  \
                                                        T* buffer, const T* src2, int src2ElemStride, T* dst,   \
                                                        int dstElemStride, int width, int height)               \
    {                                                                                                           \
        KELM_CHECKS(nulls(src1, buffer, src2, dst), sizes(width, height),                                       \
                    strides<T>(src1RowStride, src1ElemStride, src2ElemStride, dstElemStride),                   \
                    agree(width <= height));                                                                    \
        return with_unit_strides(                                                                               \
            [&](const auto& s, const auto& b, const auto& x) {                                                  \
                return ownkelmQRBackSubst_mv(s[0], buffer, b[0], x[0], width, height);                          \
            },                                                                                                  \
            mat(src1, src1RowStride, src1ElemStride), vec(src2, src2ElemStride), vec(dst, dstElemStride));      \
    }                                                                                                           \
    extern "C" KELM_API kelStatus kelmQRBackSubst_mv_##S##_P(const T* const* src1, int src1ObjShift, T* buffer, \
                                                            const T* const* src2, int src2ObjShift,             \
                                                            T* const* dst, int dstObjShift, int width,          \
                                                            int height)                                         \
    {                                                                                                           \
        KELM_CHECKS(nulls(src1, buffer, src2, dst), sizes(width, height),                                       \
                    shifts<T>(src1ObjShift, src2ObjShift, dstObjShift), agree(width <= height));                \
        return ownkelmQRBackSubst_mv(ptrs<T>(src1, src1ObjShift, 0, width)[0], buffer,                          \
                                     ptrs<T>(src2, src2ObjShift, 0, height)[0], ptrs<T>(dst, dstObjShift, 0, width)[0], \
                                     width, height);                                                            \
    }
#define KELM_QR_BACKSUBST_MV() KELM_FOR_TYPES(KELM_QR_BACKSUBST_MV_T, _)

// --- QRBackSubst_mva: one factor, an array of vectors -------------------------------------

#define KELM_QR_BACKSUBST_MVA_T(T, S, _)                                                                        \
    extern "C" KELM_API kelStatus kelmQRBackSubst_mva_##S(const T* src1, int src1RowStride, int src1ElemStride, \
                                                         T* buffer, const T* src2, int src2ObjStride,           \
                                                         int src2ElemStride, T* dst, int dstObjStride,          \
                                                         int dstElemStride, int width, int height, int count)   \
    {                                                                                                           \
        KELM_CHECKS(nulls(src1, buffer, src2, dst), counts(count), sizes(width, height),                        \
                    strides<T>(src1RowStride, src1ElemStride, src2ObjStride, src2ElemStride, dstObjStride,      \
                               dstElemStride),                                                                  \
                    agree(width <= height));                                                                    \
        return qr_mva_array(count, mat(src1, src1RowStride, src1ElemStride), buffer,                            \
                            vecs(src2, src2ObjStride, src2ElemStride), vecs(dst, dstObjStride, dstElemStride),  \
                            width, height);                                                                     \
    }                                                                                                           \
    extern "C" KELM_API kelStatus kelmQRBackSubst_mva_##S##_P(const T* const* src1, int src1ObjShift,           \
                                                             T* buffer, const T* const* src2, int src2ObjShift, \
                                                             int src2ObjStride, T* const* dst, int dstObjShift, \
                                                             int dstObjStride, int width, int height, int count) \
    {                                                                                                           \
        KELM_CHECKS(nulls(src1, buffer, src2, dst), counts(count), sizes(width, height),                        \
                    strides<T>(src2ObjStride, dstObjStride), shifts<T>(src1ObjShift, src2ObjShift, dstObjShift), \
                    agree(width <= height));                                                                    \
        return qr_mva_array(count, ptrs<T>(src1, src1ObjShift, 0, width), buffer,                               \
                            ptrs<T>(src2, src2ObjShift, src2ObjStride, height),                                 \
                            ptrs<T>(dst, dstObjShift, dstObjStride, width), width, height);                     \
    }                                                                                                           \
    extern "C" KELM_API kelStatus kelmQRBackSubst_mva_##S##_L(const T* src1, int src1RowStride,                 \
                                                             int src1ElemStride, T* buffer, const T* const* src2, \
                                                             int src2ObjShift, int src2ElemStride,              \
                                                             T* const* dst, int dstObjShift, int dstElemStride, \
                                                             int width, int height, int count)                  \
    {                                                                                                           \
        KELM_CHECKS(nulls(src1, buffer, src2, dst), counts(count), sizes(width, height),                        \
                    strides<T>(src1RowStride, src1ElemStride, src2ElemStride, dstElemStride),                   \
                    shifts<T>(src2ObjShift, dstObjShift), agree(width <= height));                              \
        return qr_mva_array(count, mat(src1, src1RowStride, src1ElemStride), buffer,                            \
                            list(src2, src2ObjShift, 0, src2ElemStride), list(dst, dstObjShift, 0, dstElemStride), \
                            width, height);                                                                     \
    }
#define KELM_QR_BACKSUBST_MVA() KELM_FOR_TYPES(KELM_QR_BACKSUBST_MVA_T, _)

// --- QRBackSubst_mava: arrays of factors and of vectors, paired -----------------------------

#define KELM_QR_BACKSUBST_MAVA_T(T, S, _)                                                                       \
    extern "C" KELM_API kelStatus kelmQRBackSubst_mava_##S(const T* src1, int src1ObjStride, int src1RowStride, \
                                                          int src1ElemStride, T* buffer, const T* src2,         \
                                                          int src2ObjStride, int src2ElemStride, T* dst,        \
                                                          int dstObjStride, int dstElemStride, int width,       \
                                                          int height, int count)                                \
    {                                                                                                           \
        KELM_CHECKS(nulls(src1, buffer, src2, dst), counts(count), sizes(width, height),                        \
                    strides<T>(src1ObjStride, src1RowStride, src1ElemStride, src2ObjStride, src2ElemStride,     \
                               dstObjStride, dstElemStride),                                                    \
                    agree(width <= height));                                                                    \
        return qr_mava_array(count, mats(src1, src1ObjStride, src1RowStride, src1ElemStride), buffer,           \
                             vecs(src2, src2ObjStride, src2ElemStride), vecs(dst, dstObjStride, dstElemStride), \
                             width, height);                                                                    \
    }                                                                                                           \
    extern "C" KELM_API kelStatus kelmQRBackSubst_mava_##S##_P(const T* const* src1, int src1ObjShift,          \
                                                              int src1ObjStride, T* buffer, const T* const* src2, \
                                                              int src2ObjShift, int src2ObjStride,              \
                                                              T* const* dst, int dstObjShift, int dstObjStride, \
                                                              int width, int height, int count)                 \
    {                                                                                                           \
        KELM_CHECKS(nulls(src1, buffer, src2, dst), counts(count), sizes(width, height),                        \
                    strides<T>(src1ObjStride, src2ObjStride, dstObjStride),                                     \
                    shifts<T>(src1ObjShift, src2ObjShift, dstObjShift), agree(width <= height));                \
        return qr_mava_array(count, ptrs<T>(src1, src1ObjShift, src1ObjStride, width), buffer,                  \
                             ptrs<T>(src2, src2ObjShift, src2ObjStride, height),                                \
                             ptrs<T>(dst, dstObjShift, dstObjStride, width), width, height);                    \
    }                                                                                                           \
    extern "C" KELM_API kelStatus kelmQRBackSubst_mava_##S##_L(const T* const* src1, int src1ObjShift,          \
                                                              int src1RowStride, int src1ElemStride, T* buffer, \
                                                              const T* const* src2, int src2ObjShift,           \
                                                              int src2ElemStride, T* const* dst,                \
                                                              int dstObjShift, int dstElemStride, int width,    \
                                                              int height, int count)                            \
    {                                                                                                           \
        KELM_CHECKS(nulls(src1, buffer, src2, dst), counts(count), sizes(width, height),                        \
                    strides<T>(src1RowStride, src1ElemStride, src2ElemStride, dstElemStride),                   \
                    shifts<T>(src1ObjShift, src2ObjShift, dstObjShift), agree(width <= height));                \
        return qr_mava_array(count, list(src1, src1ObjShift, src1RowStride, src1ElemStride), buffer,            \
                             list(src2, src2ObjShift, 0, src2ElemStride), list(dst, dstObjShift, 0, dstElemStride), \
                             width, height);                                                                    \
    }
#define KELM_QR_BACKSUBST_MAVA() KELM_FOR_TYPES(KELM_QR_BACKSUBST_MAVA_T, _)
