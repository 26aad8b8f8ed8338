// The argument lists of Mul with a vector or a constant operand, each written
// once: a shape macro defines one member for one element type in every
// description it has, and KELM_MUL_<SHAPE>(NAME, ...) defines both types.
//
// Every member checks null pointers, count, sizes, size agreement (matrix-
// vector members only), strides, shifts, in that order.  TR says whether the
// stored matrix is used transposed.  In the matrix-vector members the matrix
// sizes are those of the stored matrix; in the by-constant ones the sizes
// follow the destination and are those of the result.
#pragma once

#include "common/shapes.h"
#include "common/types.h"
#include "kernels.h"

namespace kelm {

// The vector's length against the matrix's inner size.
template <bool Tr>
kelStatus inner_agrees(int w, int h, int len)
{
    return agree((Tr ? h : w) == len);
}

template <bool Tr>
int result_len(int w, int h) { return Tr ? w : h; }

// --- matrix times vector ------------------------------------------------------------

#define KELM_MUL_MV_T(T, S, NAME, TR)                                                                          \
    extern "C" KELM_API kelStatus NAME##_##S(const T* src1, int src1RowStride, int src1ElemStride, int src1Width, \
                                             int src1Height, const T* src2, int src2ElemStride, int src2Len,   \
                                             T* dst, int dstElemStride)                                        \
    {                                                                                                          \
        KELM_CHECKS(nulls(src1, src2, dst), sizes(src1Width, src1Height, src2Len),                            \
                    inner_agrees<TR>(src1Width, src1Height, src2Len),                                         \
                    strides<T>(src1RowStride, src1ElemStride, src2ElemStride, dstElemStride));                \
        return mul_serial(1, ownkelmMul_mv<TR>{src1Width, src1Height}, mat(src1, src1RowStride, src1ElemStride), \
                          vec(src2, src2ElemStride), vec(dst, dstElemStride));                                \
    }                                                                                                          \
    extern "C" KELM_API kelStatus NAME##_##S##_P(const T* const* src1, int src1ObjShift, int src1Width,         \
                                                 int src1Height, const T* const* src2, int src2ObjShift,       \
                                                 int src2Len, T* const* dst, int dstObjShift)                  \
    {                                                                                                          \
        KELM_CHECKS(nulls(src1, src2, dst), sizes(src1Width, src1Height, src2Len),                            \
                    inner_agrees<TR>(src1Width, src1Height, src2Len),                                         \
                    shifts<T>(src1ObjShift, src2ObjShift, dstObjShift));                                      \
        return mul_serial(1, ownkelmMul_mv<TR>{src1Width, src1Height}, ptrs<T>(src1, src1ObjShift, 0, src1Width), \
                          ptrs<T>(src2, src2ObjShift, 0, src2Len),                                            \
                          ptrs<T>(dst, dstObjShift, 0, result_len<TR>(src1Width, src1Height)));               \
    }
#define KELM_MUL_MV(NAME, TR) KELM_FOR_TYPES(KELM_MUL_MV_T, NAME, TR)

// The common head of the matrix-vector array members.
#define KELM_MV_CHECKS(T, TR, STRIDES, SHIFTS)                                                          \
    KELM_CHECKS(nulls(src1, src2, dst), counts(count), sizes(src1Width, src1Height, src2Len),   \
                inner_agrees<TR>(src1Width, src1Height, src2Len), strides<T> STRIDES, shifts<T> SHIFTS)
#define KELM_MV_KERNEL(TR) ownkelmMul_mv<TR>{src1Width, src1Height}
#define KELM_MV_DST_LEN(TR) result_len<TR>(src1Width, src1Height)

