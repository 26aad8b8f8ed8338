// The argument lists of the Add and Sub families, each written once.
//
// A shape macro defines the entries of one operation for one element type in
// every description it has; KELM_EW_<SHAPE>(NAME, OP, ...) defines both types.
// The array shapes take the check order of each description (strided, _P,
// _L) as a list of the groups below, in the order the member tests them:
//   nul  operand bases, tables and lists     cnt  count
//   siz  len, or width and height            str  strides
//   shf  shifts
// Matrix shapes take TR1/TR2: whether each source is stored transposed.
#pragma once

#include "common/shapes.h"
#include "common/types.h"
#include "kernels.h"

namespace kelm {

// The usual orders: arrays test null, count, size, stride (and shift).
#define KELM_ARRAY_ORDER (nul, cnt, siz, str)
#define KELM_ARRAY_ORDER_PL (nul, cnt, siz, str, shf)


// Names the operation's parallel driver: ownOMP_kelmAdd_vav and the like.
#define KELM_EW_DRIVER(NAME, OP)                                               \
    template <class... D>                                                      \
    kelStatus ownOMP_##NAME(int count, int h, int w, const D&... d)            \
    {                                                                          \
        return ::kelm::ownOMP_elementwise<OP>(count, d..., h, w);              \
    }

// An array entry's tail: decide, then run the driver or the kernel.
#define KELM_EW_RUN(NAME, OP, PARALLEL, H, W, A, B, D)                         \
    {                                                                          \
        const auto a_ = A;                                                     \
        const auto b_ = B;                                                     \
        const auto d_ = D;                                                     \
        if (PARALLEL) return ownOMP_##NAME(count, H, W, a_, b_, d_);           \
        return ::kelm::ew_serial<OP>(count, a_, b_, d_, H, W);                 \
    }

#define KELM_VEC_PARALLEL(T, FORM, M) ::kelm::vector_array_parallel<T, ::kelm::Form::FORM>(M(len, count))
#define KELM_MAT_PARALLEL(T, FORM, M, ...) \
    ::kelm::matrix_array_parallel<T, ::kelm::Form::FORM>(M(I32(width) * height, count), unit_strides<T>(__VA_ARGS__))

// --- single objects: strided and _P -------------------------------------------

#define KELM_EW_VV_T(T, S, NAME, OP)                                                                         \
    extern "C" KELM_API kelStatus NAME##_##S(const T* src1, int src1ElemStride, const T* src2,              \
                                             int src2ElemStride, T* dst, int dstElemStride, int len)        \
    {                                                                                                        \
        KELM_CHECKS(nulls(src1, src2, dst), sizes(len), strides<T>(src1ElemStride, src2ElemStride, dstElemStride)); \
        return ew_serial<OP>(1, vec(src1, src1ElemStride), vec(src2, src2ElemStride), vec(dst, dstElemStride), 1, len); \
    }                                                                                                        \
    extern "C" KELM_API kelStatus NAME##_##S##_P(const T* const* src1, int src1ObjShift, const T* const* src2, \
                                                 int src2ObjShift, T* const* dst, int dstObjShift, int len)  \
    {                                                                                                        \
        KELM_CHECKS(nulls(src1, src2, dst), sizes(len), shifts<T>(src1ObjShift, src2ObjShift, dstObjShift)); \
        return ew_serial<OP>(1, ptrs<T>(src1, src1ObjShift, 0, len), ptrs<T>(src2, src2ObjShift, 0, len),     \
                             ptrs<T>(dst, dstObjShift, 0, len), 1, len);                                      \
    }
#define KELM_EW_VV(NAME, OP) KELM_FOR_TYPES(KELM_EW_VV_T, NAME, OP)

