// The argument lists of Det, written once for both element types.
#pragma once

#include "common/types.h"
#include "kernels.h"


// The entries of both element types.  Checks: null (source, destination,
// buffer; the buffer even when the order needs none), count, order, strides,
// shift.
#define KELM_DET_M_T(T, S, _)                                                                                   \
    extern "C" KELM_API kelStatus kelmDet_m_##S(const T* src, int srcRowStride, int srcElemStride, int n,    \
                                                T* buffer, T* dst)                                           \
    {                                                                                                         \
        KELM_CHECKS(nulls(src, dst, buffer), sizes(n), strides<T>(srcRowStride, srcElemStride));             \
        return with_unit_strides([&](const auto& d) { return ownkelmDet_m(d, n, buffer, dst); },            \
                                 mat(src, srcRowStride, srcElemStride));                                      \
    }                                                                                                         \
    extern "C" KELM_API kelStatus kelmDet_m_##S##_P(const T* const* src, int srcObjShift, int n, T* buffer,  \
                                                    T* dst)                                                  \
    {                                                                                                         \
        KELM_CHECKS(nulls(src, dst, buffer), sizes(n), shifts<T>(srcObjShift));                               \
        return ownkelmDet_m(ptrs<T>(src, srcObjShift, 0, n), n, buffer, dst);                                 \
    }
#define KELM_DET_MA_T(T, S, _)                                                                                \
    extern "C" KELM_API kelStatus kelmDet_ma_##S(const T* src, int srcObjStride, int srcRowStride,           \
                                                 int srcElemStride, int n, T* buffer, T* dst, int count)     \
    {                                                                                                         \
        KELM_CHECKS(nulls(src, dst, buffer), counts(count), sizes(n),                                         \
                    strides<T>(srcObjStride, srcRowStride, srcElemStride));                                   \
        return det_array(mats(src, srcObjStride, srcRowStride, srcElemStride), n, buffer, dst, count);       \
    }                                                                                                         \
    extern "C" KELM_API kelStatus kelmDet_ma_##S##_P(const T* const* src, int srcObjShift, int srcObjStride, \
                                                     int n, T* buffer, T* dst, int count)                    \
    {                                                                                                         \
        KELM_CHECKS(nulls(src, dst, buffer), counts(count), sizes(n), strides<T>(srcObjStride),              \
                    shifts<T>(srcObjShift));                                                                  \
        return det_array(ptrs<T>(src, srcObjShift, srcObjStride, n), n, buffer, dst, count);                 \
    }                                                                                                         \
    extern "C" KELM_API kelStatus kelmDet_ma_##S##_L(const T* const* src, int srcObjShift, int srcRowStride, \
                                                     int srcElemStride, int n, T* buffer, T* dst, int count) \
    {                                                                                                         \
        KELM_CHECKS(nulls(src, dst, buffer), counts(count), sizes(n),                                         \
                    strides<T>(srcRowStride, srcElemStride), shifts<T>(srcObjShift));                         \
        return det_array(list(src, srcObjShift, srcRowStride, srcElemStride), n, buffer, dst, count);        \
    }
