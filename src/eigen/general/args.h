// The argument lists of EigenValues, the eigenvector operations and the
// buffer-size queries, each written once; KELM_FOR_TYPES expands every
// shape for 32f and 64f.
//
// Checks.  EigenValues: null (source, buffer, real parts, imaginary parts),
// order, count (arrays), shift (_P, _L), strides.  The eigenvector
// operations: null (source, buffer, real parts, imaginary parts, then the
// vector matrices, first before second), order, count; then single strided
// forms all strides at once, single _P forms all shifts at once, array forms
// the source's shift and strides before the destinations' shifts and strides.
#pragma once

#include "common/types.h"
#include "kernels.h"

// --- buffer sizes -----------------------------------------------------------------

#define KELM_EIG_BUFSIZE_T(T, S, _)                                                                  \
    extern "C" KELM_API kelStatus kelmEigenValuesGetBufSize_##S(int n, int* bytes)                 \
    {                                                                                                \
        KELM_CHECKS(nulls(bytes), sizes(n));                                                         \
        *bytes = int(geig::values_elems(n) * unsigned(sizeof(T)));                                   \
        return kelOk;                                                                                \
    }                                                                                                \
    extern "C" KELM_API kelStatus kelmEigenValuesVectorsGetBufSize_##S(int n, int* bytes)          \
    {                                                                                                \
        KELM_CHECKS(nulls(bytes), sizes(n));                                                         \
        *bytes = int(geig::vectors_elems(n) * unsigned(sizeof(T)));                                  \
        return kelOk;                                                                                \
    }

// --- EigenValues ------------------------------------------------------------------

#define KELM_EIG_VALUES_M_T(T, S, _)                                                                        \
    extern "C" KELM_API kelStatus kelmEigenValues_m_##S(const T* src, int srcRowStride, int srcElemStride, \
                                                        T* valRe, T* valIm, int n, T* buffer)              \
    {                                                                                                        \
        KELM_CHECKS(nulls(src, buffer, valRe, valIm), sizes(n), strides<T>(srcRowStride, srcElemStride));   \
        return geig::ownkelmEigenValues_ma(mat(src, srcRowStride, srcElemStride), valRe, valIm, n, 1, buffer); \
    }                                                                                                        \
    extern "C" KELM_API kelStatus kelmEigenValues_m_##S##_P(const T* const* src, int srcObjShift, T* valRe, \
                                                            T* valIm, int n, T* buffer)                     \
    {                                                                                                        \
        KELM_CHECKS(nulls(src, buffer, valRe, valIm), sizes(n), shifts<T>(srcObjShift));                    \
        return geig::ownkelmEigenValues_ma(ptrs<T>(src, srcObjShift, 0, n), valRe, valIm, n, 1, buffer);     \
    }

#define KELM_EIG_VALUES_MA_T(T, S, _)                                                                         \
    extern "C" KELM_API kelStatus kelmEigenValues_ma_##S(const T* src, int srcObjStride, int srcRowStride,   \
                                                         int srcElemStride, T* valRe, T* valIm, int n,       \
                                                         int count, T* buffer)                               \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, buffer, valRe, valIm), sizes(n), counts(count),                               \
                    strides<T>(srcObjStride, srcRowStride, srcElemStride));                                   \
        return geig::values_array(mats(src, srcObjStride, srcRowStride, srcElemStride), valRe, valIm, n, count, \
                                  buffer);                                                                     \
    }                                                                                                          \
    extern "C" KELM_API kelStatus kelmEigenValues_ma_##S##_P(const T* const* src, int srcObjShift,           \
                                                             int srcObjStride, T* valRe, T* valIm, int n,    \
                                                             int count, T* buffer)                           \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, buffer, valRe, valIm), sizes(n), counts(count), shifts<T>(srcObjShift),       \
                    strides<T>(srcObjStride));                                                                 \
        return geig::values_array(ptrs<T>(src, srcObjShift, srcObjStride, n), valRe, valIm, n, count, buffer); \
    }                                                                                                          \
    extern "C" KELM_API kelStatus kelmEigenValues_ma_##S##_L(const T* const* src, int srcObjShift,           \
                                                             int srcRowStride, int srcElemStride, T* valRe,  \
                                                             T* valIm, int n, int count, T* buffer)          \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, buffer, valRe, valIm), sizes(n), counts(count), shifts<T>(srcObjShift),       \
                    strides<T>(srcRowStride, srcElemStride));                                                 \
        return geig::values_array(list<T>(src, srcObjShift, srcRowStride, srcElemStride), valRe, valIm, n,   \
                                  count, buffer);                                                              \
    }

// --- EigenValuesVectorsRight and EigenValuesVectorsLeft (one vector matrix) --------