// vc and cv: the vector comes first, the constant follows.
#define KELM_EW_VC_T(T, S, NAME, OP)                                                                          \
    extern "C" KELM_API kelStatus NAME##_##S(const T* src, int srcElemStride, T val, T* dst, int dstElemStride, \
                                             int len)                                                         \
    {                                                                                                         \
        KELM_CHECKS(nulls(src, dst), sizes(len), strides<T>(srcElemStride, dstElemStride));                  \
        return ew_serial<OP>(1, vec(src, srcElemStride), Value<T>{val}, vec(dst, dstElemStride), 1, len);     \
    }                                                                                                         \
    extern "C" KELM_API kelStatus NAME##_##S##_P(const T* const* src, int srcObjShift, T val, T* const* dst,   \
                                                 int dstObjShift, int len)                                    \
    {                                                                                                         \
        KELM_CHECKS(nulls(src, dst), sizes(len), shifts<T>(srcObjShift, dstObjShift));                       \
        return ew_serial<OP>(1, ptrs<T>(src, srcObjShift, 0, len), Value<T>{val}, ptrs<T>(dst, dstObjShift, 0, len), \
                             1, len);                                                                         \
    }
#define KELM_EW_VC(NAME, OP) KELM_FOR_TYPES(KELM_EW_VC_T, NAME, OP)

// mm, mt, tm, tt: width and height are those of the result.
#define KELM_EW_MM_T(T, S, NAME, OP, TR1, TR2)                                                                \
    extern "C" KELM_API kelStatus NAME##_##S(const T* src1, int src1RowStride, int src1ElemStride, const T* src2, \
                                             int src2RowStride, int src2ElemStride, T* dst, int dstRowStride,   \
                                             int dstElemStride, int width, int height)                         \
    {                                                                                                          \
        KELM_CHECKS(nulls(src1, src2, dst), sizes(width, height),                                             \
                    strides<T>(src1RowStride, src1ElemStride, src2RowStride, src2ElemStride, dstRowStride,     \
                               dstElemStride));                                                                \
        return ew_serial<OP>(1, orient<TR1>(mat(src1, src1RowStride, src1ElemStride)),                        \
                             orient<TR2>(mat(src2, src2RowStride, src2ElemStride)),                           \
                             mat(dst, dstRowStride, dstElemStride), height, width);                            \
    }                                                                                                          \
    extern "C" KELM_API kelStatus NAME##_##S##_P(const T* const* src1, int src1ObjShift, const T* const* src2,  \
                                                 int src2ObjShift, T* const* dst, int dstObjShift, int width,  \
                                                 int height)                                                   \
    {                                                                                                          \
        KELM_CHECKS(nulls(src1, src2, dst), sizes(width, height), shifts<T>(src1ObjShift, src2ObjShift, dstObjShift)); \
        return ew_serial<OP>(1, orient<TR1>(ptrs<T>(src1, src1ObjShift, 0, TR1 ? height : width)),            \
                             orient<TR2>(ptrs<T>(src2, src2ObjShift, 0, TR2 ? height : width)),               \
                             ptrs<T>(dst, dstObjShift, 0, width), height, width);                              \
    }
#define KELM_EW_MM(NAME, OP, TR1, TR2) KELM_FOR_TYPES(KELM_EW_MM_T, NAME, OP, TR1, TR2)

// --- vector arrays: strided, _P, _L ------------------------------------------------