// One matrix times each vector of an array.
#define KELM_MUL_MVA_T(T, S, NAME, TR)                                                                         \
    extern "C" KELM_API kelStatus NAME##_##S(const T* src1, int src1RowStride, int src1ElemStride, int src1Width, \
                                             int src1Height, const T* src2, int src2ObjStride,                 \
                                             int src2ElemStride, int src2Len, T* dst, int dstObjStride,        \
                                             int dstElemStride, int count)                                     \
    {                                                                                                          \
        KELM_MV_CHECKS(T, TR, (src1RowStride, src1ElemStride, src2ObjStride, src2ElemStride, dstObjStride, dstElemStride), \
                       (0));                                                                                   \
        KELM_MUL_RUN(NAME,                                                                                     \
                     above<Form::Strided>(work_mva(src1Width, src1Height, count), kMatVecLimits<T>,            \
                                          unit_strides<T>(src1ElemStride, src2ElemStride, dstElemStride)),       \
                     KELM_MV_KERNEL(TR), mat(src1, src1RowStride, src1ElemStride),                                 \
                     vecs(src2, src2ObjStride, src2ElemStride), vecs(dst, dstObjStride, dstElemStride))        \
    }                                                                                                          \
    extern "C" KELM_API kelStatus NAME##_##S##_P(const T* const* src1, int src1ObjShift, int src1Width,         \
                                                 int src1Height, const T* const* src2, int src2ObjShift,       \
                                                 int src2ObjStride, int src2Len, T* const* dst, int dstObjShift, \
                                                 int dstObjStride, int count)                                  \
    {                                                                                                          \
        KELM_MV_CHECKS(T, TR, (src2ObjStride, dstObjStride), (src1ObjShift, src2ObjShift, dstObjShift));              \
        KELM_MUL_RUN(NAME, above<Form::Pointer>(work_mva(src1Width, src1Height, count), kMatVecLimits<T>, true), \
                     KELM_MV_KERNEL(TR), ptrs<T>(src1, src1ObjShift, 0, src1Width),                                \
                     ptrs<T>(src2, src2ObjShift, src2ObjStride, src2Len),                                      \
                     ptrs<T>(dst, dstObjShift, dstObjStride, KELM_MV_DST_LEN(TR)))                                 \
    }                                                                                                          \
    extern "C" KELM_API kelStatus NAME##_##S##_L(const T* src1, int src1RowStride, int src1ElemStride,          \
                                                 int src1Width, int src1Height, const T* const* src2,          \
                                                 int src2ObjShift, int src2ElemStride, int src2Len,            \
                                                 T* const* dst, int dstObjShift, int dstElemStride, int count) \
    {                                                                                                          \
        KELM_MV_CHECKS(T, TR, (src1RowStride, src1ElemStride, src2ElemStride, dstElemStride), (src2ObjShift, dstObjShift)); \
        KELM_MUL_RUN(NAME,                                                                                     \
                     above<Form::List>(work_mva(src1Width, src1Height, count), kMatVecLimits<T>,               \
                                       unit_strides<T>(src1ElemStride, src2ElemStride, dstElemStride)),          \
                     KELM_MV_KERNEL(TR), mat(src1, src1RowStride, src1ElemStride),                                 \
                     list(src2, src2ObjShift, 0, src2ElemStride), list(dst, dstObjShift, 0, dstElemStride))    \
    }
#define KELM_MUL_MVA(NAME, TR) KELM_MUL_DRIVER(NAME) KELM_FOR_TYPES(KELM_MUL_MVA_T, NAME, TR)

