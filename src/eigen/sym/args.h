// The argument lists of EigenValuesSym and EigenValuesVectorsSym, each written
// once for both element types.
//
// Checks, in this order for every entry: null, size, count (arrays), shifts
// (_P, _L), strides.  The nulls: values-only src, buffer, values; vectors
// strided src, buffer, values, vectors; vectors _P and _L src, vectors,
// buffer, values.
#pragma once

#include "common/types.h"
#include "kernels.h"

// --- EigenValuesSym ------------------------------------------------------------------

#define KELM_EIGSYM_VALUES_M_T(T, S, _)                                                                         \
    extern "C" KELM_API kelStatus kelmEigenValuesSym_m_##S(const T* src, int srcRowStride, int srcElemStride,  \
                                                          T* buffer, T* values, int size)                       \
    {                                                                                                           \
        KELM_CHECKS(nulls(src, buffer, values), sizes(size), strides<T>(srcRowStride, srcElemStride));          \
        return with_unit_strides([&](const auto& s) { return ownkelmEigenValuesSym_m(s, buffer, values, size); }, \
                                 mat(src, srcRowStride, srcElemStride));                                        \
    }                                                                                                           \
    extern "C" KELM_API kelStatus kelmEigenValuesSym_m_##S##_P(const T* const* src, int srcObjShift, T* buffer, \
                                                              T* values, int size)                              \
    {                                                                                                           \
        KELM_CHECKS(nulls(src, buffer, values), sizes(size), shifts<T>(srcObjShift));                           \
        return ownkelmEigenValuesSym_m(ptrs<T>(src, srcObjShift, 0, size), buffer, values, size);              \
    }

#define KELM_EIGSYM_VALUES_MA_T(T, S, _)                                                                        \
    extern "C" KELM_API kelStatus kelmEigenValuesSym_ma_##S(const T* src, int srcObjStride, int srcRowStride,  \
                                                           int srcElemStride, T* buffer, T* values, int size,   \
                                                           int count)                                           \
    {                                                                                                           \
        KELM_CHECKS(nulls(src, buffer, values), sizes(size), counts(count),                                     \
                    strides<T>(srcObjStride, srcRowStride, srcElemStride));                                     \
        return eigen_values_sym_array(mats(src, srcObjStride, srcRowStride, srcElemStride), buffer, values,     \
                                      size, count);                                                             \
    }                                                                                                           \
    extern "C" KELM_API kelStatus kelmEigenValuesSym_ma_##S##_P(const T* const* src, int srcObjShift,           \
                                                               int srcObjStride, T* buffer, T* values,          \
                                                               int size, int count)                             \
    {                                                                                                           \
        KELM_CHECKS(nulls(src, buffer, values), sizes(size), counts(count), shifts<T>(srcObjShift),             \
                    strides<T>(srcObjStride));                                                                  \
        return eigen_values_sym_array(ptrs<T>(src, srcObjShift, srcObjStride, size), buffer, values, size,     \
                                      count);                                                                   \
    }                                                                                                           \
    extern "C" KELM_API kelStatus kelmEigenValuesSym_ma_##S##_L(const T* const* src, int srcObjShift,           \
                                                               int srcRowStride, int srcElemStride, T* buffer,  \
                                                               T* values, int size, int count)                  \
    {                                                                                                           \
        KELM_CHECKS(nulls(src, buffer, values), sizes(size), counts(count), shifts<T>(srcObjShift),             \
                    strides<T>(srcRowStride, srcElemStride));                                                   \
        return eigen_values_sym_array(list(src, srcObjShift, srcRowStride, srcElemStride), buffer, values,     \
                                      size, count);                                                             \
    }

// --- EigenValuesVectorsSym -----------------------------------------------------------

