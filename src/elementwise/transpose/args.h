// The argument lists of Transpose, each written once; the sizes (those of
// the source) stand between the source and the destination.  Checks: single
// matrices null, size, strides (strided) or shifts (_P); arrays null, count,
// size, strides (object strides whatever the count), shifts.
#pragma once

#include "common/types.h"
#include "kernels.h"

namespace kelm {

#define KELM_TRANSPOSE_M_T(T, S, _)                                                                             \
    extern "C" KELM_API kelStatus kelmTranspose_m_##S(const T* src, int srcRowStride, int srcElemStride,         \
                                                     int width, int height, T* dst, int dstRowStride,          \
                                                     int dstElemStride)                                        \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, dst), sizes(width, height),                                                     \
                    strides<T>(srcRowStride, srcElemStride, dstRowStride, dstElemStride));                     \
        return ownkelmTranspose<false>(1, mat(src, srcRowStride, srcElemStride), mat(dst, dstRowStride, dstElemStride), \
                                       height, width);                                                         \
    }                                                                                                          \
    extern "C" KELM_API kelStatus kelmTranspose_m_##S##_P(const T* const* src, int srcObjShift, int width,      \
                                                         int height, T* const* dst, int dstObjShift)           \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, dst), sizes(width, height), shifts<T>(srcObjShift, dstObjShift));              \
        return ownkelmTranspose<false>(1, ptrs<T>(src, srcObjShift, 0, width), ptrs<T>(dst, dstObjShift, 0, height), \
                                       height, width);                                                         \
    }
#define KELM_TRANSPOSE_M() KELM_FOR_TYPES(KELM_TRANSPOSE_M_T, _)

#define KELM_TRANSPOSE_MA_T(T, S, _)                                                                            \
    extern "C" KELM_API kelStatus kelmTranspose_ma_##S(const T* src, int srcObjStride, int srcRowStride,        \
                                                      int srcElemStride, int width, int height, T* dst,        \
                                                      int dstObjStride, int dstRowStride, int dstElemStride,   \
                                                      int count)                                               \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, dst), counts(count), sizes(width, height),                                      \
                    strides<T>(srcObjStride, srcRowStride, srcElemStride),                                     \
                    strides<T>(dstObjStride, dstRowStride, dstElemStride));                                    \
        return ownkelmTranspose<true>(count, mats(src, srcObjStride, srcRowStride, srcElemStride),              \
                                      mats(dst, dstObjStride, dstRowStride, dstElemStride), height, width);     \
    }                                                                                                          \
    extern "C" KELM_API kelStatus kelmTranspose_ma_##S##_P(const T* const* src, int srcObjShift, int srcObjStride, \
                                                          int width, int height, T* const* dst,                \
                                                          int dstObjShift, int dstObjStride, int count)        \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, dst), counts(count), sizes(width, height), strides<T>(srcObjStride, dstObjStride), \
                    shifts<T>(srcObjShift, dstObjShift));                                                      \
        return ownkelmTranspose<true>(count, ptrs<T>(src, srcObjShift, srcObjStride, width),                   \
                                      ptrs<T>(dst, dstObjShift, dstObjStride, height), height, width);          \
    }                                                                                                          \
    extern "C" KELM_API kelStatus kelmTranspose_ma_##S##_L(const T* const* src, int srcObjShift, int srcRowStride, \
                                                          int srcElemStride, int width, int height,            \
                                                          T* const* dst, int dstObjShift, int dstRowStride,    \
                                                          int dstElemStride, int count)                        \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, dst), counts(count), sizes(width, height),                                      \
                    strides<T>(srcRowStride, srcElemStride), strides<T>(dstRowStride, dstElemStride),          \
                    shifts<T>(srcObjShift, dstObjShift));                                                      \
        return ownkelmTranspose<true>(count, list<T>(src, srcObjShift, srcRowStride, srcElemStride),            \
                                      list<T>(dst, dstObjShift, dstRowStride, dstElemStride), height, width);   \
    }
#define KELM_TRANSPOSE_MA() KELM_FOR_TYPES(KELM_TRANSPOSE_MA_T, _)

}  // namespace kelm
