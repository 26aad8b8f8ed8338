// Argument lists that several families share, each written once.
//
// A shape defines the strided, _P and _L entries of one operation for one
// element type: the signature, the checks in the order null, count, size,
// strides, shifts (the pointer forms test their object strides only), and the
// descriptions of the operands.  The family says what happens once the checks
// pass with RUN(T, FORM, UNIT, A, B, D, extra...): FORM is Strided, Pointer or
// List, UNIT whether every element stride equals the element size (always
// true for the pointer form), A, B and D the source, constant and destination
// descriptions; the extra arguments are the family's own.
//
// The shapes of vectors with constants: vac (each vector of an array with
// one constant), vaca (vector k with constant k), vca (one vector with each
// constant of an array).  Constants arrive by value, by base and stride, or
// (list form) as a list of pointers.
#pragma once

#include "common/check.h"
#include "common/desc.h"

#define KELM_SHAPE_VAC(T, S, NAME, RUN, ...)                                                                   \
    extern "C" KELM_API kelStatus NAME##_##S(const T* src, int srcObjStride, int srcElemStride, T val, T* dst,  \
                                             int dstObjStride, int dstElemStride, int len, int count)          \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, dst), counts(count), sizes(len),                                               \
                    strides<T>(srcObjStride, srcElemStride, dstObjStride, dstElemStride));                    \
        RUN(T, Strided, (unit_strides<T>(srcElemStride, dstElemStride)), vecs(src, srcObjStride, srcElemStride), \
            Value<T>{val}, vecs(dst, dstObjStride, dstElemStride), __VA_ARGS__)                                \
    }                                                                                                          \
    extern "C" KELM_API kelStatus NAME##_##S##_P(const T* const* src, int srcObjShift, int srcObjStride, T val, \
                                                 T* const* dst, int dstObjShift, int dstObjStride, int len,    \
                                                 int count)                                                    \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, dst), counts(count), sizes(len), strides<T>(srcObjStride, dstObjStride),       \
                    shifts<T>(srcObjShift, dstObjShift));                                                      \
        RUN(T, Pointer, true, ptrs<T>(src, srcObjShift, srcObjStride, len), Value<T>{val},                     \
            ptrs<T>(dst, dstObjShift, dstObjStride, len), __VA_ARGS__)                                         \
    }                                                                                                          \
    extern "C" KELM_API kelStatus NAME##_##S##_L(const T* const* src, int srcObjShift, int srcElemStride, T val, \
                                                 T* const* dst, int dstObjShift, int dstElemStride, int len,   \
                                                 int count)                                                    \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, dst), counts(count), sizes(len), strides<T>(srcElemStride, dstElemStride),     \
                    shifts<T>(srcObjShift, dstObjShift));                                                      \
        RUN(T, List, (unit_strides<T>(srcElemStride, dstElemStride)), list(src, srcObjShift, 0, srcElemStride), \
            Value<T>{val}, list(dst, dstObjShift, 0, dstElemStride), __VA_ARGS__)                              \
    }

#define KELM_SHAPE_VACA(T, S, NAME, RUN, ...)                                                                  \
    extern "C" KELM_API kelStatus NAME##_##S(const T* src, int srcObjStride, int srcElemStride, const T* val,   \
                                             int valStride, T* dst, int dstObjStride, int dstElemStride,       \
                                             int len, int count)                                               \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, val, dst), counts(count), sizes(len),                                          \
                    strides<T>(srcObjStride, srcElemStride, valStride, dstObjStride, dstElemStride));         \
        RUN(T, Strided, (unit_strides<T>(srcElemStride, dstElemStride)), vecs(src, srcObjStride, srcElemStride), \
            values(val, valStride), vecs(dst, dstObjStride, dstElemStride), __VA_ARGS__)                       \
    }                                                                                                          \
    extern "C" KELM_API kelStatus NAME##_##S##_P(const T* const* src, int srcObjShift, int srcObjStride,        \
                                                 const T* val, int valStride, T* const* dst, int dstObjShift,  \
                                                 int dstObjStride, int len, int count)                         \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, val, dst), counts(count), sizes(len),                                          \
                    strides<T>(srcObjStride, valStride, dstObjStride), shifts<T>(srcObjShift, dstObjShift));  \
        RUN(T, Pointer, true, ptrs<T>(src, srcObjShift, srcObjStride, len), values(val, valStride),            \
            ptrs<T>(dst, dstObjShift, dstObjStride, len), __VA_ARGS__)                                         \
    }                                                                                                          \
    extern "C" KELM_API kelStatus NAME##_##S##_L(const T* const* src, int srcObjShift, int srcElemStride,       \
                                                 const T* const* val, int valShift, T* const* dst,             \
                                                 int dstObjShift, int dstElemStride, int len, int count)       \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, val, dst), counts(count), sizes(len), strides<T>(srcElemStride, dstElemStride), \
                    shifts<T>(srcObjShift, valShift, dstObjShift));                                            \
        RUN(T, List, (unit_strides<T>(srcElemStride, dstElemStride)), list(src, srcObjShift, 0, srcElemStride), \
            value_list(val, valShift), list(dst, dstObjShift, 0, dstElemStride), __VA_ARGS__)                  \
    }

#define KELM_SHAPE_VCA(T, S, NAME, RUN, ...)                                                                   \
    extern "C" KELM_API kelStatus NAME##_##S(const T* src, int srcElemStride, const T* val, int valStride,     \
                                             T* dst, int dstObjStride, int dstElemStride, int len, int count)  \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, val, dst), counts(count), sizes(len),                                          \
                    strides<T>(srcElemStride, valStride, dstObjStride, dstElemStride));                       \
        RUN(T, Strided, (unit_strides<T>(srcElemStride, dstElemStride)), vec(src, srcElemStride),              \
            values(val, valStride), vecs(dst, dstObjStride, dstElemStride), __VA_ARGS__)                       \
    }                                                                                                          \
    extern "C" KELM_API kelStatus NAME##_##S##_P(const T* const* src, int srcObjShift, const T* val,           \
                                                 int valStride, T* const* dst, int dstObjShift,                \
                                                 int dstObjStride, int len, int count)                         \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, val, dst), counts(count), sizes(len), strides<T>(valStride, dstObjStride),     \
                    shifts<T>(srcObjShift, dstObjShift));                                                      \
        RUN(T, Pointer, true, ptrs<T>(src, srcObjShift, 0, len), values(val, valStride),                       \
            ptrs<T>(dst, dstObjShift, dstObjStride, len), __VA_ARGS__)                                         \
    }                                                                                                          \
    extern "C" KELM_API kelStatus NAME##_##S##_L(const T* src, int srcElemStride, const T* const* val,          \
                                                 int valShift, T* const* dst, int dstObjShift,                 \
                                                 int dstElemStride, int len, int count)                        \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, val, dst), counts(count), sizes(len), strides<T>(srcElemStride, dstElemStride), \
                    shifts<T>(valShift, dstObjShift));                                                         \
        RUN(T, List, (unit_strides<T>(srcElemStride, dstElemStride)), vec(src, srcElemStride),                 \
            value_list(val, valShift), list(dst, dstObjShift, 0, dstElemStride), __VA_ARGS__)                  \
    }
