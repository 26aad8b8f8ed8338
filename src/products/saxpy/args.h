// The argument lists of Saxpy, LComb and Gaxpy, each written once: a shape
// macro defines one member for one element type and one description, and
// KELM_<OP>_<SHAPE>(NAME, ...) defines both types in every description.
//
// Vector operands are given by description and kind (common/vector_args.h):
// K1 and K2 say whether x and y (Gaxpy: x and z) are arrays (A) or one
// vector (V); the destination of an array member is an array.  Scale factors
// are values of the element type: Saxpy's after x, LComb's a after x and b
// after y.  Gaxpy's matrix (always one, shared by every object) comes first
// with its width and height, each vector is followed by its length.
//
// Checks: null pointers, count (arrays), sizes, size agreement (Gaxpy only:
// width = length of x, height = length of z), strides, shifts.
#pragma once

#include "common/types.h"
#include "common/vector_args.h"
#include "kernels.h"

namespace kelm {

// --- Saxpy ------------------------------------------------------------------------

#define KELM_SAXPY_VV_T(T, S, NAME, D)                                                                        \
    extern "C" KELM_API kelStatus KELM_VNAME(D, NAME##_##S)(KELM_VPAR(D, V, const T, src1), T scale,          \
                                                            KELM_VPAR(D, V, const T, src2),                  \
                                                            KELM_VPAR(D, V, T, dst), int len)                \
    {                                                                                                         \
        KELM_CHECKS(nulls(src1, src2, dst), sizes(len),                                                       \
                    strides<T>(KELM_VSTR(D, V, src1) KELM_VSTR(D, V, src2) KELM_VSTR(D, V, dst)               \
                                   KELM_NO_STRIDE(T)),                                                        \
                    shifts<T>(KELM_VSHF(D, V, src1) KELM_VSHF(D, V, src2) KELM_VSHF(D, V, dst)                \
                                  KELM_NO_SHIFT));                                                            \
        return mul_serial(1, ownkelmSaxpy_vava<T>{len, scale}, KELM_VDESC(D, V, T, src1, len),                \
                          KELM_VDESC(D, V, T, src2, len), KELM_VDESC(D, V, T, dst, len));                     \
    }
#define KELM_SAXPY_VV(NAME) KELM_FOR_TYPES(KELM_SAXPY_VV_T, NAME, S) KELM_FOR_TYPES(KELM_SAXPY_VV_T, NAME, P)

#define KELM_SAXPY_ARRAY_T(T, S, NAME, D, K1, K2, LIMITS, WORK)                                               \
    extern "C" KELM_API kelStatus KELM_VNAME(D, NAME##_##S)(KELM_VPAR(D, K1, const T, src1), T scale,         \
                                                            KELM_VPAR(D, K2, const T, src2),                 \
                                                            KELM_VPAR(D, A, T, dst), int len, int count)     \
    {                                                                                                         \
        KELM_CHECKS(nulls(src1, src2, dst), counts(count), sizes(len),                                        \
                    strides<T>(KELM_VSTR(D, K1, src1) KELM_VSTR(D, K2, src2) KELM_VSTR(D, A, dst)             \
                                   KELM_NO_STRIDE(T)),                                                        \
                    shifts<T>(KELM_VSHF(D, K1, src1) KELM_VSHF(D, K2, src2) KELM_VSHF(D, A, dst)              \
                                  KELM_NO_SHIFT));                                                            \
        KELM_MUL_RUN(NAME,                                                                                    \
                     above<KELM_VFORM(D)>(WORK(len, count), LIMITS<T>,                                        \
                                          unit_strides<T>(KELM_VELEM(D, K1, src1) KELM_VELEM(D, K2, src2)     \
                                                              KELM_VELEM(D, A, dst) KELM_NO_STRIDE(T))),      \
                     (ownkelmSaxpy_vava<T>{len, scale}), KELM_VDESC(D, K1, T, src1, len),                     \
                     KELM_VDESC(D, K2, T, src2, len), KELM_VDESC(D, A, T, dst, len))                          \
    }
#define KELM_SAXPY_ARRAY(NAME, K1, K2, LIMITS, WORK)                       \
    KELM_MUL_DRIVER(NAME)                                                  \
    KELM_FOR_TYPES(KELM_SAXPY_ARRAY_T, NAME, S, K1, K2, LIMITS, WORK)      \
    KELM_FOR_TYPES(KELM_SAXPY_ARRAY_T, NAME, P, K1, K2, LIMITS, WORK)      \
    KELM_FOR_TYPES(KELM_SAXPY_ARRAY_T, NAME, L, K1, K2, LIMITS, WORK)

// --- LComb ------------------------------------------------------------------------

#define KELM_LCOMB_VV_T(T, S, NAME, D)                                                                        \
    extern "C" KELM_API kelStatus KELM_VNAME(D, NAME##_##S)(KELM_VPAR(D, V, const T, src1), T scale1,         \
                                                            KELM_VPAR(D, V, const T, src2), T scale2,        \
                                                            KELM_VPAR(D, V, T, dst), int len)                \
    {                                                                                                         \
        KELM_CHECKS(nulls(src1, src2, dst), sizes(len),                                                       \
                    strides<T>(KELM_VSTR(D, V, src1) KELM_VSTR(D, V, src2) KELM_VSTR(D, V, dst)               \
                                   KELM_NO_STRIDE(T)),                                                        \
                    shifts<T>(KELM_VSHF(D, V, src1) KELM_VSHF(D, V, src2) KELM_VSHF(D, V, dst)                \
                                  KELM_NO_SHIFT));                                                            \
        return mul_serial(1, ownkelmLComb_vava<T>{len, scale1, scale2}, KELM_VDESC(D, V, T, src1, len),       \
                          KELM_VDESC(D, V, T, src2, len), KELM_VDESC(D, V, T, dst, len));                     \
    }
#define KELM_LCOMB_VV(NAME) KELM_FOR_TYPES(KELM_LCOMB_VV_T, NAME, S) KELM_FOR_TYPES(KELM_LCOMB_VV_T, NAME, P)

#define KELM_LCOMB_ARRAY_T(T, S, NAME, D, K2, WORK)                                                           \
    extern "C" KELM_API kelStatus KELM_VNAME(D, NAME##_##S)(KELM_VPAR(D, A, const T, src1), T scale1,         \
                                                            KELM_VPAR(D, K2, const T, src2), T scale2,       \
                                                            KELM_VPAR(D, A, T, dst), int len, int count)     \
    {                                                                                                         \
        KELM_CHECKS(nulls(src1, src2, dst), counts(count), sizes(len),                                        \
                    strides<T>(KELM_VSTR(D, A, src1) KELM_VSTR(D, K2, src2) KELM_VSTR(D, A, dst)              \
                                   KELM_NO_STRIDE(T)),                                                        \
                    shifts<T>(KELM_VSHF(D, A, src1) KELM_VSHF(D, K2, src2) KELM_VSHF(D, A, dst)               \
                                  KELM_NO_SHIFT));                                                            \
        KELM_MUL_RUN(NAME,                                                                                    \
                     above<KELM_VFORM(D)>(WORK(len, count), kLCombLimits<T>,                                  \
                                          unit_strides<T>(KELM_VELEM(D, A, src1) KELM_VELEM(D, K2, src2)      \
                                                              KELM_VELEM(D, A, dst) KELM_NO_STRIDE(T))),      \
                     (ownkelmLComb_vava<T>{len, scale1, scale2}), KELM_VDESC(D, A, T, src1, len),             \
                     KELM_VDESC(D, K2, T, src2, len), KELM_VDESC(D, A, T, dst, len))                          \
    }
#define KELM_LCOMB_ARRAY(NAME, K2, WORK)                            \
    KELM_MUL_DRIVER(NAME)                                           \
    KELM_FOR_TYPES(KELM_LCOMB_ARRAY_T, NAME, S, K2, WORK)           \
    KELM_FOR_TYPES(KELM_LCOMB_ARRAY_T, NAME, P, K2, WORK)           \
    KELM_FOR_TYPES(KELM_LCOMB_ARRAY_T, NAME, L, K2, WORK)

// --- Gaxpy ------------------------------------------------------------------------

// The one matrix: strided (and in list members) base, row and element
// strides; a pointer table and shift in pointer members.
#define KELM_MPAR_S(T, X) const T* X, int X##RowStride, int X##ElemStride
#define KELM_MPAR_P(T, X) const T* const* X, int X##ObjShift
#define KELM_MPAR_L(T, X) KELM_MPAR_S(T, X)
#define KELM_MDESC_S(T, X, W) ::kelm::mat<T>(X, X##RowStride, X##ElemStride)
#define KELM_MDESC_P(T, X, W) ::kelm::ptrs<T>(X, X##ObjShift, 0, W)
#define KELM_MDESC_L(T, X, W) KELM_MDESC_S(T, X, W)
#define KELM_MSTR_S(X) X##RowStride, X##ElemStride,
#define KELM_MSTR_P(X)
#define KELM_MSTR_L(X) KELM_MSTR_S(X)
#define KELM_MSHF_S(X)
#define KELM_MSHF_P(X) X##ObjShift,
#define KELM_MSHF_L(X)
#define KELM_MELEM_S(X) X##ElemStride,
#define KELM_MELEM_P(X)
#define KELM_MELEM_L(X) KELM_MELEM_S(X)

#define KELM_GAXPY_SIZES                                                                                      \
    sizes(src1Width, src1Height, src2Len, src3Len), agree(src1Width == src2Len && src1Height == src3Len)

#define KELM_GAXPY_MV_T(T, S, NAME, D)                                                                        \
    extern "C" KELM_API kelStatus KELM_VNAME(D, NAME##_##S)(                                                  \
        KELM_MPAR_##D(T, src1), int src1Width, int src1Height, KELM_VPAR(D, V, const T, src2), int src2Len,   \
        KELM_VPAR(D, V, const T, src3), int src3Len, KELM_VPAR(D, V, T, dst))                                 \
    {                                                                                                         \
        KELM_CHECKS(nulls(src1, src2, src3, dst), KELM_GAXPY_SIZES,                                           \
                    strides<T>(KELM_MSTR_##D(src1) KELM_VSTR(D, V, src2) KELM_VSTR(D, V, src3)                \
                                   KELM_VSTR(D, V, dst) KELM_NO_STRIDE(T)),                                   \
                    shifts<T>(KELM_MSHF_##D(src1) KELM_VSHF(D, V, src2) KELM_VSHF(D, V, src3)                 \
                                  KELM_VSHF(D, V, dst) KELM_NO_SHIFT));                                       \
        return mul_serial(1, ownkelmGaxpy_mva{src1Width, src1Height}, KELM_MDESC_##D(T, src1, src1Width),     \
                          KELM_VDESC(D, V, T, src2, src2Len), KELM_VDESC(D, V, T, src3, src3Len),             \
                          KELM_VDESC(D, V, T, dst, src3Len));                                                 \
    }
#define KELM_GAXPY_MV(NAME) KELM_FOR_TYPES(KELM_GAXPY_MV_T, NAME, S) KELM_FOR_TYPES(KELM_GAXPY_MV_T, NAME, P)

// x is an array; K3 the kind of z.
#define KELM_GAXPY_ARRAY_T(T, S, NAME, D, K3, WORK)                                                           \
    extern "C" KELM_API kelStatus KELM_VNAME(D, NAME##_##S)(                                                  \
        KELM_MPAR_##D(T, src1), int src1Width, int src1Height, KELM_VPAR(D, A, const T, src2), int src2Len,   \
        KELM_VPAR(D, K3, const T, src3), int src3Len, KELM_VPAR(D, A, T, dst), int count)                     \
    {                                                                                                         \
        KELM_CHECKS(nulls(src1, src2, src3, dst), counts(count), KELM_GAXPY_SIZES,                            \
                    strides<T>(KELM_MSTR_##D(src1) KELM_VSTR(D, A, src2) KELM_VSTR(D, K3, src3)               \
                                   KELM_VSTR(D, A, dst) KELM_NO_STRIDE(T)),                                   \
                    shifts<T>(KELM_MSHF_##D(src1) KELM_VSHF(D, A, src2) KELM_VSHF(D, K3, src3)                \
                                  KELM_VSHF(D, A, dst) KELM_NO_SHIFT));                                       \
        KELM_MUL_RUN(NAME,                                                                                    \
                     above<KELM_VFORM(D)>(WORK(src1Width, src1Height, count), kGaxpyLimits<T>,                \
                                          unit_strides<T>(KELM_MELEM_##D(src1) KELM_VELEM(D, A, src2)         \
                                                              KELM_VELEM(D, K3, src3) KELM_VELEM(D, A, dst)   \
                                                                  KELM_NO_STRIDE(T))),                        \
                     (ownkelmGaxpy_mva{src1Width, src1Height}), KELM_MDESC_##D(T, src1, src1Width),           \
                     KELM_VDESC(D, A, T, src2, src2Len), KELM_VDESC(D, K3, T, src3, src3Len),                 \
                     KELM_VDESC(D, A, T, dst, src3Len))                                                       \
    }
#define KELM_GAXPY_ARRAY(NAME, K3, WORK)                            \
    KELM_MUL_DRIVER(NAME)                                           \
    KELM_FOR_TYPES(KELM_GAXPY_ARRAY_T, NAME, S, K3, WORK)           \
    KELM_FOR_TYPES(KELM_GAXPY_ARRAY_T, NAME, P, K3, WORK)           \
    KELM_FOR_TYPES(KELM_GAXPY_ARRAY_T, NAME, L, K3, WORK)

}  // namespace kelm
