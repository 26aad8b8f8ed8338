/* Part of kelm.h; include that header, not this one. */
#ifndef KELM_DOT_H
#define KELM_DOT_H

/* DotProduct and CrossProduct.
 *
 * Dot products (vv, vav, vava) take the first source, the second source, the
 * destination, then the length (and count).  The destination is a plain
 * contiguous array of the element type, one scalar per object, with no
 * stride or shift.  vav pairs each vector of the first (array) operand with
 * the one second vector.  Sums are formed in the element type:
 *   - one pair, contiguous (both element strides the element size): lengths
 *     3 to 6 add the products left to right; lengths up to 10, and a second
 *     vector whose address is not a multiple of the element size, one running
 *     sum from zero; longer 32f vectors sum the products up to a 16-byte
 *     aligned second vector into lane 0 of one four-lane sum, then blocks of
 *     eight into two four-lane sums (elements 0-3 and 4-7), add the two lane by
 *     lane, form (S0 + S1) + (S2 + S3) and add the tail in order; longer 64f
 *     vectors take blocks of four into two two-lane sums, add them lane by
 *     lane, form S0 + S1 and add the tail in order;
 *   - one pair, general strides or pointer tables: one running sum from zero;
 *   - arrays, every description: length 4 as (p0 + p1) + (p2 + p3), other
 *     lengths one running sum from zero.
 * So a 32f result of an array call may differ in the last bit from the
 * single-pair result of the same data.
 *
 * Cross products (vv, vav, vva, vava) work on 3-vectors and take no length;
 * the destination is described like a source.  r0 = a1 b2 - a2 b1,
 * r1 = a2 b0 - a0 b2, r2 = a0 b1 - a1 b0, each one difference of two rounded
 * products.  The single-pair forms read both sources before writing, so the
 * destination may be either source; array forms make no such promise.
 *
 * Checks, in order: null pointers, count, length (dot products), strides,
 * shifts.
 */

