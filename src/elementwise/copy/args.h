// The argument lists of Copy, Extract and LoadIdentity, each written once.
//
// An array operand comes in one of three descriptions, named by a letter:
//   S  base, ObjStride, (RowStride,) ElemStride
//   P  pointer table, ObjShift, ObjStride
//   L  object list, ObjShift, (RowStride,) ElemStride
// and is a vector array (va: len) or a matrix array (ma: width, height).  The
// KELM_CP_* pieces below give, per description and kind, an operand's
// parameters, its description, the checks of its row and element strides,
// its shift (0 where it has none: the shifts are tested on their OR) and its
// object stride.  Entries take their check order as a list of the groups
//   nul  pointers     siz  sizes      cnt  count
//   str  row and element strides      shf  shifts
//   obj  object strides
// in the order the member tests them.
#pragma once

#include "common/types.h"
#include "kernels.h"

namespace kelm {

#define KELM_CP_PARAMS_S_va(T, Q, X) Q T* X, int X##ObjStride, int X##ElemStride
#define KELM_CP_PARAMS_S_ma(T, Q, X) Q T* X, int X##ObjStride, int X##RowStride, int X##ElemStride
#define KELM_CP_PARAMS_P_va(T, Q, X) Q T* const* X, int X##ObjShift, int X##ObjStride
#define KELM_CP_PARAMS_P_ma(T, Q, X) Q T* const* X, int X##ObjShift, int X##ObjStride
#define KELM_CP_PARAMS_L_va(T, Q, X) Q T* const* X, int X##ObjShift, int X##ElemStride
#define KELM_CP_PARAMS_L_ma(T, Q, X) Q T* const* X, int X##ObjShift, int X##RowStride, int X##ElemStride

#define KELM_CP_DESC_S_va(T, X) vecs(X, X##ObjStride, X##ElemStride)
#define KELM_CP_DESC_S_ma(T, X) mats(X, X##ObjStride, X##RowStride, X##ElemStride)
#define KELM_CP_DESC_P_va(T, X) ptrs<T>(X, X##ObjShift, X##ObjStride, len)
#define KELM_CP_DESC_P_ma(T, X) ptrs<T>(X, X##ObjShift, X##ObjStride, width)
#define KELM_CP_DESC_L_va(T, X) list<T>(X, X##ObjShift, 0, X##ElemStride)
#define KELM_CP_DESC_L_ma(T, X) list<T>(X, X##ObjShift, X##RowStride, X##ElemStride)

#define KELM_CP_STRIDES_S_va(T, X) strides<T>(X##ElemStride)
#define KELM_CP_STRIDES_S_ma(T, X) strides<T>(X##RowStride, X##ElemStride)
#define KELM_CP_STRIDES_P_va(T, X) kelOk
#define KELM_CP_STRIDES_P_ma(T, X) kelOk
#define KELM_CP_STRIDES_L_va(T, X) strides<T>(X##ElemStride)
#define KELM_CP_STRIDES_L_ma(T, X) strides<T>(X##RowStride, X##ElemStride)

#define KELM_CP_SHIFT_S(X) 0
#define KELM_CP_SHIFT_P(X) X##ObjShift
#define KELM_CP_SHIFT_L(X) X##ObjShift

#define KELM_CP_OBJ_S(T, X) strides<T>(X##ObjStride)
#define KELM_CP_OBJ_P(T, X) strides<T>(X##ObjStride)
#define KELM_CP_OBJ_L(T, X) kelOk

#define KELM_CP_SIZE_PARAMS_va int len
#define KELM_CP_SIZE_PARAMS_ma int width, int height
#define KELM_CP_SIZES_va sizes(len)
#define KELM_CP_SIZES_ma sizes(width, height)
#define KELM_CP_HW_va 1, len
#define KELM_CP_HW_ma height, width

// The argument of the 32f or of the 64f member.
#define KELM_PICK_32f(A32, A64) A32
#define KELM_PICK_64f(A32, A64) A64
// M applied to an argument list that is itself the expansion of a macro.
#define KELM_CP_APPLY(M, ARGS) M ARGS

// --- Copy ------------------------------------------------------------------------------

// kelmCopy_<KIND>_<type>_XY, with the check orders O32 and O64 of its two types.
#define KELM_COPY_T(T, S, KIND, X, Y, O32, O64)                                                                \
    extern "C" KELM_API kelStatus kelmCopy_##KIND##_##S##_##X##Y(                                             \
        KELM_CP_PARAMS_##X##_##KIND(T, const, src), KELM_CP_PARAMS_##Y##_##KIND(T, , dst),                    \
        KELM_CP_SIZE_PARAMS_##KIND, int count)                                                                 \
    {                                                                                                          \
        const kelStatus nul = nulls(src, dst), siz = KELM_CP_SIZES_##KIND, cnt = counts(count),               \
                        str = first_failing({KELM_CP_STRIDES_##X##_##KIND(T, src),                             \
                                             KELM_CP_STRIDES_##Y##_##KIND(T, dst)}),                           \
                        shf = shifts<T>(KELM_CP_SHIFT_##X(src), KELM_CP_SHIFT_##Y(dst)),                       \
                        obj = when_several(count, first_failing({KELM_CP_OBJ_##X(T, src), KELM_CP_OBJ_##Y(T, dst)})); \
        KELM_CP_APPLY(KELM_CHECKS, KELM_PICK_##S(O32, O64));                                                   \
        return ownkelmCopy(count, KELM_CP_DESC_##X##_##KIND(T, src), KELM_CP_DESC_##Y##_##KIND(T, dst),       \
                           KELM_CP_HW_##KIND);                                                                 \
    }
#define KELM_COPY(KIND, X, Y, O32, O64) KELM_FOR_TYPES(KELM_COPY_T, KIND, X, Y, O32, O64)

// The usual order, and the one of the members that test the shifts first.
#define KELM_COPY_ORDER (nul, siz, cnt, str, shf, obj)
#define KELM_COPY_ORDER_SHIFTS_FIRST (nul, siz, cnt, shf, str, obj)

// --- Extract ---------------------------------------------------------------------------

// A source stored transposed (t, ta) has width rows of height elements as
// stored; its _P table holds height pointers per stored row.
#define KELM_EX_DESC_S_va(T, X, TR) KELM_CP_DESC_S_va(T, X)
#define KELM_EX_DESC_P_va(T, X, TR) KELM_CP_DESC_P_va(T, X)
#define KELM_EX_DESC_L_va(T, X, TR) KELM_CP_DESC_L_va(T, X)
#define KELM_EX_DESC_S_ma(T, X, TR) KELM_CP_DESC_S_ma(T, X)
#define KELM_EX_DESC_P_ma(T, X, TR) ptrs<T>(X, X##ObjShift, X##ObjStride, TR ? height : width)
#define KELM_EX_DESC_L_ma(T, X, TR) KELM_CP_DESC_L_ma(T, X)

// Arrays: NAME_<type>SUF in description X (SUF is empty, _P or _L); the
// strided members have no shift to test.
#define KELM_EXTRACT_A_T(T, S, NAME, KIND, TR, X, SUF, ORDER)                                                 \
    extern "C" KELM_API kelStatus NAME##_##S##SUF(KELM_CP_PARAMS_##X##_##KIND(T, const, src), T* dst,          \
                                                  KELM_CP_SIZE_PARAMS_##KIND, int count)                        \
    {                                                                                                          \
        [[maybe_unused]] const kelStatus shf = shifts<T>(KELM_CP_SHIFT_##X(src));                              \
        const kelStatus nul = nulls(src, dst), siz = KELM_CP_SIZES_##KIND, cnt = counts(count),                \
                        str = first_failing({KELM_CP_OBJ_##X(T, src), KELM_CP_STRIDES_##X##_##KIND(T, src)});  \
        KELM_CHECKS ORDER;                                                                                     \
        return ownkelmCopy(count, used<TR>(KELM_EX_DESC_##X##_##KIND(T, src, TR)), dense(dst, KELM_CP_HW_##KIND), \
                           KELM_CP_HW_##KIND);                                                                 \
    }
// The strided, _P and _L members of an array operand.
#define KELM_EXTRACT_ARRAY(NAME, KIND, TR)                                                                     \
    KELM_FOR_TYPES(KELM_EXTRACT_A_T, NAME, KIND, TR, S, , (nul, siz, cnt, str))                                \
    KELM_FOR_TYPES(KELM_EXTRACT_A_T, NAME, KIND, TR, P, _P, (nul, siz, cnt, shf, str))                         \
    KELM_FOR_TYPES(KELM_EXTRACT_A_T, NAME, KIND, TR, L, _L, (nul, siz, cnt, shf, str))

// One vector: OP is the order of the _P member of each type.
#define KELM_EXTRACT_V_T(T, S, OP32, OP64)                                                                    \
    extern "C" KELM_API kelStatus kelmExtract_v_##S(const T* src, int srcElemStride, T* dst, int len)          \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, dst), sizes(len), strides<T>(srcElemStride));                                  \
        return ownkelmCopy(1, vec(src, srcElemStride), dense(dst, 1, len), 1, len);                           \
    }                                                                                                          \
    extern "C" KELM_API kelStatus kelmExtract_v_##S##_P(const T* const* src, int srcObjShift, T* dst, int len) \
    {                                                                                                          \
        const kelStatus nul = nulls(src, dst), siz = sizes(len), shf = shifts<T>(srcObjShift);               \
        KELM_CP_APPLY(KELM_CHECKS, KELM_PICK_##S(OP32, OP64));                                                 \
        return ownkelmCopy(1, ptrs<T>(src, srcObjShift, 0, len), dense(dst, 1, len), 1, len);                 \
    }
#define KELM_EXTRACT_V(OP32, OP64) KELM_FOR_TYPES(KELM_EXTRACT_V_T, OP32, OP64)

// One matrix, plain (m) or stored transposed (t); the _P members test the
// sizes before the pointers.
#define KELM_EXTRACT_M_T(T, S, NAME, TR)                                                                       \
    extern "C" KELM_API kelStatus NAME##_##S(const T* src, int srcRowStride, int srcElemStride, T* dst,        \
                                             int width, int height)                                            \
    {                                                                                                          \
        KELM_CHECKS(nulls(src, dst), sizes(width, height), strides<T>(srcRowStride, srcElemStride));          \
        return ownkelmCopy(1, used<TR>(mat(src, srcRowStride, srcElemStride)), dense(dst, height, width),      \
                           height, width);                                                                     \
    }                                                                                                          \
    extern "C" KELM_API kelStatus NAME##_##S##_P(const T* const* src, int srcObjShift, T* dst, int width,      \
                                                 int height)                                                   \
    {                                                                                                          \
        KELM_CHECKS(sizes(width, height), nulls(src, dst), shifts<T>(srcObjShift));                           \
        return ownkelmCopy(1, used<TR>(ptrs<T>(src, srcObjShift, 0, TR ? height : width)),                    \
                           dense(dst, height, width), height, width);                                          \
    }
#define KELM_EXTRACT_M(NAME, TR) KELM_FOR_TYPES(KELM_EXTRACT_M_T, NAME, TR)

// --- LoadIdentity ------------------------------------------------------------------------

// OP32 and OP64: the check orders of the _P members of the two types.
#define KELM_IDENTITY_T(T, S, OP32, OP64)                                                                      \
    extern "C" KELM_API kelStatus kelmLoadIdentity_ma_##S(T* dst, int dstObjStride, int dstRowStride,          \
                                                          int dstElemStride, int width, int height, int count) \
    {                                                                                                          \
        KELM_CHECKS(nulls(dst), sizes(width, height), counts(count), strides<T>(dstRowStride, dstElemStride), \
                    when_several(count, strides<T>(dstObjStride)));                                           \
        return ownkelmLoadIdentity(count, mats(dst, dstObjStride, dstRowStride, dstElemStride), height, width); \
    }                                                                                                          \
    extern "C" KELM_API kelStatus kelmLoadIdentity_ma_##S##_P(T* const* dst, int dstObjShift, int dstObjStride, \
                                                              int width, int height, int count)                \
    {                                                                                                          \
        const kelStatus nul = nulls(dst), siz = sizes(width, height), cnt = counts(count),                    \
                        shf = shifts<T>(dstObjShift), obj = when_several(count, strides<T>(dstObjStride));    \
        KELM_CP_APPLY(KELM_CHECKS, KELM_PICK_##S(OP32, OP64));                                                 \
        return ownkelmLoadIdentity(count, ptrs<T>(dst, dstObjShift, dstObjStride, width), height, width);     \
    }                                                                                                          \
    extern "C" KELM_API kelStatus kelmLoadIdentity_ma_##S##_L(T* const* dst, int dstObjShift, int dstRowStride, \
                                                              int dstElemStride, int width, int height,        \
                                                              int count)                                       \
    {                                                                                                          \
        KELM_CHECKS(nulls(dst), sizes(width, height), counts(count), strides<T>(dstRowStride, dstElemStride), \
                    shifts<T>(dstObjShift));                                                                   \
        return ownkelmLoadIdentity(count, list<T>(dst, dstObjShift, dstRowStride, dstElemStride), height, width); \
    }
#define KELM_IDENTITY(OP32, OP64) KELM_FOR_TYPES(KELM_IDENTITY_T, OP32, OP64)

}  // namespace kelm