// Each matrix of an array times one vector.
#define KELM_MUL_MAV_T(T, S, NAME, TR)                                                                         \
    extern "C" KELM_API kelStatus NAME##_##S(const T* src1, int src1ObjStride, int src1RowStride,              \
                                             int src1ElemStride, int src1Width, int src1Height, const T* src2, \
                                             int src2ElemStride, int src2Len, T* dst, int dstObjStride,        \
                                             int dstElemStride, int count)                                     \
    {                                                                                                          \
        KELM_MV_CHECKS(T, TR, (src1ObjStride, src1RowStride, src1ElemStride, src2ElemStride, dstObjStride, dstElemStride), \
                       (0));                                                                                   \
        KELM_MUL_RUN(NAME,                                                                                     \
                     above<Form::Strided>(work_mav<TR>(src1Width, src1Height, count), kMatVecLimits<T>,        \
                                          unit_strides<T>(src1ElemStride, src2ElemStride, dstElemStride)),       \
                     KELM_MV_KERNEL(TR), mats(src1, src1ObjStride, src1RowStride, src1ElemStride),                 \
                     vec(src2, src2ElemStride), vecs(dst, dstObjStride, dstElemStride))                        \
    }                                                                                                          \
    extern "C" KELM_API kelStatus NAME##_##S##_P(const T* const* src1, int src1ObjShift, int src1ObjStride,     \
                                                 int src1Width, int src1Height, const T* const* src2,          \
                                                 int src2ObjShift, int src2Len, T* const* dst, int dstObjShift, \
                                                 int dstObjStride, int count)                                  \
    {                                                                                                          \
        KELM_MV_CHECKS(T, TR, (src1ObjStride, dstObjStride), (src1ObjShift, src2ObjShift, dstObjShift));              \
        KELM_MUL_RUN(NAME,                                                                                     \
                     above<Form::Pointer>(work_mav<TR>(src1Width, src1Height, count), kMatVecLimits<T>, true), \
                     KELM_MV_KERNEL(TR), ptrs<T>(src1, src1ObjShift, src1ObjStride, src1Width),                    \
                     ptrs<T>(src2, src2ObjShift, 0, src2Len),                                                  \
                     ptrs<T>(dst, dstObjShift, dstObjStride, KELM_MV_DST_LEN(TR)))                                 \
    }                                                                                                          \
    extern "C" KELM_API kelStatus NAME##_##S##_L(const T* const* src1, int src1ObjShift, int src1RowStride,     \
                                                 int src1ElemStride, int src1Width, int src1Height,            \
                                                 const T* src2, int src2ElemStride, int src2Len, T* const* dst, \
                                                 int dstObjShift, int dstElemStride, int count)                \
    {                                                                                                          \
        KELM_MV_CHECKS(T, TR, (src1RowStride, src1ElemStride, src2ElemStride, dstElemStride), (src1ObjShift, dstObjShift)); \
        KELM_MUL_RUN(NAME,                                                                                     \
                     above<Form::List>(work_mav<TR>(src1Width, src1Height, count), kMatVecLimits<T>,           \
                                       unit_strides<T>(src1ElemStride, src2ElemStride, dstElemStride)),          \
                     KELM_MV_KERNEL(TR), list(src1, src1ObjShift, src1RowStride, src1ElemStride),                  \
                     vec(src2, src2ElemStride), list(dst, dstObjShift, 0, dstElemStride))                      \
    }
#define KELM_MUL_MAV(NAME, TR) KELM_MUL_DRIVER(NAME) KELM_FOR_TYPES(KELM_MUL_MAV_T, NAME, TR)

// Matrix k times vector k.
#define KELM_MUL_MAVA_T(T, S, NAME, TR)                                                                        \
    extern "C" KELM_API kelStatus NAME##_##S(const T* src1, int src1ObjStride, int src1RowStride,              \
                                             int src1ElemStride, int src1Width, int src1Height, const T* src2, \
                                             int src2ObjStride, int src2ElemStride, int src2Len, T* dst,       \
                                             int dstObjStride, int dstElemStride, int count)                   \
    {                                                                                                          \
        KELM_MV_CHECKS(T, TR, (src1ObjStride, src1RowStride, src1ElemStride, src2ObjStride, src2ElemStride, dstObjStride, \
                        dstElemStride),                                                                        \
                       (0));                                                                                   \
        KELM_MUL_RUN(NAME,                                                                                     \
                     above<Form::Strided>(work_mava(src1Width, src1Height, count), kMatVecLimits<T>,           \
                                          unit_strides<T>(src1ElemStride, src2ElemStride, dstElemStride)),       \
                     KELM_MV_KERNEL(TR), mats(src1, src1ObjStride, src1RowStride, src1ElemStride),                 \
                     vecs(src2, src2ObjStride, src2ElemStride), vecs(dst, dstObjStride, dstElemStride))        \
    }                                                                                                          \
    extern "C" KELM_API kelStatus NAME##_##S##_P(const T* const* src1, int src1ObjShift, int src1ObjStride,     \
                                                 int src1Width, int src1Height, const T* const* src2,          \
                                                 int src2ObjShift, int src2ObjStride, int src2Len, T* const* dst, \
                                                 int dstObjShift, int dstObjStride, int count)                 \
    {                                                                                                          \
        KELM_MV_CHECKS(T, TR, (src1ObjStride, src2ObjStride, dstObjStride), (src1ObjShift, src2ObjShift, dstObjShift)); \
        KELM_MUL_RUN(NAME, above<Form::Pointer>(work_mava(src1Width, src1Height, count), kMatVecLimits<T>, true), \
                     KELM_MV_KERNEL(TR), ptrs<T>(src1, src1ObjShift, src1ObjStride, src1Width),                    \
                     ptrs<T>(src2, src2ObjShift, src2ObjStride, src2Len),                                      \
                     ptrs<T>(dst, dstObjShift, dstObjStride, KELM_MV_DST_LEN(TR)))                                 \
    }                                                                                                          \
    extern "C" KELM_API kelStatus NAME##_##S##_L(const T* const* src1, int src1ObjShift, int src1RowStride,     \
                                                 int src1ElemStride, int src1Width, int src1Height,            \
                                                 const T* const* src2, int src2ObjShift, int src2ElemStride,   \
                                                 int src2Len, T* const* dst, int dstObjShift, int dstElemStride, \
                                                 int count)                                                    \
    {                                                                                                          \
        KELM_MV_CHECKS(T, TR, (src1RowStride, src1ElemStride, src2ElemStride, dstElemStride),                         \
                       (src1ObjShift, src2ObjShift, dstObjShift));                                             \
        KELM_MUL_RUN(NAME,                                                                                     \
                     above<Form::List>(work_mava(src1Width, src1Height, count), kMatVecLimits<T>,              \
                                       unit_strides<T>(src1ElemStride, src2ElemStride, dstElemStride)),          \
                     KELM_MV_KERNEL(TR), list(src1, src1ObjShift, src1RowStride, src1ElemStride),                  \
                     list(src2, src2ObjShift, 0, src2ElemStride), list(dst, dstObjShift, 0, dstElemStride))    \
    }
