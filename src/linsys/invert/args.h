// The argument lists of Invert, written once for both element types.
//
// Checks, in this order for every entry: null (source, destination, buffer;
// the buffer whatever the order), count (arrays), order, strides (source,
// then destination; the pointer forms test their object strides only),
// shifts (_P and _L).
//
// Arrays go parallel when 2*n*count > 2500, except kelmInvert_ma_32f with
// unit element strides on both sides, which waits for 2*n*count > 3600.
#pragma once

#include "common/types.h"
#include "kernels.h"

#define KELM_INVERT_M_T(T, S, _)                                                                                \
    extern "C" KELM_API kelStatus kelmInvert_m_##S(const T* src, int srcRowStride, int srcElemStride,          \
                                                   T* buffer, T* dst, int dstRowStride, int dstElemStride,     \
                                                   int n)                                                       \
    {                                                                                                           \
        KELM_CHECKS(nulls(src, dst, buffer), sizes(n),                                                          \
                    strides<T>(srcRowStride, srcElemStride, dstRowStride, dstElemStride));                      \
        return invert_one(mat(src, srcRowStride, srcElemStride), mat(dst, dstRowStride, dstElemStride), n,     \
                          buffer);                                                                              \
    }                                                                                                           \
    extern "C" KELM_API kelStatus kelmInvert_m_##S##_P(const T* const* src, int srcObjShift, T* buffer,        \
                                                       T* const* dst, int dstObjShift, int n)                  \
    {                                                                                                           \
        KELM_CHECKS(nulls(src, dst, buffer), sizes(n), shifts<T>(srcObjShift, dstObjShift));                    \
        return invert_one(ptrs<T>(src, srcObjShift, 0, n), ptrs<T>(dst, dstObjShift, 0, n), n, buffer);        \
    }

#define KELM_INVERT_MA_T(T, S, _)                                                                               \
    extern "C" KELM_API kelStatus kelmInvert_ma_##S(const T* src, int srcObjStride, int srcRowStride,          \
                                                    int srcElemStride, T* buffer, T* dst, int dstObjStride,    \
                                                    int dstRowStride, int dstElemStride, int n, int count)     \
    {                                                                                                           \
        KELM_CHECKS(nulls(src, dst, buffer), counts(count), sizes(n),                                           \
                    strides<T>(srcObjStride, srcRowStride, srcElemStride, dstObjStride, dstRowStride,           \
                               dstElemStride));                                                                 \
        const bool late = sizeof(T) == 4 && unit_strides<T>(srcElemStride, dstElemStride);                      \
        return invert_array(mats(src, srcObjStride, srcRowStride, srcElemStride),                               \
                            mats(dst, dstObjStride, dstRowStride, dstElemStride), n, buffer, count,             \
                            late ? 3600 : 2500);                                                                \
    }                                                                                                           \
    extern "C" KELM_API kelStatus kelmInvert_ma_##S##_P(const T* const* src, int srcObjShift, int srcObjStride, \
                                                        T* buffer, T* const* dst, int dstObjShift,             \
                                                        int dstObjStride, int n, int count)                    \
    {                                                                                                           \
        KELM_CHECKS(nulls(src, dst, buffer), counts(count), sizes(n), strides<T>(srcObjStride, dstObjStride),   \
                    shifts<T>(srcObjShift, dstObjShift));                                                       \
        return invert_array(ptrs<T>(src, srcObjShift, srcObjStride, n), ptrs<T>(dst, dstObjShift, dstObjStride, n), \
                            n, buffer, count, 2500);                                                            \
    }                                                                                                           \
    extern "C" KELM_API kelStatus kelmInvert_ma_##S##_L(const T* const* src, int srcObjShift, int srcRowStride, \
                                                        int srcElemStride, T* buffer, T* const* dst,           \
                                                        int dstObjShift, int dstRowStride, int dstElemStride,  \
                                                        int n, int count)                                      \
    {                                                                                                           \
        KELM_CHECKS(nulls(src, dst, buffer), counts(count), sizes(n),                                           \
                    strides<T>(srcRowStride, srcElemStride, dstRowStride, dstElemStride),                       \
                    shifts<T>(srcObjShift, dstObjShift));                                                       \
        return invert_array(list(src, srcObjShift, srcRowStride, srcElemStride),                                \
                            list(dst, dstObjShift, dstRowStride, dstElemStride), n, buffer, count, 2500);       \
    }