#define KELM_EW_VAV_T(T, S, NAME, OP, OS, OP_, OL)                                                            \
    extern "C" KELM_API kelStatus NAME##_##S(const T* src1, int src1ObjStride, int src1ElemStride, const T* src2, \
                                             int src2ElemStride, T* dst, int dstObjStride, int dstElemStride,   \
                                             int len, int count)                                               \
    {                                                                                                          \
        const kelStatus nul = nulls(src1, src2, dst), cnt = counts(count), siz = sizes(len),                  \
                        str = strides<T>(src1ObjStride, src1ElemStride, src2ElemStride, dstObjStride, dstElemStride); \
        KELM_CHECKS OS;                                                                                        \
        KELM_EW_RUN(NAME, OP, KELM_VEC_PARALLEL(T, Strided, m_array_single), 1, len,                           \
                    vecs(src1, src1ObjStride, src1ElemStride), vec(src2, src2ElemStride),                      \
                    vecs(dst, dstObjStride, dstElemStride))                                                    \
    }                                                                                                          \
    extern "C" KELM_API kelStatus NAME##_##S##_P(const T* const* src1, int src1ObjShift, int src1ObjStride,     \
                                                 const T* const* src2, int src2ObjShift, T* const* dst,        \
                                                 int dstObjShift, int dstObjStride, int len, int count)        \
    {                                                                                                          \
        const kelStatus nul = nulls(src1, src2, dst), cnt = counts(count), siz = sizes(len),                  \
                        str = strides<T>(src1ObjStride, dstObjStride),                                        \
                        shf = shifts<T>(src1ObjShift, src2ObjShift, dstObjShift);                             \
        KELM_CHECKS OP_;                                                                                       \
        KELM_EW_RUN(NAME, OP, KELM_VEC_PARALLEL(T, Pointer, m_array_single), 1, len,                           \
                    ptrs<T>(src1, src1ObjShift, src1ObjStride, len), ptrs<T>(src2, src2ObjShift, 0, len),      \
                    ptrs<T>(dst, dstObjShift, dstObjStride, len))                                              \
    }                                                                                                          \
    extern "C" KELM_API kelStatus NAME##_##S##_L(const T* const* src1, int src1ObjShift, int src1ElemStride,    \
                                                 const T* src2, int src2ElemStride, T* const* dst,             \
                                                 int dstObjShift, int dstElemStride, int len, int count)       \
    {                                                                                                          \
        const kelStatus nul = nulls(src1, src2, dst), cnt = counts(count), siz = sizes(len),                  \
                        str = strides<T>(src1ElemStride, src2ElemStride, dstElemStride),                      \
                        shf = shifts<T>(src1ObjShift, dstObjShift);                                           \
        KELM_CHECKS OL;                                                                                        \
        KELM_EW_RUN(NAME, OP, KELM_VEC_PARALLEL(T, List, m_array_single), 1, len,                              \
                    list(src1, src1ObjShift, 0, src1ElemStride), vec(src2, src2ElemStride),                    \
                    list(dst, dstObjShift, 0, dstElemStride))                                                  \
    }
#define KELM_EW_VAV(NAME, OP, OS, OP_, OL) KELM_EW_DRIVER(NAME, OP) KELM_FOR_TYPES(KELM_EW_VAV_T, NAME, OP, OS, OP_, OL)

