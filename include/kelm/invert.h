/* Part of kelm.h; include that header, not this one. */
#ifndef KELM_INVERT_H
#define KELM_INVERT_H

/* Invert: the inverse of an n x n matrix (or of each of count matrices) into
 * a separate destination of the same shape.  buffer is scratch of n*(n+1)
 * elements and must not be null, whatever n; it is not used by parallel runs
 * of the array forms, which take their own.  The destination must not overlap
 * the source.
 *
 * How each order is inverted: order 1 is the reciprocal; orders 3 to 6 are
 * closed-form adjugates times the reciprocal of the determinant; order 2 and
 * orders 7 and up build the adjugate from the (n-1)-order minors, each found
 * by Gaussian elimination with partial pivoting in the buffer.
 *
 * Singularity.  The bound is tau(n) = 2*n^3 times the smallest normal number
 * of the type (2^-126, 2^-1022), except in the 64f kernels for contiguous
 * elements (both element strides equal to 8, list forms included) at orders
 * 3 and 4, where it is 4*n^3*2^-1022: the same matrix may be inverted with a
 * larger element stride and refused with unit strides.  Orders 3 to 6 fail
 * unless |det| >= tau; order 1 and the elimination path fail unless
 * |det| > tau, and the elimination also stops at a pivot with |pivot| < tau.
 * A failing matrix returns kelErrSingular with its destination untouched.  In
 * the elimination path a singular minor contributes +-tau(n)/det, not 0: the
 * inverse of the 2x2 identity has off-diagonal entries -tau(2).  Arrays stop
 * at the first singular matrix (the ones before it are complete, the ones
 * after it untouched); in a parallel run the other threads' matrices are
 * still inverted. */

#ifdef __cplusplus
extern "C" {
#endif

KELM_API kelStatus kelmInvert_m_32f(const kel32f* src, int srcRowStride, int srcElemStride, kel32f* buffer, kel32f* dst,
                                    int dstRowStride, int dstElemStride, int n);
KELM_API kelStatus kelmInvert_m_64f(const kel64f* src, int srcRowStride, int srcElemStride, kel64f* buffer, kel64f* dst,
                                    int dstRowStride, int dstElemStride, int n);
KELM_API kelStatus kelmInvert_m_32f_P(const kel32f* const* src, int srcObjShift, kel32f* buffer, kel32f* const* dst,
                                      int dstObjShift, int n);
KELM_API kelStatus kelmInvert_m_64f_P(const kel64f* const* src, int srcObjShift, kel64f* buffer, kel64f* const* dst,
                                      int dstObjShift, int n);

KELM_API kelStatus kelmInvert_ma_32f(const kel32f* src, int srcObjStride, int srcRowStride, int srcElemStride,
                                     kel32f* buffer, kel32f* dst, int dstObjStride, int dstRowStride, int dstElemStride,
                                     int n, int count);
KELM_API kelStatus kelmInvert_ma_64f(const kel64f* src, int srcObjStride, int srcRowStride, int srcElemStride,
                                     kel64f* buffer, kel64f* dst, int dstObjStride, int dstRowStride, int dstElemStride,
                                     int n, int count);
KELM_API kelStatus kelmInvert_ma_32f_P(const kel32f* const* src, int srcObjShift, int srcObjStride, kel32f* buffer,
                                       kel32f* const* dst, int dstObjShift, int dstObjStride, int n, int count);
KELM_API kelStatus kelmInvert_ma_64f_P(const kel64f* const* src, int srcObjShift, int srcObjStride, kel64f* buffer,
                                       kel64f* const* dst, int dstObjShift, int dstObjStride, int n, int count);
KELM_API kelStatus kelmInvert_ma_32f_L(const kel32f* const* src, int srcObjShift, int srcRowStride, int srcElemStride,
                                       kel32f* buffer, kel32f* const* dst, int dstObjShift, int dstRowStride,
                                       int dstElemStride, int n, int count);
KELM_API kelStatus kelmInvert_ma_64f_L(const kel64f* const* src, int srcObjShift, int srcRowStride, int srcElemStride,
                                       kel64f* buffer, kel64f* const* dst, int dstObjShift, int dstRowStride,
                                       int dstElemStride, int n, int count);

#ifdef __cplusplus
}
#endif

#endif
