/* Part of kelm.h; include that header, not this one. */
#ifndef KELM_QR_H
#define KELM_QR_H

/* QRDecomp and QRBackSubst: A = Q R by Householder reflections for a matrix
 * of height rows and width columns (width <= height), and the least-squares
 * solution of A x ~ b with such a factor (the exact one when A is square).
 *
 * Layout of a factor (height x width, the destination of QRDecomp): R on and
 * above the diagonal; below it, column k holds v[k+1..height-1] of the k-th
 * reflection H = I + beta v v^T, v[k] = 1 not stored, beta recomputed from v
 * as -2 / (1 + sum of v[i]^2).  A square matrix takes width - 1 reflections,
 * any other width.  R's diagonal carries the signs the reflections give.
 *
 * buffer: caller-owned scratch of height elements, never null.  QRDecomp
 * keeps the current reflection vector in it, QRBackSubst its working copy of
 * b, so b is never written (dst may be b itself).  Its contents after a call
 * are unspecified; arrays that run in parallel do not touch it at all.
 * Vectors b have height elements, solutions x width elements.  mva applies
 * one factor to every vector (in the _L form the factor stays strided); mava
 * pairs factor k with vector k.
 *
 * Failure.  Arguments are checked as null, count, width and height, strides,
 * shifts, then width > height (kelErrSizeMismatch).  QRDecomp returns
 * kelErrTinyDivisor as soon as a column's squared norm (not its norm) is
 * below the machine epsilon (2^-23 for 32f, 2^-52 for 64f): the columns
 * before it are finished, the rest of the destination partly reduced.  An
 * array stops at its first such matrix (the ones before it complete, the
 * ones after it untouched; in a parallel run the other threads' matrices are
 * still factored).  The decomposition may run in place (dst = src with the
 * same strides).  QRBackSubst does not test the factor: a zero on R's
 * diagonal gives infinities or NaNs. */

