/* Part of kelm.h; include that header, not this one. */
#ifndef KELM_MUL_MV_H
#define KELM_MUL_MV_H

/* Mul with a vector or a constant operand.
 *
 * Matrix-vector products (mv, tv, mva, tva, mav, tav, mava, tava) take the
 * matrix first, with the width and height of the matrix AS STORED directly
 * after its description, then the vector with its length after its
 * description, then the destination (which carries no size of its own).  For
 * m the length must equal the width and the result has height elements; for t
 * (the stored matrix used transposed) the length must equal the height and
 * the result has width elements; otherwise kelErrSizeMismatch.  Each result
 * element starts at zero and receives the products in ascending order of the
 * inner index, in the element type.
 *
 * By-constant products (mc, tc, mac, tac, vc, vac, vca, vaca) take the source,
 * the constant (or array of constants), the destination, and only then the
 * sizes.  For tc and tac, width and height are those of the RESULT: the source
 * is stored with width rows and height columns.  Every result element is one
 * product.  An array of constants is a base and a byte stride (strided and
 * _P) or a list of count pointers and a shift (_L).
 *
 * Checks, in order: null pointers, count, sizes, size agreement, strides,
 * shifts.  The destination must not overlap a source.
 */

#ifdef __cplusplus
extern "C" {
#endif

/* Matrix times vector: dst = A x (mv) or A^T x (tv); width and height are those of
 * the matrix as stored, the vector's length must equal the inner size. */

KELM_API kelStatus kelmMul_mv_32f(const kel32f* src1, int src1RowStride, int src1ElemStride, int src1Width, int
    src1Height, const kel32f* src2, int src2ElemStride, int src2Len, kel32f* dst, int dstElemStride);
KELM_API kelStatus kelmMul_mv_32f_P(const kel32f* const* src1, int src1ObjShift, int src1Width, int src1Height, const
    kel32f* const* src2, int src2ObjShift, int src2Len, kel32f* const* dst, int dstObjShift);
KELM_API kelStatus kelmMul_mv_64f(const kel64f* src1, int src1RowStride, int src1ElemStride, int src1Width, int
    src1Height, const kel64f* src2, int src2ElemStride, int src2Len, kel64f* dst, int dstElemStride);
KELM_API kelStatus kelmMul_mv_64f_P(const kel64f* const* src1, int src1ObjShift, int src1Width, int src1Height, const
    kel64f* const* src2, int src2ObjShift, int src2Len, kel64f* const* dst, int dstObjShift);

KELM_API kelStatus kelmMul_tv_32f(const kel32f* src1, int src1RowStride, int src1ElemStride, int src1Width, int
    src1Height, const kel32f* src2, int src2ElemStride, int src2Len, kel32f* dst, int dstElemStride);
KELM_API kelStatus kelmMul_tv_32f_P(const kel32f* const* src1, int src1ObjShift, int src1Width, int src1Height, const
    kel32f* const* src2, int src2ObjShift, int src2Len, kel32f* const* dst, int dstObjShift);
KELM_API kelStatus kelmMul_tv_64f(const kel64f* src1, int src1RowStride, int src1ElemStride, int src1Width, int
    src1Height, const kel64f* src2, int src2ElemStride, int src2Len, kel64f* dst, int dstElemStride);
KELM_API kelStatus kelmMul_tv_64f_P(const kel64f* const* src1, int src1ObjShift, int src1Width, int src1Height, const
    kel64f* const* src2, int src2ObjShift, int src2Len, kel64f* const* dst, int dstObjShift);

KELM_API kelStatus kelmMul_mva_32f(const kel32f* src1, int src1RowStride, int src1ElemStride, int src1Width, int
    src1Height, const kel32f* src2, int src2ObjStride, int src2ElemStride, int src2Len, kel32f* dst, int dstObjStride,
    int dstElemStride, int count);
KELM_API kelStatus kelmMul_mva_32f_P(const kel32f* const* src1, int src1ObjShift, int src1Width, int src1Height, const
    kel32f* const* src2, int src2ObjShift, int src2ObjStride, int src2Len, kel32f* const* dst, int dstObjShift, int
    dstObjStride, int count);
KELM_API kelStatus kelmMul_mva_32f_L(const kel32f* src1, int src1RowStride, int src1ElemStride, int src1Width, int
    src1Height, const kel32f* const* src2, int src2ObjShift, int src2ElemStride, int src2Len, kel32f* const* dst, int
    dstObjShift, int dstElemStride, int count);
KELM_API kelStatus kelmMul_mva_64f(const kel64f* src1, int src1RowStride, int src1ElemStride, int src1Width, int
    src1Height, const kel64f* src2, int src2ObjStride, int src2ElemStride, int src2Len, kel64f* dst, int dstObjStride,
    int dstElemStride, int count);
KELM_API kelStatus kelmMul_mva_64f_P(const kel64f* const* src1, int src1ObjShift, int src1Width, int src1Height, const
    kel64f* const* src2, int src2ObjShift, int src2ObjStride, int src2Len, kel64f* const* dst, int dstObjShift, int
    dstObjStride, int count);
KELM_API kelStatus kelmMul_mva_64f_L(const kel64f* src1, int src1RowStride, int src1ElemStride, int src1Width, int
    src1Height, const kel64f* const* src2, int src2ObjShift, int src2ElemStride, int src2Len, kel64f* const* dst, int
    dstObjShift, int dstElemStride, int count);

KELM_API kelStatus kelmMul_tva_32f(const kel32f* src1, int src1RowStride, int src1ElemStride, int src1Width, int
    src1Height, const kel32f* src2, int src2ObjStride, int src2ElemStride, int src2Len, kel32f* dst, int dstObjStride,
    int dstElemStride, int count);
KELM_API kelStatus kelmMul_tva_32f_P(const kel32f* const* src1, int src1ObjShift, int src1Width, int src1Height, const
    kel32f* const* src2, int src2ObjShift, int src2ObjStride, int src2Len, kel32f* const* dst, int dstObjShift, int
    dstObjStride, int count);
KELM_API kelStatus kelmMul_tva_32f_L(const kel32f* src1, int src1RowStride, int src1ElemStride, int src1Width, int
    src1Height, const kel32f* const* src2, int src2ObjShift, int src2ElemStride, int src2Len, kel32f* const* dst, int
    dstObjShift, int dstElemStride, int count);
KELM_API kelStatus kelmMul_tva_64f(const kel64f* src1, int src1RowStride, int src1ElemStride, int src1Width, int
    src1Height, const kel64f* src2, int src2ObjStride, int src2ElemStride, int src2Len, kel64f* dst, int dstObjStride,
    int dstElemStride, int count);
KELM_API kelStatus kelmMul_tva_64f_P(const kel64f* const* src1, int src1ObjShift, int src1Width, int src1Height, const
    kel64f* const* src2, int src2ObjShift, int src2ObjStride, int src2Len, kel64f* const* dst, int dstObjShift, int
    dstObjStride, int count);
KELM_API kelStatus kelmMul_tva_64f_L(const kel64f* src1, int src1RowStride, int src1ElemStride, int src1Width, int
    src1Height, const kel64f* const* src2, int src2ObjShift, int src2ElemStride, int src2Len, kel64f* const* dst, int
    dstObjShift, int dstElemStride, int count);

KELM_API kelStatus kelmMul_mav_32f(const kel32f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, int
    src1Width, int src1Height, const kel32f* src2, int src2ElemStride, int src2Len, kel32f* dst, int dstObjStride, int
    dstElemStride, int count);
KELM_API kelStatus kelmMul_mav_32f_P(const kel32f* const* src1, int src1ObjShift, int src1ObjStride, int src1Width, int
    src1Height, const kel32f* const* src2, int src2ObjShift, int src2Len, kel32f* const* dst, int dstObjShift, int
    dstObjStride, int count);
KELM_API kelStatus kelmMul_mav_32f_L(const kel32f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride,
    int src1Width, int src1Height, const kel32f* src2, int src2ElemStride, int src2Len, kel32f* const* dst, int
    dstObjShift, int dstElemStride, int count);
KELM_API kelStatus kelmMul_mav_64f(const kel64f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, int
    src1Width, int src1Height, const kel64f* src2, int src2ElemStride, int src2Len, kel64f* dst, int dstObjStride, int
    dstElemStride, int count);
KELM_API kelStatus kelmMul_mav_64f_P(const kel64f* const* src1, int src1ObjShift, int src1ObjStride, int src1Width, int
    src1Height, const kel64f* const* src2, int src2ObjShift, int src2Len, kel64f* const* dst, int dstObjShift, int
    dstObjStride, int count);
KELM_API kelStatus kelmMul_mav_64f_L(const kel64f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride,
    int src1Width, int src1Height, const kel64f* src2, int src2ElemStride, int src2Len, kel64f* const* dst, int
    dstObjShift, int dstElemStride, int count);

KELM_API kelStatus kelmMul_tav_32f(const kel32f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, int
    src1Width, int src1Height, const kel32f* src2, int src2ElemStride, int src2Len, kel32f* dst, int dstObjStride, int
    dstElemStride, int count);
KELM_API kelStatus kelmMul_tav_32f_P(const kel32f* const* src1, int src1ObjShift, int src1ObjStride, int src1Width, int
    src1Height, const kel32f* const* src2, int src2ObjShift, int src2Len, kel32f* const* dst, int dstObjShift, int
    dstObjStride, int count);
KELM_API kelStatus kelmMul_tav_32f_L(const kel32f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride,
    int src1Width, int src1Height, const kel32f* src2, int src2ElemStride, int src2Len, kel32f* const* dst, int
    dstObjShift, int dstElemStride, int count);
KELM_API kelStatus kelmMul_tav_64f(const kel64f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, int
    src1Width, int src1Height, const kel64f* src2, int src2ElemStride, int src2Len, kel64f* dst, int dstObjStride, int
    dstElemStride, int count);
KELM_API kelStatus kelmMul_tav_64f_P(const kel64f* const* src1, int src1ObjShift, int src1ObjStride, int src1Width, int
    src1Height, const kel64f* const* src2, int src2ObjShift, int src2Len, kel64f* const* dst, int dstObjShift, int
    dstObjStride, int count);
KELM_API kelStatus kelmMul_tav_64f_L(const kel64f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride,
    int src1Width, int src1Height, const kel64f* src2, int src2ElemStride, int src2Len, kel64f* const* dst, int
    dstObjShift, int dstElemStride, int count);

KELM_API kelStatus kelmMul_mava_32f(const kel32f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, int
    src1Width, int src1Height, const kel32f* src2, int src2ObjStride, int src2ElemStride, int src2Len, kel32f* dst, int
    dstObjStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_mava_32f_P(const kel32f* const* src1, int src1ObjShift, int src1ObjStride, int src1Width, int
    src1Height, const kel32f* const* src2, int src2ObjShift, int src2ObjStride, int src2Len, kel32f* const* dst, int
    dstObjShift, int dstObjStride, int count);
KELM_API kelStatus kelmMul_mava_32f_L(const kel32f* const* src1, int src1ObjShift, int src1RowStride, int
    src1ElemStride, int src1Width, int src1Height, const kel32f* const* src2, int src2ObjShift, int src2ElemStride, int
    src2Len, kel32f* const* dst, int dstObjShift, int dstElemStride, int count);
KELM_API kelStatus kelmMul_mava_64f(const kel64f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, int
    src1Width, int src1Height, const kel64f* src2, int src2ObjStride, int src2ElemStride, int src2Len, kel64f* dst, int
    dstObjStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_mava_64f_P(const kel64f* const* src1, int src1ObjShift, int src1ObjStride, int src1Width, int
    src1Height, const kel64f* const* src2, int src2ObjShift, int src2ObjStride, int src2Len, kel64f* const* dst, int
    dstObjShift, int dstObjStride, int count);
KELM_API kelStatus kelmMul_mava_64f_L(const kel64f* const* src1, int src1ObjShift, int src1RowStride, int
    src1ElemStride, int src1Width, int src1Height, const kel64f* const* src2, int src2ObjShift, int src2ElemStride, int
    src2Len, kel64f* const* dst, int dstObjShift, int dstElemStride, int count);

KELM_API kelStatus kelmMul_tava_32f(const kel32f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, int
    src1Width, int src1Height, const kel32f* src2, int src2ObjStride, int src2ElemStride, int src2Len, kel32f* dst, int
    dstObjStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_tava_32f_P(const kel32f* const* src1, int src1ObjShift, int src1ObjStride, int src1Width, int
    src1Height, const kel32f* const* src2, int src2ObjShift, int src2ObjStride, int src2Len, kel32f* const* dst, int
    dstObjShift, int dstObjStride, int count);
KELM_API kelStatus kelmMul_tava_32f_L(const kel32f* const* src1, int src1ObjShift, int src1RowStride, int
    src1ElemStride, int src1Width, int src1Height, const kel32f* const* src2, int src2ObjShift, int src2ElemStride, int
    src2Len, kel32f* const* dst, int dstObjShift, int dstElemStride, int count);
KELM_API kelStatus kelmMul_tava_64f(const kel64f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, int
    src1Width, int src1Height, const kel64f* src2, int src2ObjStride, int src2ElemStride, int src2Len, kel64f* dst, int
    dstObjStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_tava_64f_P(const kel64f* const* src1, int src1ObjShift, int src1ObjStride, int src1Width, int
    src1Height, const kel64f* const* src2, int src2ObjShift, int src2ObjStride, int src2Len, kel64f* const* dst, int
    dstObjShift, int dstObjStride, int count);
KELM_API kelStatus kelmMul_tava_64f_L(const kel64f* const* src1, int src1ObjShift, int src1RowStride, int
    src1ElemStride, int src1Width, int src1Height, const kel64f* const* src2, int src2ObjShift, int src2ElemStride, int
    src2Len, kel64f* const* dst, int dstObjShift, int dstElemStride, int count);

/* Matrix by constant: dst = val*A (mc, mac) or val*A^T (tc, tac); the sizes stand
 * after the destination and are those of the result. */

KELM_API kelStatus kelmMul_mc_32f(const kel32f* src, int srcRowStride, int srcElemStride, kel32f val, kel32f* dst, int
    dstRowStride, int dstElemStride, int width, int height);
KELM_API kelStatus kelmMul_mc_32f_P(const kel32f* const* src, int srcObjShift, kel32f val, kel32f* const* dst, int
    dstObjShift, int width, int height);
KELM_API kelStatus kelmMul_mc_64f(const kel64f* src, int srcRowStride, int srcElemStride, kel64f val, kel64f* dst, int
    dstRowStride, int dstElemStride, int width, int height);
KELM_API kelStatus kelmMul_mc_64f_P(const kel64f* const* src, int srcObjShift, kel64f val, kel64f* const* dst, int
    dstObjShift, int width, int height);

KELM_API kelStatus kelmMul_tc_32f(const kel32f* src, int srcRowStride, int srcElemStride, kel32f val, kel32f* dst, int
    dstRowStride, int dstElemStride, int width, int height);
KELM_API kelStatus kelmMul_tc_32f_P(const kel32f* const* src, int srcObjShift, kel32f val, kel32f* const* dst, int
    dstObjShift, int width, int height);
KELM_API kelStatus kelmMul_tc_64f(const kel64f* src, int srcRowStride, int srcElemStride, kel64f val, kel64f* dst, int
    dstRowStride, int dstElemStride, int width, int height);
KELM_API kelStatus kelmMul_tc_64f_P(const kel64f* const* src, int srcObjShift, kel64f val, kel64f* const* dst, int
    dstObjShift, int width, int height);

KELM_API kelStatus kelmMul_mac_32f(const kel32f* src, int srcObjStride, int srcRowStride, int srcElemStride, kel32f val,
    kel32f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmMul_mac_32f_P(const kel32f* const* src, int srcObjShift, int srcObjStride, kel32f val, kel32f*
    const* dst, int dstObjShift, int dstObjStride, int width, int height, int count);
KELM_API kelStatus kelmMul_mac_32f_L(const kel32f* const* src, int srcObjShift, int srcRowStride, int srcElemStride,
    kel32f val, kel32f* const* dst, int dstObjShift, int dstRowStride, int dstElemStride, int width, int height, int
    count);
KELM_API kelStatus kelmMul_mac_64f(const kel64f* src, int srcObjStride, int srcRowStride, int srcElemStride, kel64f val,
    kel64f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmMul_mac_64f_P(const kel64f* const* src, int srcObjShift, int srcObjStride, kel64f val, kel64f*
    const* dst, int dstObjShift, int dstObjStride, int width, int height, int count);
KELM_API kelStatus kelmMul_mac_64f_L(const kel64f* const* src, int srcObjShift, int srcRowStride, int srcElemStride,
    kel64f val, kel64f* const* dst, int dstObjShift, int dstRowStride, int dstElemStride, int width, int height, int
    count);

KELM_API kelStatus kelmMul_tac_32f(const kel32f* src, int srcObjStride, int srcRowStride, int srcElemStride, kel32f val,
    kel32f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmMul_tac_32f_P(const kel32f* const* src, int srcObjShift, int srcObjStride, kel32f val, kel32f*
    const* dst, int dstObjShift, int dstObjStride, int width, int height, int count);
KELM_API kelStatus kelmMul_tac_32f_L(const kel32f* const* src, int srcObjShift, int srcRowStride, int srcElemStride,
    kel32f val, kel32f* const* dst, int dstObjShift, int dstRowStride, int dstElemStride, int width, int height, int
    count);
KELM_API kelStatus kelmMul_tac_64f(const kel64f* src, int srcObjStride, int srcRowStride, int srcElemStride, kel64f val,
    kel64f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmMul_tac_64f_P(const kel64f* const* src, int srcObjShift, int srcObjStride, kel64f val, kel64f*
    const* dst, int dstObjShift, int dstObjStride, int width, int height, int count);
KELM_API kelStatus kelmMul_tac_64f_L(const kel64f* const* src, int srcObjShift, int srcRowStride, int srcElemStride,
    kel64f val, kel64f* const* dst, int dstObjShift, int dstRowStride, int dstElemStride, int width, int height, int
    count);

/* Vector by constant: vc, vac (one constant), vca (one vector, an array of
 * constants), vaca (vector k times constant k). */

KELM_API kelStatus kelmMul_vc_32f(const kel32f* src, int srcElemStride, kel32f val, kel32f* dst, int dstElemStride, int
    len);
KELM_API kelStatus kelmMul_vc_32f_P(const kel32f* const* src, int srcObjShift, kel32f val, kel32f* const* dst, int
    dstObjShift, int len);
KELM_API kelStatus kelmMul_vc_64f(const kel64f* src, int srcElemStride, kel64f val, kel64f* dst, int dstElemStride, int
    len);
KELM_API kelStatus kelmMul_vc_64f_P(const kel64f* const* src, int srcObjShift, kel64f val, kel64f* const* dst, int
    dstObjShift, int len);

KELM_API kelStatus kelmMul_vac_32f(const kel32f* src, int srcObjStride, int srcElemStride, kel32f val, kel32f* dst, int
    dstObjStride, int dstElemStride, int len, int count);
KELM_API kelStatus kelmMul_vac_32f_P(const kel32f* const* src, int srcObjShift, int srcObjStride, kel32f val, kel32f*
    const* dst, int dstObjShift, int dstObjStride, int len, int count);
KELM_API kelStatus kelmMul_vac_32f_L(const kel32f* const* src, int srcObjShift, int srcElemStride, kel32f val, kel32f*
    const* dst, int dstObjShift, int dstElemStride, int len, int count);
KELM_API kelStatus kelmMul_vac_64f(const kel64f* src, int srcObjStride, int srcElemStride, kel64f val, kel64f* dst, int
    dstObjStride, int dstElemStride, int len, int count);
KELM_API kelStatus kelmMul_vac_64f_P(const kel64f* const* src, int srcObjShift, int srcObjStride, kel64f val, kel64f*
    const* dst, int dstObjShift, int dstObjStride, int len, int count);
KELM_API kelStatus kelmMul_vac_64f_L(const kel64f* const* src, int srcObjShift, int srcElemStride, kel64f val, kel64f*
    const* dst, int dstObjShift, int dstElemStride, int len, int count);

KELM_API kelStatus kelmMul_vca_32f(const kel32f* src, int srcElemStride, const kel32f* val, int valStride, kel32f* dst,
    int dstObjStride, int dstElemStride, int len, int count);
KELM_API kelStatus kelmMul_vca_32f_P(const kel32f* const* src, int srcObjShift, const kel32f* val, int valStride,
    kel32f* const* dst, int dstObjShift, int dstObjStride, int len, int count);
KELM_API kelStatus kelmMul_vca_32f_L(const kel32f* src, int srcElemStride, const kel32f* const* val, int valShift,
    kel32f* const* dst, int dstObjShift, int dstElemStride, int len, int count);
KELM_API kelStatus kelmMul_vca_64f(const kel64f* src, int srcElemStride, const kel64f* val, int valStride, kel64f* dst,
    int dstObjStride, int dstElemStride, int len, int count);
KELM_API kelStatus kelmMul_vca_64f_P(const kel64f* const* src, int srcObjShift, const kel64f* val, int valStride,
    kel64f* const* dst, int dstObjShift, int dstObjStride, int len, int count);
KELM_API kelStatus kelmMul_vca_64f_L(const kel64f* src, int srcElemStride, const kel64f* const* val, int valShift,
    kel64f* const* dst, int dstObjShift, int dstElemStride, int len, int count);

KELM_API kelStatus kelmMul_vaca_32f(const kel32f* src, int srcObjStride, int srcElemStride, const kel32f* val, int
    valStride, kel32f* dst, int dstObjStride, int dstElemStride, int len, int count);
KELM_API kelStatus kelmMul_vaca_32f_P(const kel32f* const* src, int srcObjShift, int srcObjStride, const kel32f* val,
    int valStride, kel32f* const* dst, int dstObjShift, int dstObjStride, int len, int count);
KELM_API kelStatus kelmMul_vaca_32f_L(const kel32f* const* src, int srcObjShift, int srcElemStride, const kel32f* const*
    val, int valShift, kel32f* const* dst, int dstObjShift, int dstElemStride, int len, int count);
KELM_API kelStatus kelmMul_vaca_64f(const kel64f* src, int srcObjStride, int srcElemStride, const kel64f* val, int
    valStride, kel64f* dst, int dstObjStride, int dstElemStride, int len, int count);
KELM_API kelStatus kelmMul_vaca_64f_P(const kel64f* const* src, int srcObjShift, int srcObjStride, const kel64f* val,
    int valStride, kel64f* const* dst, int dstObjShift, int dstObjStride, int len, int count);
KELM_API kelStatus kelmMul_vaca_64f_L(const kel64f* const* src, int srcObjShift, int srcElemStride, const kel64f* const*
    val, int valShift, kel64f* const* dst, int dstObjShift, int dstElemStride, int len, int count);


/* --- Visible kernels ---------------------------------------------------------
 * The matrix-by-constant kernels for 32f, exported for callers that have
 * already validated their arguments.  The library's own entries do not call
 * them.  They perform NO checks at all: null pointers, counts or sizes below 1
 * and strides that are not positive multiples of 4 are undefined behaviour.
 * They always return kelOk.
 *   ..._NxN_ASM     order N, unit element strides: bases, object and row strides
 *                   (16-byte aligned bases and strides take aligned loads and
 *                   stores; results are the same either way)
 *   ..._NxN_S2_ASM  order N, any element strides
 *   ..._P_ASM       pointer description, any width and height
 */
KELM_API kelStatus ownmMul_mac_32f_3x3_ASM(const kel32f* src, int srcObjStride, int srcRowStride, kel32f val, kel32f* dst,
    int dstObjStride, int dstRowStride, int count);
KELM_API kelStatus ownmMul_mac_32f_4x4_ASM(const kel32f* src, int srcObjStride, int srcRowStride, kel32f val, kel32f* dst,
    int dstObjStride, int dstRowStride, int count);
KELM_API kelStatus ownmMul_mac_32f_5x5_ASM(const kel32f* src, int srcObjStride, int srcRowStride, kel32f val, kel32f* dst,
    int dstObjStride, int dstRowStride, int count);
KELM_API kelStatus ownmMul_mac_32f_6x6_ASM(const kel32f* src, int srcObjStride, int srcRowStride, kel32f val, kel32f* dst,
    int dstObjStride, int dstRowStride, int count);
KELM_API kelStatus ownmMul_mac_32f_3x3_S2_ASM(const kel32f* src, int srcObjStride, int srcRowStride, int srcElemStride,
    kel32f val, kel32f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus ownmMul_mac_32f_4x4_S2_ASM(const kel32f* src, int srcObjStride, int srcRowStride, int srcElemStride,
    kel32f val, kel32f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus ownmMul_mac_32f_5x5_S2_ASM(const kel32f* src, int srcObjStride, int srcRowStride, int srcElemStride,
    kel32f val, kel32f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus ownmMul_mac_32f_6x6_S2_ASM(const kel32f* src, int srcObjStride, int srcRowStride, int srcElemStride,
    kel32f val, kel32f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus ownkelmMul_mac_32f_P_ASM(const kel32f* const* src, int srcObjShift, int srcObjStride, kel32f val,
    kel32f* const* dst, int dstObjShift, int dstObjStride, int width, int height, int count);

#ifdef __cplusplus
}
#endif

#endif