#define KELM_EIGSYM_VECTORS_M_T(T, S, _)                                                                        \
    extern "C" KELM_API kelStatus kelmEigenValuesVectorsSym_m_##S(                                             \
        const T* src, int srcRowStride, int srcElemStride, T* buffer, T* vectors, int vectorsRowStride,        \
        int vectorsElemStride, T* values, int size)                                                             \
    {                                                                                                           \
        KELM_CHECKS(nulls(src, buffer, values, vectors), sizes(size),                                           \
                    strides<T>(srcRowStride, srcElemStride, vectorsRowStride, vectorsElemStride));              \
        return with_unit_strides(                                                                               \
            [&](const auto& s, const auto& v) { return ownkelmEigenValuesVectorsSym_m(s, buffer, v, values, size); }, \
            mat(src, srcRowStride, srcElemStride), mat(vectors, vectorsRowStride, vectorsElemStride));         \
    }                                                                                                           \
    extern "C" KELM_API kelStatus kelmEigenValuesVectorsSym_m_##S##_P(const T* const* src, int srcObjShift,     \
                                                                     T* buffer, T* const* vectors,              \
                                                                     int vectorsObjShift, T* values, int size)  \
    {                                                                                                           \
        KELM_CHECKS(nulls(src, vectors, buffer, values), sizes(size), shifts<T>(srcObjShift, vectorsObjShift)); \
        return ownkelmEigenValuesVectorsSym_m(ptrs<T>(src, srcObjShift, 0, size), buffer,                       \
                                              ptrs<T>(vectors, vectorsObjShift, 0, size), values, size);        \
    }

#define KELM_EIGSYM_VECTORS_MA_T(T, S, _)                                                                       \
    extern "C" KELM_API kelStatus kelmEigenValuesVectorsSym_ma_##S(                                            \
        const T* src, int srcObjStride, int srcRowStride, int srcElemStride, T* buffer, T* vectors,            \
        int vectorsObjStride, int vectorsRowStride, int vectorsElemStride, T* values, int size, int count)     \
    {                                                                                                           \
        KELM_CHECKS(nulls(src, buffer, values, vectors), sizes(size), counts(count),                            \
                    strides<T>(srcObjStride, srcRowStride, srcElemStride, vectorsObjStride, vectorsRowStride,   \
                               vectorsElemStride));                                                             \
        return eigen_values_vectors_sym_array(mats(src, srcObjStride, srcRowStride, srcElemStride), buffer,    \
                                              mats(vectors, vectorsObjStride, vectorsRowStride,                 \
                                                   vectorsElemStride),                                          \
                                              values, size, count);                                             \
    }                                                                                                           \
    extern "C" KELM_API kelStatus kelmEigenValuesVectorsSym_ma_##S##_P(                                        \
        const T* const* src, int srcObjShift, int srcObjStride, T* buffer, T* const* vectors,                  \
        int vectorsObjShift, int vectorsObjStride, T* values, int size, int count)                             \
    {                                                                                                           \
        KELM_CHECKS(nulls(src, vectors, buffer, values), sizes(size), counts(count),                            \
                    shifts<T>(srcObjShift, vectorsObjShift), strides<T>(srcObjStride, vectorsObjStride));       \
        return eigen_values_vectors_sym_array(ptrs<T>(src, srcObjShift, srcObjStride, size), buffer,           \
                                              ptrs<T>(vectors, vectorsObjShift, vectorsObjStride, size),        \
                                              values, size, count);                                             \
    }                                                                                                           \
    extern "C" KELM_API kelStatus kelmEigenValuesVectorsSym_ma_##S##_L(                                        \
        const T* const* src, int srcObjShift, int srcRowStride, int srcElemStride, T* buffer,                  \
        T* const* vectors, int vectorsObjShift, int vectorsRowStride, int vectorsElemStride, T* values,        \
        int size, int count)                                                                                    \
    {                                                                                                           \
        KELM_CHECKS(nulls(src, vectors, buffer, values), sizes(size), counts(count),                            \
                    shifts<T>(srcObjShift, vectorsObjShift),                                                    \
                    strides<T>(srcRowStride, srcElemStride, vectorsRowStride, vectorsElemStride));              \
        return eigen_values_vectors_sym_array(list(src, srcObjShift, srcRowStride, srcElemStride), buffer,     \
                                              list<T>(vectors, vectorsObjShift, vectorsRowStride,               \
                                                      vectorsElemStride),                                       \
                                              values, size, count);                                             \
    }
