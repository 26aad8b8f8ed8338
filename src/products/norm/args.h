// The argument lists of L2Norm, FrobNorm and Trace, written once for both
// element types.  Every member checks null (source, destination), count
// (arrays), sizes, strides, shift, in that order.
#pragma once

#include "common/types.h"
#include "kernels.h"

// --- L2Norm -------------------------------------------------------------------

#define KELM_L2NORM_V_T(T, S, _)                                                                               \
    extern "C" KELM_API kelStatus kelmL2Norm_v_##S(const T* src, int srcElemStride, T* dst, int len)           \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, dst), sizes(len), strides<T>(srcElemStride));                                   \
        return with_unit_strides([&](const auto& d) { return ownkelmL2Norm_v(d, len, dst); },                 \
                                 vec(src, srcElemStride));                                                     \
    }                                                                                                          \
    extern "C" KELM_API kelStatus kelmL2Norm_v_##S##_P(const T* const* src, int srcObjShift, T* dst, int len)  \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, dst), sizes(len), shifts<T>(srcObjShift));                                      \
        return ownkelmL2Norm_v(ptrs<T>(src, srcObjShift, 0, len), len, dst);                                   \
    }

#define KELM_L2NORM_VA_T(T, S, _)                                                                              \
    extern "C" KELM_API kelStatus kelmL2Norm_va_##S(const T* src, int srcObjStride, int srcElemStride, T* dst, \
                                                    int len, int count)                                        \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, dst), counts(count), sizes(len), strides<T>(srcObjStride, srcElemStride));     \
        return l2norm_array(vecs(src, srcObjStride, srcElemStride), len, dst, count);                          \
    }                                                                                                          \
    extern "C" KELM_API kelStatus kelmL2Norm_va_##S##_P(const T* const* src, int srcObjShift, int srcObjStride, \
                                                        T* dst, int len, int count)                            \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, dst), counts(count), sizes(len), strides<T>(srcObjStride),                     \
                    shifts<T>(srcObjShift));                                                                   \
        return l2norm_array(ptrs<T>(src, srcObjShift, srcObjStride, len), len, dst, count);                    \
    }                                                                                                          \
    extern "C" KELM_API kelStatus kelmL2Norm_va_##S##_L(const T* const* src, int srcObjShift, int srcElemStride, \
                                                        T* dst, int len, int count)                            \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, dst), counts(count), sizes(len), strides<T>(srcElemStride),                    \
                    shifts<T>(srcObjShift));                                                                   \
        return l2norm_array(list(src, srcObjShift, 0, srcElemStride), len, dst, count);                        \
    }

// --- FrobNorm -----------------------------------------------------------------

#define KELM_FROBNORM_M_T(T, S, _)                                                                             \
    extern "C" KELM_API kelStatus kelmFrobNorm_m_##S(const T* src, int srcRowStride, int srcElemStride,       \
                                                     int width, int height, T* dst)                            \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, dst), sizes(width, height), strides<T>(srcRowStride, srcElemStride));          \
        return with_unit_strides([&](const auto& d) { return ownkelmFrobNorm_m(d, width, height, dst); },     \
                                 mat(src, srcRowStride, srcElemStride));                                       \
    }                                                                                                          \
    extern "C" KELM_API kelStatus kelmFrobNorm_m_##S##_P(const T* const* src, int srcObjShift, int width,     \
                                                         int height, T* dst)                                   \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, dst), sizes(width, height), shifts<T>(srcObjShift));                           \
        return ownkelmFrobNorm_m(ptrs<T>(src, srcObjShift, 0, width), width, height, dst);                    \
    }

#define KELM_FROBNORM_MA_T(T, S, _)                                                                            \
    extern "C" KELM_API kelStatus kelmFrobNorm_ma_##S(const T* src, int srcObjStride, int srcRowStride,       \
                                                      int srcElemStride, int width, int height, T* dst,        \
                                                      int count)                                               \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, dst), counts(count), sizes(width, height),                                     \
                    strides<T>(srcObjStride, srcRowStride, srcElemStride));                                    \
        return frobnorm_array(mats(src, srcObjStride, srcRowStride, srcElemStride), width, height, dst, count); \
    }                                                                                                          \
    extern "C" KELM_API kelStatus kelmFrobNorm_ma_##S##_P(const T* const* src, int srcObjShift,               \
                                                          int srcObjStride, int width, int height, T* dst,     \
                                                          int count)                                           \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, dst), counts(count), sizes(width, height), strides<T>(srcObjStride),           \
                    shifts<T>(srcObjShift));                                                                   \
        return frobnorm_array(ptrs<T>(src, srcObjShift, srcObjStride, width), width, height, dst, count);     \
    }                                                                                                          \
    extern "C" KELM_API kelStatus kelmFrobNorm_ma_##S##_L(const T* const* src, int srcObjShift,               \
                                                          int srcRowStride, int srcElemStride, int width,      \
                                                          int height, T* dst, int count)                       \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, dst), counts(count), sizes(width, height),                                     \
                    strides<T>(srcRowStride, srcElemStride), shifts<T>(srcObjShift));                          \
        return frobnorm_array(list(src, srcObjShift, srcRowStride, srcElemStride), width, height, dst, count); \
    }

// --- Trace (one size: the matrices are square) --------------------------------

#define KELM_TRACE_M_T(T, S, _)                                                                                \
    extern "C" KELM_API kelStatus kelmTrace_m_##S(const T* src, int srcRowStride, int srcElemStride, int size, \
                                                  T* dst)                                                      \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, dst), sizes(size), strides<T>(srcRowStride, srcElemStride));                   \
        return with_unit_strides([&](const auto& d) { return ownkelmTrace_m(d, size, dst); },                 \
                                 mat(src, srcRowStride, srcElemStride));                                       \
    }                                                                                                          \
    extern "C" KELM_API kelStatus kelmTrace_m_##S##_P(const T* const* src, int srcObjShift, int size, T* dst) \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, dst), sizes(size), shifts<T>(srcObjShift));                                     \
        return ownkelmTrace_m(ptrs<T>(src, srcObjShift, 0, size), size, dst);                                  \
    }

#define KELM_TRACE_MA_T(T, S, _)                                                                               \
    extern "C" KELM_API kelStatus kelmTrace_ma_##S(const T* src, int srcObjStride, int srcRowStride,          \
                                                   int srcElemStride, int size, T* dst, int count)             \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, dst), counts(count), sizes(size),                                              \
                    strides<T>(srcObjStride, srcRowStride, srcElemStride));                                    \
        return trace_array(mats(src, srcObjStride, srcRowStride, srcElemStride), size, dst, count);           \
    }                                                                                                          \
    extern "C" KELM_API kelStatus kelmTrace_ma_##S##_P(const T* const* src, int srcObjShift, int srcObjStride, \
                                                       int size, T* dst, int count)                            \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, dst), counts(count), sizes(size), strides<T>(srcObjStride),                    \
                    shifts<T>(srcObjShift));                                                                   \
        return trace_array(ptrs<T>(src, srcObjShift, srcObjStride, size), size, dst, count);                  \
    }                                                                                                          \
    extern "C" KELM_API kelStatus kelmTrace_ma_##S##_L(const T* const* src, int srcObjShift, int srcRowStride, \
                                                       int srcElemStride, int size, T* dst, int count)         \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, dst), counts(count), sizes(size), strides<T>(srcRowStride, srcElemStride),     \
                    shifts<T>(srcObjShift));                                                                   \
        return trace_array(list(src, srcObjShift, srcRowStride, srcElemStride), size, dst, count);            \
    }