#ifdef __cplusplus
extern "C" {
#endif

KELM_API kelStatus kelmQRDecomp_m_32f(const kel32f* src, int srcRowStride, int srcElemStride, kel32f* buffer, kel32f* dst, int
    dstRowStride, int dstElemStride, int width, int height);
KELM_API kelStatus kelmQRDecomp_m_32f_P(const kel32f* const* src, int srcObjShift, kel32f* buffer, kel32f* const* dst, int dstObjShift, int
    width, int height);
KELM_API kelStatus kelmQRDecomp_m_64f(const kel64f* src, int srcRowStride, int srcElemStride, kel64f* buffer, kel64f* dst, int
    dstRowStride, int dstElemStride, int width, int height);
KELM_API kelStatus kelmQRDecomp_m_64f_P(const kel64f* const* src, int srcObjShift, kel64f* buffer, kel64f* const* dst, int dstObjShift, int
    width, int height);

KELM_API kelStatus kelmQRDecomp_ma_32f(const kel32f* src, int srcObjStride, int srcRowStride, int srcElemStride, kel32f* buffer, kel32f*
    dst, int dstObjStride, int dstRowStride, int dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmQRDecomp_ma_32f_P(const kel32f* const* src, int srcObjShift, int srcObjStride, kel32f* buffer, kel32f* const* dst,
    int dstObjShift, int dstObjStride, int width, int height, int count);
KELM_API kelStatus kelmQRDecomp_ma_32f_L(const kel32f* const* src, int srcObjShift, int srcRowStride, int srcElemStride, kel32f* buffer,
    kel32f* const* dst, int dstObjShift, int dstRowStride, int dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmQRDecomp_ma_64f(const kel64f* src, int srcObjStride, int srcRowStride, int srcElemStride, kel64f* buffer, kel64f*
    dst, int dstObjStride, int dstRowStride, int dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmQRDecomp_ma_64f_P(const kel64f* const* src, int srcObjShift, int srcObjStride, kel64f* buffer, kel64f* const* dst,
    int dstObjShift, int dstObjStride, int width, int height, int count);
KELM_API kelStatus kelmQRDecomp_ma_64f_L(const kel64f* const* src, int srcObjShift, int srcRowStride, int srcElemStride, kel64f* buffer,
    kel64f* const* dst, int dstObjShift, int dstRowStride, int dstElemStride, int width, int height, int count);

KELM_API kelStatus kelmQRBackSubst_mv_32f(const kel32f* src1, int src1RowStride, int src1ElemStride, kel32f* buffer, const kel32f* src2,
    int src2ElemStride, kel32f* dst, int dstElemStride, int width, int height);
KELM_API kelStatus kelmQRBackSubst_mv_32f_P(const kel32f* const* src1, int src1ObjShift, kel32f* buffer, const kel32f* const* src2, int
    src2ObjShift, kel32f* const* dst, int dstObjShift, int width, int height);
KELM_API kelStatus kelmQRBackSubst_mv_64f(const kel64f* src1, int src1RowStride, int src1ElemStride, kel64f* buffer, const kel64f* src2,
    int src2ElemStride, kel64f* dst, int dstElemStride, int width, int height);
KELM_API kelStatus kelmQRBackSubst_mv_64f_P(const kel64f* const* src1, int src1ObjShift, kel64f* buffer, const kel64f* const* src2, int
    src2ObjShift, kel64f* const* dst, int dstObjShift, int width, int height);

KELM_API kelStatus kelmQRBackSubst_mva_32f(const kel32f* src1, int src1RowStride, int src1ElemStride, kel32f* buffer, const kel32f* src2,
    int src2ObjStride, int src2ElemStride, kel32f* dst, int dstObjStride, int dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmQRBackSubst_mva_32f_P(const kel32f* const* src1, int src1ObjShift, kel32f* buffer, const kel32f* const* src2, int
    src2ObjShift, int src2ObjStride, kel32f* const* dst, int dstObjShift, int dstObjStride, int width, int height, int count);
KELM_API kelStatus kelmQRBackSubst_mva_32f_L(const kel32f* src1, int src1RowStride, int src1ElemStride, kel32f* buffer, const kel32f*
    const* src2, int src2ObjShift, int src2ElemStride, kel32f* const* dst, int dstObjShift, int dstElemStride, int width, int height, int
    count);
KELM_API kelStatus kelmQRBackSubst_mva_64f(const kel64f* src1, int src1RowStride, int src1ElemStride, kel64f* buffer, const kel64f* src2,
    int src2ObjStride, int src2ElemStride, kel64f* dst, int dstObjStride, int dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmQRBackSubst_mva_64f_P(const kel64f* const* src1, int src1ObjShift, kel64f* buffer, const kel64f* const* src2, int
    src2ObjShift, int src2ObjStride, kel64f* const* dst, int dstObjShift, int dstObjStride, int width, int height, int count);
KELM_API kelStatus kelmQRBackSubst_mva_64f_L(const kel64f* src1, int src1RowStride, int src1ElemStride, kel64f* buffer, const kel64f*
    const* src2, int src2ObjShift, int src2ElemStride, kel64f* const* dst, int dstObjShift, int dstElemStride, int width, int height, int
    count);

KELM_API kelStatus kelmQRBackSubst_mava_32f(const kel32f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, kel32f* buffer,
    const kel32f* src2, int src2ObjStride, int src2ElemStride, kel32f* dst, int dstObjStride, int dstElemStride, int width, int height, int
    count);
KELM_API kelStatus kelmQRBackSubst_mava_32f_P(const kel32f* const* src1, int src1ObjShift, int src1ObjStride, kel32f* buffer, const kel32f*
    const* src2, int src2ObjShift, int src2ObjStride, kel32f* const* dst, int dstObjShift, int dstObjStride, int width, int height, int
    count);
KELM_API kelStatus kelmQRBackSubst_mava_32f_L(const kel32f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, kel32f*
    buffer, const kel32f* const* src2, int src2ObjShift, int src2ElemStride, kel32f* const* dst, int dstObjShift, int dstElemStride, int
    width, int height, int count);
KELM_API kelStatus kelmQRBackSubst_mava_64f(const kel64f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, kel64f* buffer,
    const kel64f* src2, int src2ObjStride, int src2ElemStride, kel64f* dst, int dstObjStride, int dstElemStride, int width, int height, int
    count);
KELM_API kelStatus kelmQRBackSubst_mava_64f_P(const kel64f* const* src1, int src1ObjShift, int src1ObjStride, kel64f* buffer, const kel64f*
    const* src2, int src2ObjShift, int src2ObjStride, kel64f* const* dst, int dstObjShift, int dstObjStride, int width, int height, int
    count);
KELM_API kelStatus kelmQRBackSubst_mava_64f_L(const kel64f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, kel64f*
    buffer, const kel64f* const* src2, int src2ObjShift, int src2ElemStride, kel64f* const* dst, int dstObjShift, int dstElemStride, int
    width, int height, int count);

#ifdef __cplusplus
}
#endif

#endif