#define KELM_EW_VVA_T(T, S, NAME, OP)                                                                          \
    extern "C" KELM_API kelStatus NAME##_##S(const T* src1, int src1ElemStride, const T* src2, int src2ObjStride, \
                                             int src2ElemStride, T* dst, int dstObjStride, int dstElemStride,   \
                                             int len, int count)                                               \
    {                                                                                                          \
        const kelStatus nul = nulls(src1, src2, dst), cnt = counts(count), siz = sizes(len),                  \
                        str = strides<T>(src1ElemStride, src2ObjStride, src2ElemStride, dstObjStride, dstElemStride); \
        KELM_CHECKS(nul, cnt, siz, str);                                                                          \
        KELM_EW_RUN(NAME, OP, KELM_VEC_PARALLEL(T, Strided, m_array_single), 1, len, vec(src1, src1ElemStride), \
                    vecs(src2, src2ObjStride, src2ElemStride), vecs(dst, dstObjStride, dstElemStride))         \
    }                                                                                                          \
    extern "C" KELM_API kelStatus NAME##_##S##_P(const T* const* src1, int src1ObjShift, const T* const* src2,  \
                                                 int src2ObjShift, int src2ObjStride, T* const* dst,           \
                                                 int dstObjShift, int dstObjStride, int len, int count)        \
    {                                                                                                          \
        const kelStatus nul = nulls(src1, src2, dst), cnt = counts(count), siz = sizes(len),                  \
                        str = strides<T>(src2ObjStride, dstObjStride),                                        \
                        shf = shifts<T>(src1ObjShift, src2ObjShift, dstObjShift);                             \
        KELM_CHECKS(nul, cnt, siz, str, shf);                                                                       \
        KELM_EW_RUN(NAME, OP, KELM_VEC_PARALLEL(T, Pointer, m_array_single), 1, len,                           \
                    ptrs<T>(src1, src1ObjShift, 0, len), ptrs<T>(src2, src2ObjShift, src2ObjStride, len),      \
                    ptrs<T>(dst, dstObjShift, dstObjStride, len))                                              \
    }                                                                                                          \
    extern "C" KELM_API kelStatus NAME##_##S##_L(const T* src1, int src1ElemStride, const T* const* src2,       \
                                                 int src2ObjShift, int src2ElemStride, T* const* dst,          \
                                                 int dstObjShift, int dstElemStride, int len, int count)       \
    {                                                                                                          \
        const kelStatus nul = nulls(src1, src2, dst), cnt = counts(count), siz = sizes(len),                  \
                        str = strides<T>(src1ElemStride, src2ElemStride, dstElemStride),                      \
                        shf = shifts<T>(src2ObjShift, dstObjShift);                                           \
        KELM_CHECKS(nul, cnt, siz, str, shf);                                                                       \
        KELM_EW_RUN(NAME, OP, KELM_VEC_PARALLEL(T, List, m_array_single), 1, len, vec(src1, src1ElemStride),   \
                    list(src2, src2ObjShift, 0, src2ElemStride), list(dst, dstObjShift, 0, dstElemStride))     \
    }
#define KELM_EW_VVA(NAME, OP) KELM_EW_DRIVER(NAME, OP) KELM_FOR_TYPES(KELM_EW_VVA_T, NAME, OP)

#define KELM_EW_VAVA_T(T, S, NAME, OP)                                                                         \
    extern "C" KELM_API kelStatus NAME##_##S(const T* src1, int src1ObjStride, int src1ElemStride, const T* src2, \
                                             int src2ObjStride, int src2ElemStride, T* dst, int dstObjStride,  \
                                             int dstElemStride, int len, int count)                            \
    {                                                                                                          \
        const kelStatus nul = nulls(src1, src2, dst), cnt = counts(count), siz = sizes(len),                  \
                        str = strides<T>(src1ObjStride, src1ElemStride, src2ObjStride, src2ElemStride,        \
                                         dstObjStride, dstElemStride);                                         \
        KELM_CHECKS(nul, cnt, siz, str);                                                                          \
        KELM_EW_RUN(NAME, OP, KELM_VEC_PARALLEL(T, Strided, m_two_arrays), 1, len,                             \
                    vecs(src1, src1ObjStride, src1ElemStride), vecs(src2, src2ObjStride, src2ElemStride),      \
                    vecs(dst, dstObjStride, dstElemStride))                                                    \
    }                                                                                                          \
    extern "C" KELM_API kelStatus NAME##_##S##_P(const T* const* src1, int src1ObjShift, int src1ObjStride,     \
                                                 const T* const* src2, int src2ObjShift, int src2ObjStride,    \
                                                 T* const* dst, int dstObjShift, int dstObjStride, int len,    \
                                                 int count)                                                    \
    {                                                                                                          \
        const kelStatus nul = nulls(src1, src2, dst), cnt = counts(count), siz = sizes(len),                  \
                        str = strides<T>(src1ObjStride, src2ObjStride, dstObjStride),                         \
                        shf = shifts<T>(src1ObjShift, src2ObjShift, dstObjShift);                             \
        KELM_CHECKS(nul, cnt, siz, str, shf);                                                                       \
        KELM_EW_RUN(NAME, OP, KELM_VEC_PARALLEL(T, Pointer, m_two_arrays), 1, len,                             \
                    ptrs<T>(src1, src1ObjShift, src1ObjStride, len), ptrs<T>(src2, src2ObjShift, src2ObjStride, len), \
                    ptrs<T>(dst, dstObjShift, dstObjStride, len))                                              \
    }                                                                                                          \
    extern "C" KELM_API kelStatus NAME##_##S##_L(const T* const* src1, int src1ObjShift, int src1ElemStride,    \
                                                 const T* const* src2, int src2ObjShift, int src2ElemStride,   \
                                                 T* const* dst, int dstObjShift, int dstElemStride, int len,   \
                                                 int count)                                                    \
    {                                                                                                          \
        const kelStatus nul = nulls(src1, src2, dst), cnt = counts(count), siz = sizes(len),                  \
                        str = strides<T>(src1ElemStride, src2ElemStride, dstElemStride),                      \
                        shf = shifts<T>(src1ObjShift, src2ObjShift, dstObjShift);                             \
        KELM_CHECKS(nul, cnt, siz, str, shf);                                                                       \
        KELM_EW_RUN(NAME, OP, KELM_VEC_PARALLEL(T, List, m_two_arrays), 1, len,                                \
                    list(src1, src1ObjShift, 0, src1ElemStride), list(src2, src2ObjShift, 0, src2ElemStride),  \
                    list(dst, dstObjShift, 0, dstElemStride))                                                  \
    }