#define KELM_MUL_MAVA(NAME, TR) KELM_MUL_DRIVER(NAME) KELM_FOR_TYPES(KELM_MUL_MAVA_T, NAME, TR)

// --- matrix by constant ---------------------------------------------------------------
// For t the sizes are the result's: the source is stored with width rows and
// height columns (pointer table width: height).

#define KELM_MC_SRC_WIDTH(TR) (TR ? height : width)

#define KELM_MUL_MC_T(T, S, NAME, TR)                                                                          \
    extern "C" KELM_API kelStatus NAME##_##S(const T* src, int srcRowStride, int srcElemStride, T val, T* dst,  \
                                             int dstRowStride, int dstElemStride, int width, int height)       \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, dst), sizes(width, height),                                                    \
                    strides<T>(srcRowStride, srcElemStride, dstRowStride, dstElemStride));                    \
        return mul_serial(1, ownkelmMul_mc{height, width}, orient<TR>(mat(src, srcRowStride, srcElemStride)),   \
                          Value<T>{val}, mat(dst, dstRowStride, dstElemStride));                              \
    }                                                                                                          \
    extern "C" KELM_API kelStatus NAME##_##S##_P(const T* const* src, int srcObjShift, T val, T* const* dst,    \
                                                 int dstObjShift, int width, int height)                       \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, dst), sizes(width, height), shifts<T>(srcObjShift, dstObjShift));              \
        return mul_serial(1, ownkelmMul_mc{height, width}, orient<TR>(ptrs<T>(src, srcObjShift, 0, KELM_MC_SRC_WIDTH(TR))), \
                          Value<T>{val}, ptrs<T>(dst, dstObjShift, 0, width));                                \
    }
#define KELM_MUL_MC(NAME, TR) KELM_FOR_TYPES(KELM_MUL_MC_T, NAME, TR)

