// The argument lists of DotProduct and CrossProduct, each written once: a
// shape macro defines one member for one element type and one description,
// and KELM_DOT_<SHAPE>(NAME, ...) defines both types in every description.
//
// Operands are given by description and kind (common/vector_args.h): K1 and
// K2 say whether the first and second source are arrays (A) or one vector
// (V).  Dot products write one scalar per object to a plain contiguous array
// (no stride, no shift) and take the length; cross products work on
// 3-vectors, take no length, and describe their destination like a source.
//
// Checks: null pointers, count (arrays), length (dot only), strides, shifts.
#pragma once

#include "common/types.h"
#include "common/vector_args.h"
#include "kernels.h"

namespace kelm {

// --- dot products -------------------------------------------------------------------

#define KELM_DOT_VV_T(T, S, NAME, D)                                                                          \
    extern "C" KELM_API kelStatus KELM_VNAME(D, NAME##_##S)(KELM_VPAR(D, V, const T, src1),                  \
                                                            KELM_VPAR(D, V, const T, src2), T* dst, int len)  \
    {                                                                                                         \
        KELM_CHECKS(nulls(src1, src2, dst), sizes(len),                                                       \
                    strides<T>(KELM_VSTR(D, V, src1) KELM_VSTR(D, V, src2) KELM_NO_STRIDE(T)),                \
                    shifts<T>(KELM_VSHF(D, V, src1) KELM_VSHF(D, V, src2) KELM_NO_SHIFT));                    \
        return mul_serial(1, ownkelmDotProduct_vv{len}, KELM_VDESC(D, V, T, src1, len),                       \
                          KELM_VDESC(D, V, T, src2, len), scalars(dst));                                      \
    }
#define KELM_DOT_VV(NAME) KELM_FOR_TYPES(KELM_DOT_VV_T, NAME, S) KELM_FOR_TYPES(KELM_DOT_VV_T, NAME, P)

// The first source is an array; K2 the second.  WORK(len, count) is the
// member's work measure.
#define KELM_DOT_ARRAY_T(T, S, NAME, D, K2, WORK)                                                             \
    extern "C" KELM_API kelStatus KELM_VNAME(D, NAME##_##S)(KELM_VPAR(D, A, const T, src1),                  \
                                                            KELM_VPAR(D, K2, const T, src2), T* dst, int len, \
                                                            int count)                                        \
    {                                                                                                         \
        KELM_CHECKS(nulls(src1, src2, dst), counts(count), sizes(len),                                        \
                    strides<T>(KELM_VSTR(D, A, src1) KELM_VSTR(D, K2, src2) KELM_NO_STRIDE(T)),               \
                    shifts<T>(KELM_VSHF(D, A, src1) KELM_VSHF(D, K2, src2) KELM_NO_SHIFT));                   \
        KELM_MUL_RUN(NAME,                                                                                    \
                     above<KELM_VFORM(D)>(WORK(len, count), kDotLimits<T>,                                    \
                                          unit_strides<T>(KELM_VELEM(D, A, src1) KELM_VELEM(D, K2, src2)      \
                                                              KELM_NO_STRIDE(T))),                            \
                     ownkelmDotProduct_vava{len}, KELM_VDESC(D, A, T, src1, len),                             \
                     KELM_VDESC(D, K2, T, src2, len), scalars(dst))                                           \
    }
#define KELM_DOT_ARRAY(NAME, K2, WORK)                         \
    KELM_MUL_DRIVER(NAME)                                      \
    KELM_FOR_TYPES(KELM_DOT_ARRAY_T, NAME, S, K2, WORK)        \
    KELM_FOR_TYPES(KELM_DOT_ARRAY_T, NAME, P, K2, WORK)        \
    KELM_FOR_TYPES(KELM_DOT_ARRAY_T, NAME, L, K2, WORK)

// --- cross products -----------------------------------------------------------------

#define KELM_CROSS_VV_T(T, S, NAME, D)                                                                        \
    extern "C" KELM_API kelStatus KELM_VNAME(D, NAME##_##S)(                                                  \
        KELM_VPAR(D, V, const T, src1), KELM_VPAR(D, V, const T, src2), KELM_VPAR(D, V, T, dst))              \
    {                                                                                                         \
        KELM_CHECKS(nulls(src1, src2, dst),                                                                   \
                    strides<T>(KELM_VSTR(D, V, src1) KELM_VSTR(D, V, src2) KELM_VSTR(D, V, dst)               \
                                   KELM_NO_STRIDE(T)),                                                        \
                    shifts<T>(KELM_VSHF(D, V, src1) KELM_VSHF(D, V, src2) KELM_VSHF(D, V, dst)                \
                                  KELM_NO_SHIFT));                                                            \
        return mul_serial(1, ownkelmCrossProduct_vava{}, KELM_VDESC(D, V, T, src1, 3),                        \
                          KELM_VDESC(D, V, T, src2, 3), KELM_VDESC(D, V, T, dst, 3));                         \
    }
#define KELM_CROSS_VV(NAME) KELM_FOR_TYPES(KELM_CROSS_VV_T, NAME, S) KELM_FOR_TYPES(KELM_CROSS_VV_T, NAME, P)

// K1, K2: the kinds of the two sources; the destination is an array.  One
// test against the work measure WORK(count) precedes the kernel choice.
#define KELM_CROSS_ARRAY_T(T, S, NAME, D, K1, K2, WORK)                                                       \
    extern "C" KELM_API kelStatus KELM_VNAME(D, NAME##_##S)(                                                  \
        KELM_VPAR(D, K1, const T, src1), KELM_VPAR(D, K2, const T, src2), KELM_VPAR(D, A, T, dst), int count) \
    {                                                                                                         \
        KELM_CHECKS(nulls(src1, src2, dst), counts(count),                                                    \
                    strides<T>(KELM_VSTR(D, K1, src1) KELM_VSTR(D, K2, src2) KELM_VSTR(D, A, dst)             \
                                   KELM_NO_STRIDE(T)),                                                        \
                    shifts<T>(KELM_VSHF(D, K1, src1) KELM_VSHF(D, K2, src2) KELM_VSHF(D, A, dst)              \
                                  KELM_NO_SHIFT));                                                            \
        KELM_MUL_RUN(NAME, cross_parallel(WORK(count)), ownkelmCrossProduct_vava{},                           \
                     KELM_VDESC(D, K1, T, src1, 3), KELM_VDESC(D, K2, T, src2, 3), KELM_VDESC(D, A, T, dst, 3)) \
    }
#define KELM_CROSS_ARRAY(NAME, K1, K2, WORK)                       \
    KELM_MUL_DRIVER(NAME)                                          \
    KELM_FOR_TYPES(KELM_CROSS_ARRAY_T, NAME, S, K1, K2, WORK)      \
    KELM_FOR_TYPES(KELM_CROSS_ARRAY_T, NAME, P, K1, K2, WORK)      \
    KELM_FOR_TYPES(KELM_CROSS_ARRAY_T, NAME, L, K1, K2, WORK)

}  // namespace kelm