#define KELM_EW_VAVA(NAME, OP) KELM_EW_DRIVER(NAME, OP) KELM_FOR_TYPES(KELM_EW_VAVA_T, NAME, OP)

// The vector-with-constants shapes (src/common/shapes.h): vac (and Sub cva),
// vaca (and Sub cava), vca (and Sub cav).  M is the member's work measure.
#define KELM_EW_SHAPE_RUN(T, FORM, UNIT, A, B, D, NAME, OP, M) \
    KELM_EW_RUN(NAME, OP, KELM_VEC_PARALLEL(T, FORM, M), 1, len, A, B, D)
#define KELM_EW_VAC(NAME, OP, M) \
    KELM_EW_DRIVER(NAME, OP) KELM_FOR_TYPES(KELM_SHAPE_VAC, NAME, KELM_EW_SHAPE_RUN, NAME, OP, M)
#define KELM_EW_VACA(NAME, OP) \
    KELM_EW_DRIVER(NAME, OP) KELM_FOR_TYPES(KELM_SHAPE_VACA, NAME, KELM_EW_SHAPE_RUN, NAME, OP, m_array_values)
#define KELM_EW_VCA(NAME, OP) \
    KELM_EW_DRIVER(NAME, OP) KELM_FOR_TYPES(KELM_SHAPE_VCA, NAME, KELM_EW_SHAPE_RUN, NAME, OP, m_single_values)

// --- matrix arrays: strided, _P, _L -------------------------------------------------
// width and height are those of the result; a transposed source is stored
// with height columns.