#define KELM_MUL_MAC_T(T, S, NAME, TR)                                                                         \
    extern "C" KELM_API kelStatus NAME##_##S(const T* src, int srcObjStride, int srcRowStride, int srcElemStride, \
                                             T val, T* dst, int dstObjStride, int dstRowStride,                \
                                             int dstElemStride, int width, int height, int count)              \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, dst), counts(count), sizes(width, height),                                     \
                    strides<T>(srcObjStride, srcRowStride, srcElemStride, dstObjStride, dstRowStride,          \
                               dstElemStride));                                                                \
        KELM_MUL_RUN(NAME,                                                                                     \
                     above<Form::Strided>(work_mac(width, height, count), kMacLimits<T>,                       \
                                          unit_strides<T>(srcElemStride, dstElemStride)),                        \
                     (ownkelmMul_mc{height, width}), orient<TR>(mats(src, srcObjStride, srcRowStride, srcElemStride)), \
                     Value<T>{val}, mats(dst, dstObjStride, dstRowStride, dstElemStride))                      \
    }                                                                                                          \
    extern "C" KELM_API kelStatus NAME##_##S##_P(const T* const* src, int srcObjShift, int srcObjStride, T val,  \
                                                 T* const* dst, int dstObjShift, int dstObjStride, int width,  \
                                                 int height, int count)                                        \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, dst), counts(count), sizes(width, height), strides<T>(srcObjStride, dstObjStride), \
                    shifts<T>(srcObjShift, dstObjShift));                                                      \
        KELM_MUL_RUN(NAME, above<Form::Pointer>(work_mac(width, height, count), kMacLimits<T>, true),          \
                     (ownkelmMul_mc{height, width}),                                                           \
                     orient<TR>(ptrs<T>(src, srcObjShift, srcObjStride, KELM_MC_SRC_WIDTH(TR))), Value<T>{val},    \
                     ptrs<T>(dst, dstObjShift, dstObjStride, width))                                           \
    }                                                                                                          \
    extern "C" KELM_API kelStatus NAME##_##S##_L(const T* const* src, int srcObjShift, int srcRowStride,        \
                                                 int srcElemStride, T val, T* const* dst, int dstObjShift,     \
                                                 int dstRowStride, int dstElemStride, int width, int height,   \
                                                 int count)                                                    \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, dst), counts(count), sizes(width, height),                                     \
                    strides<T>(srcRowStride, srcElemStride, dstRowStride, dstElemStride),                      \
                    shifts<T>(srcObjShift, dstObjShift));                                                      \
        KELM_MUL_RUN(NAME,                                                                                     \
                     above<Form::List>(work_mac(width, height, count), kMacLimits<T>,                          \
                                       unit_strides<T>(srcElemStride, dstElemStride)),                           \
                     (ownkelmMul_mc{height, width}), orient<TR>(list(src, srcObjShift, srcRowStride, srcElemStride)), \
                     Value<T>{val}, list(dst, dstObjShift, dstRowStride, dstElemStride))                       \
    }
#define KELM_MUL_MAC(NAME, TR) KELM_MUL_DRIVER(NAME) KELM_FOR_TYPES(KELM_MUL_MAC_T, NAME, TR)

// --- vector by constant -----------------------------------------------------------------

#define KELM_VC_KERNEL (ownkelmMul_mc{1, len})

#define KELM_MUL_VC_T(T, S, NAME)                                                                              \
    extern "C" KELM_API kelStatus NAME##_##S(const T* src, int srcElemStride, T val, T* dst, int dstElemStride, \
                                             int len)                                                          \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, dst), sizes(len), strides<T>(srcElemStride, dstElemStride));                   \
        return mul_serial(1, KELM_VC_KERNEL, vec(src, srcElemStride), Value<T>{val}, vec(dst, dstElemStride)); \
    }                                                                                                          \
    extern "C" KELM_API kelStatus NAME##_##S##_P(const T* const* src, int srcObjShift, T val, T* const* dst,    \
                                                 int dstObjShift, int len)                                     \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, dst), sizes(len), shifts<T>(srcObjShift, dstObjShift));                        \
        return mul_serial(1, KELM_VC_KERNEL, ptrs<T>(src, srcObjShift, 0, len), Value<T>{val},                 \
                          ptrs<T>(dst, dstObjShift, 0, len));                                                  \
    }
#define KELM_MUL_VC(NAME) KELM_FOR_TYPES(KELM_MUL_VC_T, NAME)

// The vector-with-constants shapes (src/common/shapes.h): each vector of an
// array times one constant (vac), vector k times constant k (vaca), one vector
// times each constant of an array (vca).
#define KELM_MUL_VAC_RUN(T, FORM, UNIT, A, B, D, NAME) \
    KELM_MUL_RUN(NAME, above<Form::FORM>(work_vac(len, count), kMatVecLimits<T>, UNIT), KELM_VC_KERNEL, A, B, D)
#define KELM_MUL_VA_RUN(T, FORM, UNIT, A, B, D, NAME, WORK) \
    KELM_MUL_RUN(NAME, above_single_test<Form::FORM>(WORK(len, count)), KELM_VC_KERNEL, A, B, D)
#define KELM_MUL_VAC(NAME) KELM_MUL_DRIVER(NAME) KELM_FOR_TYPES(KELM_SHAPE_VAC, NAME, KELM_MUL_VAC_RUN, NAME)
#define KELM_MUL_VCA(NAME) KELM_MUL_DRIVER(NAME) KELM_FOR_TYPES(KELM_SHAPE_VCA, NAME, KELM_MUL_VA_RUN, NAME, work_vca)
#define KELM_MUL_VACA(NAME) KELM_MUL_DRIVER(NAME) KELM_FOR_TYPES(KELM_SHAPE_VACA, NAME, KELM_MUL_VA_RUN, NAME, work_vaca)

}  // namespace kelm