#ifdef __cplusplus
extern "C" {
#endif

KELM_API kelStatus kelmDotProduct_vv_32f(const kel32f* src1, int src1ElemStride, const kel32f* src2, int
    src2ElemStride, kel32f* dst, int len);
KELM_API kelStatus kelmDotProduct_vv_32f_P(const kel32f* const* src1, int src1ObjShift, const kel32f* const* src2, int
    src2ObjShift, kel32f* dst, int len);
KELM_API kelStatus kelmDotProduct_vv_64f(const kel64f* src1, int src1ElemStride, const kel64f* src2, int
    src2ElemStride, kel64f* dst, int len);
KELM_API kelStatus kelmDotProduct_vv_64f_P(const kel64f* const* src1, int src1ObjShift, const kel64f* const* src2, int
    src2ObjShift, kel64f* dst, int len);

KELM_API kelStatus kelmDotProduct_vav_32f(const kel32f* src1, int src1ObjStride, int src1ElemStride, const kel32f*
    src2, int src2ElemStride, kel32f* dst, int len, int count);
KELM_API kelStatus kelmDotProduct_vav_32f_P(const kel32f* const* src1, int src1ObjShift, int src1ObjStride, const
    kel32f* const* src2, int src2ObjShift, kel32f* dst, int len, int count);
KELM_API kelStatus kelmDotProduct_vav_32f_L(const kel32f* const* src1, int src1ObjShift, int src1ElemStride, const
    kel32f* src2, int src2ElemStride, kel32f* dst, int len, int count);
KELM_API kelStatus kelmDotProduct_vav_64f(const kel64f* src1, int src1ObjStride, int src1ElemStride, const kel64f*
    src2, int src2ElemStride, kel64f* dst, int len, int count);
KELM_API kelStatus kelmDotProduct_vav_64f_P(const kel64f* const* src1, int src1ObjShift, int src1ObjStride, const
    kel64f* const* src2, int src2ObjShift, kel64f* dst, int len, int count);
KELM_API kelStatus kelmDotProduct_vav_64f_L(const kel64f* const* src1, int src1ObjShift, int src1ElemStride, const
    kel64f* src2, int src2ElemStride, kel64f* dst, int len, int count);

KELM_API kelStatus kelmDotProduct_vava_32f(const kel32f* src1, int src1ObjStride, int src1ElemStride, const kel32f*
    src2, int src2ObjStride, int src2ElemStride, kel32f* dst, int len, int count);
KELM_API kelStatus kelmDotProduct_vava_32f_P(const kel32f* const* src1, int src1ObjShift, int src1ObjStride, const
    kel32f* const* src2, int src2ObjShift, int src2ObjStride, kel32f* dst, int len, int count);
KELM_API kelStatus kelmDotProduct_vava_32f_L(const kel32f* const* src1, int src1ObjShift, int src1ElemStride, const
    kel32f* const* src2, int src2ObjShift, int src2ElemStride, kel32f* dst, int len, int count);
KELM_API kelStatus kelmDotProduct_vava_64f(const kel64f* src1, int src1ObjStride, int src1ElemStride, const kel64f*
    src2, int src2ObjStride, int src2ElemStride, kel64f* dst, int len, int count);
KELM_API kelStatus kelmDotProduct_vava_64f_P(const kel64f* const* src1, int src1ObjShift, int src1ObjStride, const
    kel64f* const* src2, int src2ObjShift, int src2ObjStride, kel64f* dst, int len, int count);
KELM_API kelStatus kelmDotProduct_vava_64f_L(const kel64f* const* src1, int src1ObjShift, int src1ElemStride, const
    kel64f* const* src2, int src2ObjShift, int src2ElemStride, kel64f* dst, int len, int count);

KELM_API kelStatus kelmCrossProduct_vv_32f(const kel32f* src1, int src1ElemStride, const kel32f* src2, int
    src2ElemStride, kel32f* dst, int dstElemStride);
KELM_API kelStatus kelmCrossProduct_vv_32f_P(const kel32f* const* src1, int src1ObjShift, const kel32f* const* src2,
    int src2ObjShift, kel32f* const* dst, int dstObjShift);
KELM_API kelStatus kelmCrossProduct_vv_64f(const kel64f* src1, int src1ElemStride, const kel64f* src2, int
    src2ElemStride, kel64f* dst, int dstElemStride);
KELM_API kelStatus kelmCrossProduct_vv_64f_P(const kel64f* const* src1, int src1ObjShift, const kel64f* const* src2,
    int src2ObjShift, kel64f* const* dst, int dstObjShift);

KELM_API kelStatus kelmCrossProduct_vav_32f(const kel32f* src1, int src1ObjStride, int src1ElemStride, const kel32f*
    src2, int src2ElemStride, kel32f* dst, int dstObjStride, int dstElemStride, int count);
KELM_API kelStatus kelmCrossProduct_vav_32f_P(const kel32f* const* src1, int src1ObjShift, int src1ObjStride, const
    kel32f* const* src2, int src2ObjShift, kel32f* const* dst, int dstObjShift, int dstObjStride, int count);
KELM_API kelStatus kelmCrossProduct_vav_32f_L(const kel32f* const* src1, int src1ObjShift, int src1ElemStride, const
    kel32f* src2, int src2ElemStride, kel32f* const* dst, int dstObjShift, int dstElemStride, int count);
KELM_API kelStatus kelmCrossProduct_vav_64f(const kel64f* src1, int src1ObjStride, int src1ElemStride, const kel64f*
    src2, int src2ElemStride, kel64f* dst, int dstObjStride, int dstElemStride, int count);
KELM_API kelStatus kelmCrossProduct_vav_64f_P(const kel64f* const* src1, int src1ObjShift, int src1ObjStride, const
    kel64f* const* src2, int src2ObjShift, kel64f* const* dst, int dstObjShift, int dstObjStride, int count);
KELM_API kelStatus kelmCrossProduct_vav_64f_L(const kel64f* const* src1, int src1ObjShift, int src1ElemStride, const
    kel64f* src2, int src2ElemStride, kel64f* const* dst, int dstObjShift, int dstElemStride, int count);

KELM_API kelStatus kelmCrossProduct_vva_32f(const kel32f* src1, int src1ElemStride, const kel32f* src2, int
    src2ObjStride, int src2ElemStride, kel32f* dst, int dstObjStride, int dstElemStride, int count);
KELM_API kelStatus kelmCrossProduct_vva_32f_P(const kel32f* const* src1, int src1ObjShift, const kel32f* const* src2,
    int src2ObjShift, int src2ObjStride, kel32f* const* dst, int dstObjShift, int dstObjStride, int count);
KELM_API kelStatus kelmCrossProduct_vva_32f_L(const kel32f* src1, int src1ElemStride, const kel32f* const* src2, int
    src2ObjShift, int src2ElemStride, kel32f* const* dst, int dstObjShift, int dstElemStride, int count);
KELM_API kelStatus kelmCrossProduct_vva_64f(const kel64f* src1, int src1ElemStride, const kel64f* src2, int
    src2ObjStride, int src2ElemStride, kel64f* dst, int dstObjStride, int dstElemStride, int count);
KELM_API kelStatus kelmCrossProduct_vva_64f_P(const kel64f* const* src1, int src1ObjShift, const kel64f* const* src2,
    int src2ObjShift, int src2ObjStride, kel64f* const* dst, int dstObjShift, int dstObjStride, int count);
KELM_API kelStatus kelmCrossProduct_vva_64f_L(const kel64f* src1, int src1ElemStride, const kel64f* const* src2, int
    src2ObjShift, int src2ElemStride, kel64f* const* dst, int dstObjShift, int dstElemStride, int count);

KELM_API kelStatus kelmCrossProduct_vava_32f(const kel32f* src1, int src1ObjStride, int src1ElemStride, const kel32f*
    src2, int src2ObjStride, int src2ElemStride, kel32f* dst, int dstObjStride, int dstElemStride, int count);
KELM_API kelStatus kelmCrossProduct_vava_32f_P(const kel32f* const* src1, int src1ObjShift, int src1ObjStride, const
    kel32f* const* src2, int src2ObjShift, int src2ObjStride, kel32f* const* dst, int dstObjShift, int dstObjStride,
    int count);
KELM_API kelStatus kelmCrossProduct_vava_32f_L(const kel32f* const* src1, int src1ObjShift, int src1ElemStride, const
    kel32f* const* src2, int src2ObjShift, int src2ElemStride, kel32f* const* dst, int dstObjShift, int dstElemStride,
    int count);
KELM_API kelStatus kelmCrossProduct_vava_64f(const kel64f* src1, int src1ObjStride, int src1ElemStride, const kel64f*
    src2, int src2ObjStride, int src2ElemStride, kel64f* dst, int dstObjStride, int dstElemStride, int count);
KELM_API kelStatus kelmCrossProduct_vava_64f_P(const kel64f* const* src1, int src1ObjShift, int src1ObjStride, const
    kel64f* const* src2, int src2ObjShift, int src2ObjStride, kel64f* const* dst, int dstObjShift, int dstObjStride,
    int count);
KELM_API kelStatus kelmCrossProduct_vava_64f_L(const kel64f* const* src1, int src1ObjShift, int src1ElemStride, const
    kel64f* const* src2, int src2ObjShift, int src2ElemStride, kel64f* const* dst, int dstObjShift, int dstElemStride,
    int count);

#ifdef __cplusplus
}
#endif

#endif