#define KELM_EW_MAM_T(T, S, NAME, OP, TR1, TR2, OS)                                                            \
    extern "C" KELM_API kelStatus NAME##_##S(const T* src1, int src1ObjStride, int src1RowStride,              \
                                             int src1ElemStride, const T* src2, int src2RowStride,             \
                                             int src2ElemStride, T* dst, int dstObjStride, int dstRowStride,   \
                                             int dstElemStride, int width, int height, int count)              \
    {                                                                                                          \
        const kelStatus nul = nulls(src1, src2, dst), cnt = counts(count), siz = sizes(width, height),        \
                        str = strides<T>(src1ObjStride, src1RowStride, src1ElemStride, src2RowStride,         \
                                         src2ElemStride, dstObjStride, dstRowStride, dstElemStride);           \
        KELM_CHECKS OS;                                                                                        \
        KELM_EW_RUN(NAME, OP,                                                                                  \
                    KELM_MAT_PARALLEL(T, Strided, m_array_single, src1ElemStride, src2ElemStride, dstElemStride), \
                    height, width, orient<TR1>(mats(src1, src1ObjStride, src1RowStride, src1ElemStride)),      \
                    orient<TR2>(mat(src2, src2RowStride, src2ElemStride)),                                     \
                    mats(dst, dstObjStride, dstRowStride, dstElemStride))                                      \
    }                                                                                                          \
    extern "C" KELM_API kelStatus NAME##_##S##_P(const T* const* src1, int src1ObjShift, int src1ObjStride,     \
                                                 const T* const* src2, int src2ObjShift, T* const* dst,        \
                                                 int dstObjShift, int dstObjStride, int width, int height,     \
                                                 int count)                                                    \
    {                                                                                                          \
        const kelStatus nul = nulls(src1, src2, dst), cnt = counts(count), siz = sizes(width, height),        \
                        str = strides<T>(src1ObjStride, dstObjStride),                                        \
                        shf = shifts<T>(src1ObjShift, src2ObjShift, dstObjShift);                             \
        KELM_CHECKS(nul, cnt, siz, str, shf);                                                                       \
        KELM_EW_RUN(NAME, OP, KELM_MAT_PARALLEL(T, Pointer, m_array_single), height, width,                    \
                    orient<TR1>(ptrs<T>(src1, src1ObjShift, src1ObjStride, TR1 ? height : width)),             \
                    orient<TR2>(ptrs<T>(src2, src2ObjShift, 0, TR2 ? height : width)),                         \
                    ptrs<T>(dst, dstObjShift, dstObjStride, width))                                            \
    }                                                                                                          \
    extern "C" KELM_API kelStatus NAME##_##S##_L(const T* const* src1, int src1ObjShift, int src1RowStride,     \
                                                 int src1ElemStride, const T* src2, int src2RowStride,         \
                                                 int src2ElemStride, T* const* dst, int dstObjShift,           \
                                                 int dstRowStride, int dstElemStride, int width, int height,   \
                                                 int count)                                                    \
    {                                                                                                          \
        const kelStatus nul = nulls(src1, src2, dst), cnt = counts(count), siz = sizes(width, height),        \
                        str = strides<T>(src1RowStride, src1ElemStride, src2RowStride, src2ElemStride,        \
                                         dstRowStride, dstElemStride),                                         \
                        shf = shifts<T>(src1ObjShift, dstObjShift);                                           \
        KELM_CHECKS(nul, cnt, siz, str, shf);                                                                       \
        KELM_EW_RUN(NAME, OP, KELM_MAT_PARALLEL(T, List, m_array_single), height, width,                       \
                    orient<TR1>(list(src1, src1ObjShift, src1RowStride, src1ElemStride)),                      \
                    orient<TR2>(mat(src2, src2RowStride, src2ElemStride)),                                     \
                    list(dst, dstObjShift, dstRowStride, dstElemStride))                                       \
    }
#define KELM_EW_MAM(NAME, OP, TR1, TR2, OS) \
    KELM_EW_DRIVER(NAME, OP) KELM_FOR_TYPES(KELM_EW_MAM_T, NAME, OP, TR1, TR2, OS)