#define KELM_EIG_VECTORS_M_T(T, S, NAME, WANT)                                                                 \
    extern "C" KELM_API kelStatus NAME##_m_##S(const T* src, int srcRowStride, int srcElemStride, T* vec,     \
                                               int vecRowStride, int vecElemStride, T* valRe, T* valIm, int n, \
                                               T* buffer)                                                      \
    {                                                                                                           \
        KELM_CHECKS(nulls(src, buffer, valRe, valIm, vec), sizes(n),                                           \
                    strides<T>(srcRowStride, srcElemStride, vecRowStride, vecElemStride));                     \
        const auto v = mat(vec, vecRowStride, vecElemStride);                                                  \
        return geig::ownkelmEigenValuesVectors_ma<geig::Want::WANT>(mat(src, srcRowStride, srcElemStride), v, v, \
                                                                    valRe, valIm, n, 1, buffer);               \
    }                                                                                                           \
    extern "C" KELM_API kelStatus NAME##_m_##S##_P(const T* const* src, int srcObjShift, T* const* vec,        \
                                                   int vecObjShift, T* valRe, T* valIm, int n, T* buffer)     \
    {                                                                                                           \
        KELM_CHECKS(nulls(src, buffer, valRe, valIm, vec), sizes(n), shifts<T>(srcObjShift, vecObjShift));     \
        const auto v = ptrs<T>(vec, vecObjShift, 0, n);                                                        \
        return geig::ownkelmEigenValuesVectors_ma<geig::Want::WANT>(ptrs<T>(src, srcObjShift, 0, n), v, v,    \
                                                                    valRe, valIm, n, 1, buffer);               \
    }

#define KELM_EIG_VECTORS_MA_T(T, S, NAME, WANT)                                                                \
    extern "C" KELM_API kelStatus NAME##_ma_##S(const T* src, int srcObjStride, int srcRowStride,             \
                                                int srcElemStride, T* vec, int vecObjStride, int vecRowStride, \
                                                int vecElemStride, T* valRe, T* valIm, int n, int count,       \
                                                T* buffer)                                                     \
    {                                                                                                           \
        KELM_CHECKS(nulls(src, buffer, valRe, valIm, vec), sizes(n), counts(count),                            \
                    strides<T>(srcObjStride, srcRowStride, srcElemStride),                                     \
                    strides<T>(vecObjStride, vecRowStride, vecElemStride));                                    \
        const auto v = mats(vec, vecObjStride, vecRowStride, vecElemStride);                                   \
        return geig::vectors_array<geig::Want::WANT>(mats(src, srcObjStride, srcRowStride, srcElemStride), v, v, \
                                                     valRe, valIm, n, count, buffer);                          \
    }                                                                                                           \
    extern "C" KELM_API kelStatus NAME##_ma_##S##_P(const T* const* src, int srcObjShift, int srcObjStride,    \
                                                    T* const* vec, int vecObjShift, int vecObjStride, T* valRe, \
                                                    T* valIm, int n, int count, T* buffer)                     \
    {                                                                                                           \
        KELM_CHECKS(nulls(src, buffer, valRe, valIm, vec), sizes(n), counts(count), shifts<T>(srcObjShift),    \
                    strides<T>(srcObjStride), shifts<T>(vecObjShift), strides<T>(vecObjStride));               \
        const auto v = ptrs<T>(vec, vecObjShift, vecObjStride, n);                                             \
        return geig::vectors_array<geig::Want::WANT>(ptrs<T>(src, srcObjShift, srcObjStride, n), v, v, valRe,  \
                                                     valIm, n, count, buffer);                                 \
    }                                                                                                           \
    extern "C" KELM_API kelStatus NAME##_ma_##S##_L(const T* const* src, int srcObjShift, int srcRowStride,    \
                                                    int srcElemStride, T* const* vec, int vecObjShift,         \
                                                    int vecRowStride, int vecElemStride, T* valRe, T* valIm,   \
                                                    int n, int count, T* buffer)                               \
    {                                                                                                           \
        KELM_CHECKS(nulls(src, buffer, valRe, valIm, vec), sizes(n), counts(count), shifts<T>(srcObjShift),    \
                    strides<T>(srcRowStride, srcElemStride), shifts<T>(vecObjShift),                           \
                    strides<T>(vecRowStride, vecElemStride));                                                  \
        const auto v = list<T>(vec, vecObjShift, vecRowStride, vecElemStride);                                 \
        return geig::vectors_array<geig::Want::WANT>(list<T>(src, srcObjShift, srcRowStride, srcElemStride), v, \
                                                     v, valRe, valIm, n, count, buffer);                       \
    }

// --- EigenValuesVectors (right vectors into the first matrix, left into the second) -