#define KELM_EW_MMA_T(T, S, NAME, OP, TR1, TR2, OS)                                                            \
    extern "C" KELM_API kelStatus NAME##_##S(const T* src1, int src1RowStride, int src1ElemStride,             \
                                             const T* src2, int src2ObjStride, int src2RowStride,              \
                                             int src2ElemStride, T* dst, int dstObjStride, int dstRowStride,   \
                                             int dstElemStride, int width, int height, int count)              \
    {                                                                                                          \
        const kelStatus nul = nulls(src1, src2, dst), cnt = counts(count), siz = sizes(width, height),        \
                        str = strides<T>(src1RowStride, src1ElemStride, src2ObjStride, src2RowStride,         \
                                         src2ElemStride, dstObjStride, dstRowStride, dstElemStride);           \
        KELM_CHECKS OS;                                                                                        \
        KELM_EW_RUN(NAME, OP,                                                                                  \
                    KELM_MAT_PARALLEL(T, Strided, m_array_single, src1ElemStride, src2ElemStride, dstElemStride), \
                    height, width, orient<TR1>(mat(src1, src1RowStride, src1ElemStride)),                      \
                    orient<TR2>(mats(src2, src2ObjStride, src2RowStride, src2ElemStride)),                     \
                    mats(dst, dstObjStride, dstRowStride, dstElemStride))                                      \
    }                                                                                                          \
    extern "C" KELM_API kelStatus NAME##_##S##_P(const T* const* src1, int src1ObjShift, const T* const* src2,  \
                                                 int src2ObjShift, int src2ObjStride, T* const* dst,           \
                                                 int dstObjShift, int dstObjStride, int width, int height,     \
                                                 int count)                                                    \
    {                                                                                                          \
        const kelStatus nul = nulls(src1, src2, dst), cnt = counts(count), siz = sizes(width, height),        \
                        str = strides<T>(src2ObjStride, dstObjStride),                                        \
                        shf = shifts<T>(src1ObjShift, src2ObjShift, dstObjShift);                             \
        KELM_CHECKS(nul, cnt, siz, str, shf);                                                                       \
        KELM_EW_RUN(NAME, OP, KELM_MAT_PARALLEL(T, Pointer, m_array_single), height, width,                    \
                    orient<TR1>(ptrs<T>(src1, src1ObjShift, 0, TR1 ? height : width)),                         \
                    orient<TR2>(ptrs<T>(src2, src2ObjShift, src2ObjStride, TR2 ? height : width)),             \
                    ptrs<T>(dst, dstObjShift, dstObjStride, width))                                            \
    }                                                                                                          \
    extern "C" KELM_API kelStatus NAME##_##S##_L(const T* src1, int src1RowStride, int src1ElemStride,          \
                                                 const T* const* src2, int src2ObjShift, int src2RowStride,    \
                                                 int src2ElemStride, T* const* dst, int dstObjShift,           \
                                                 int dstRowStride, int dstElemStride, int width, int height,   \
                                                 int count)                                                    \
    {                                                                                                          \
        const kelStatus nul = nulls(src1, src2, dst), cnt = counts(count), siz = sizes(width, height),        \
                        str = strides<T>(src1RowStride, src1ElemStride, src2RowStride, src2ElemStride,        \
                                         dstRowStride, dstElemStride),                                         \
                        shf = shifts<T>(src2ObjShift, dstObjShift);                                           \
        KELM_CHECKS(nul, cnt, siz, str, shf);                                                                       \
        KELM_EW_RUN(NAME, OP, KELM_MAT_PARALLEL(T, List, m_array_single), height, width,                       \
                    orient<TR1>(mat(src1, src1RowStride, src1ElemStride)),                                     \
                    orient<TR2>(list(src2, src2ObjShift, src2RowStride, src2ElemStride)),                      \
                    list(dst, dstObjShift, dstRowStride, dstElemStride))                                       \
    }
#define KELM_EW_MMA(NAME, OP, TR1, TR2, OS) \
    KELM_EW_DRIVER(NAME, OP) KELM_FOR_TYPES(KELM_EW_MMA_T, NAME, OP, TR1, TR2, OS)

#define KELM_EW_MAMA_T(T, S, NAME, OP, TR1, TR2)                                                               \
    extern "C" KELM_API kelStatus NAME##_##S(const T* src1, int src1ObjStride, int src1RowStride,              \
                                             int src1ElemStride, const T* src2, int src2ObjStride,             \
                                             int src2RowStride, int src2ElemStride, T* dst, int dstObjStride,  \
                                             int dstRowStride, int dstElemStride, int width, int height,       \
                                             int count)                                                        \
    {                                                                                                          \
        const kelStatus nul = nulls(src1, src2, dst), cnt = counts(count), siz = sizes(width, height),        \
                        str = strides<T>(src1ObjStride, src1RowStride, src1ElemStride, src2ObjStride,         \
                                         src2RowStride, src2ElemStride, dstObjStride, dstRowStride,            \
                                         dstElemStride);                                                       \
        KELM_CHECKS(nul, cnt, siz, str);                                                                          \
        KELM_EW_RUN(NAME, OP,                                                                                  \
                    KELM_MAT_PARALLEL(T, Strided, m_two_arrays, src1ElemStride, src2ElemStride, dstElemStride), \
                    height, width, orient<TR1>(mats(src1, src1ObjStride, src1RowStride, src1ElemStride)),      \
                    orient<TR2>(mats(src2, src2ObjStride, src2RowStride, src2ElemStride)),                     \
                    mats(dst, dstObjStride, dstRowStride, dstElemStride))                                      \
    }                                                                                                          \
    extern "C" KELM_API kelStatus NAME##_##S##_P(const T* const* src1, int src1ObjShift, int src1ObjStride,     \
                                                 const T* const* src2, int src2ObjShift, int src2ObjStride,    \
                                                 T* const* dst, int dstObjShift, int dstObjStride, int width,  \
                                                 int height, int count)                                        \
    {                                                                                                          \
        const kelStatus nul = nulls(src1, src2, dst), cnt = counts(count), siz = sizes(width, height),        \
                        str = strides<T>(src1ObjStride, src2ObjStride, dstObjStride),                         \
                        shf = shifts<T>(src1ObjShift, src2ObjShift, dstObjShift);                             \
        KELM_CHECKS(nul, cnt, siz, str, shf);                                                                       \
        KELM_EW_RUN(NAME, OP, KELM_MAT_PARALLEL(T, Pointer, m_two_arrays), height, width,                      \
                    orient<TR1>(ptrs<T>(src1, src1ObjShift, src1ObjStride, TR1 ? height : width)),             \
                    orient<TR2>(ptrs<T>(src2, src2ObjShift, src2ObjStride, TR2 ? height : width)),             \
                    ptrs<T>(dst, dstObjShift, dstObjStride, width))                                            \
    }                                                                                                          \
    extern "C" KELM_API kelStatus NAME##_##S##_L(const T* const* src1, int src1ObjShift, int src1RowStride,     \
                                                 int src1ElemStride, const T* const* src2, int src2ObjShift,   \
                                                 int src2RowStride, int src2ElemStride, T* const* dst,         \
                                                 int dstObjShift, int dstRowStride, int dstElemStride,         \
                                                 int width, int height, int count)                             \
    {                                                                                                          \
        const kelStatus nul = nulls(src1, src2, dst), cnt = counts(count), siz = sizes(width, height),        \
                        str = strides<T>(src1RowStride, src1ElemStride, src2RowStride, src2ElemStride,        \
                                         dstRowStride, dstElemStride),                                         \
                        shf = shifts<T>(src1ObjShift, src2ObjShift, dstObjShift);                             \
        KELM_CHECKS(nul, cnt, siz, str, shf);                                                                       \
        KELM_EW_RUN(NAME, OP, KELM_MAT_PARALLEL(T, List, m_two_arrays), height, width,                         \
                    orient<TR1>(list(src1, src1ObjShift, src1RowStride, src1ElemStride)),                      \
                    orient<TR2>(list(src2, src2ObjShift, src2RowStride, src2ElemStride)),                      \
                    list(dst, dstObjShift, dstRowStride, dstElemStride))                                       \
    }
#define KELM_EW_MAMA(NAME, OP, TR1, TR2) KELM_EW_DRIVER(NAME, OP) KELM_FOR_TYPES(KELM_EW_MAMA_T, NAME, OP, TR1, TR2)

}  // namespace kelm