#define KELM_EIG_VECTORS2_M_T(T, S, _)                                                                          \
    extern "C" KELM_API kelStatus kelmEigenValuesVectors_m_##S(                                                 \
        const T* src, int srcRowStride, int srcElemStride, T* rvec, int rvecRowStride, int rvecElemStride,      \
        T* lvec, int lvecRowStride, int lvecElemStride, T* valRe, T* valIm, int n, T* buffer)                   \
    {                                                                                                            \
        KELM_CHECKS(nulls(src, buffer, valRe, valIm, rvec, lvec), sizes(n),                                     \
                    strides<T>(srcRowStride, srcElemStride, rvecRowStride, rvecElemStride, lvecRowStride,       \
                               lvecElemStride));                                                                \
        return geig::ownkelmEigenValuesVectors_ma<geig::Want::Both>(                                            \
            mat(src, srcRowStride, srcElemStride), mat(rvec, rvecRowStride, rvecElemStride),                    \
            mat(lvec, lvecRowStride, lvecElemStride), valRe, valIm, n, 1, buffer);                              \
    }                                                                                                            \
    extern "C" KELM_API kelStatus kelmEigenValuesVectors_m_##S##_P(const T* const* src, int srcObjShift,       \
                                                                   T* const* rvec, int rvecObjShift,           \
                                                                   T* const* lvec, int lvecObjShift, T* valRe, \
                                                                   T* valIm, int n, T* buffer)                 \
    {                                                                                                            \
        KELM_CHECKS(nulls(src, buffer, valRe, valIm, rvec, lvec), sizes(n),                                     \
                    shifts<T>(srcObjShift, rvecObjShift, lvecObjShift));                                        \
        return geig::ownkelmEigenValuesVectors_ma<geig::Want::Both>(                                            \
            ptrs<T>(src, srcObjShift, 0, n), ptrs<T>(rvec, rvecObjShift, 0, n), ptrs<T>(lvec, lvecObjShift, 0, n), \
            valRe, valIm, n, 1, buffer);                                                                         \
    }

#define KELM_EIG_VECTORS2_MA_T(T, S, _)                                                                         \
    extern "C" KELM_API kelStatus kelmEigenValuesVectors_ma_##S(                                                \
        const T* src, int srcObjStride, int srcRowStride, int srcElemStride, T* rvec, int rvecObjStride,        \
        int rvecRowStride, int rvecElemStride, T* lvec, int lvecObjStride, int lvecRowStride, int lvecElemStride, \
        T* valRe, T* valIm, int n, int count, T* buffer)                                                        \
    {                                                                                                            \
        KELM_CHECKS(nulls(src, buffer, valRe, valIm, rvec, lvec), sizes(n), counts(count),                      \
                    strides<T>(srcObjStride, srcRowStride, srcElemStride),                                      \
                    strides<T>(rvecObjStride, rvecRowStride, rvecElemStride, lvecObjStride, lvecRowStride,      \
                               lvecElemStride));                                                                \
        return geig::vectors_array<geig::Want::Both>(                                                           \
            mats(src, srcObjStride, srcRowStride, srcElemStride),                                               \
            mats(rvec, rvecObjStride, rvecRowStride, rvecElemStride),                                           \
            mats(lvec, lvecObjStride, lvecRowStride, lvecElemStride), valRe, valIm, n, count, buffer);          \
    }                                                                                                            \
    extern "C" KELM_API kelStatus kelmEigenValuesVectors_ma_##S##_P(                                            \
        const T* const* src, int srcObjShift, int srcObjStride, T* const* rvec, int rvecObjShift,               \
        int rvecObjStride, T* const* lvec, int lvecObjShift, int lvecObjStride, T* valRe, T* valIm, int n,      \
        int count, T* buffer)                                                                                    \
    {                                                                                                            \
        KELM_CHECKS(nulls(src, buffer, valRe, valIm, rvec, lvec), sizes(n), counts(count),                      \
                    shifts<T>(srcObjShift), strides<T>(srcObjStride), shifts<T>(rvecObjShift, lvecObjShift),    \
                    strides<T>(rvecObjStride, lvecObjStride));                                                  \
        return geig::vectors_array<geig::Want::Both>(                                                           \
            ptrs<T>(src, srcObjShift, srcObjStride, n), ptrs<T>(rvec, rvecObjShift, rvecObjStride, n),          \
            ptrs<T>(lvec, lvecObjShift, lvecObjStride, n), valRe, valIm, n, count, buffer);                     \
    }                                                                                                            \
    extern "C" KELM_API kelStatus kelmEigenValuesVectors_ma_##S##_L(                                            \
        const T* const* src, int srcObjShift, int srcRowStride, int srcElemStride, T* const* rvec,              \
        int rvecObjShift, int rvecRowStride, int rvecElemStride, T* const* lvec, int lvecObjShift,              \
        int lvecRowStride, int lvecElemStride, T* valRe, T* valIm, int n, int count, T* buffer)                 \
    {                                                                                                            \
        KELM_CHECKS(nulls(src, buffer, valRe, valIm, rvec, lvec), sizes(n), counts(count),                      \
                    shifts<T>(srcObjShift), strides<T>(srcRowStride, srcElemStride),                            \
                    shifts<T>(rvecObjShift, lvecObjShift),                                                      \
                    strides<T>(rvecRowStride, rvecElemStride, lvecRowStride, lvecElemStride));                  \
        return geig::vectors_array<geig::Want::Both>(                                                           \
            list<T>(src, srcObjShift, srcRowStride, srcElemStride),                                             \
            list<T>(rvec, rvecObjShift, rvecRowStride, rvecElemStride),                                         \
            list<T>(lvec, lvecObjShift, lvecRowStride, lvecElemStride), valRe, valIm, n, count, buffer);        \
    }
