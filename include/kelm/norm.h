/* Part of kelm.h; include that header, not this one. */
#ifndef KELM_NORM_H
#define KELM_NORM_H

/* L2Norm, FrobNorm and Trace: one scalar per object, written to dst, a plain
 * contiguous array (arrays of objects: count values, value k for object k).
 *
 * Sums of squares run in the element type from plain squares, without
 * scaling: a 32f vector whose squares overflow has norm infinity, one whose
 * squares underflow has norm 0.  Squares are added in ascending order (row by
 * row for FrobNorm) and the root is the correctly rounded one, except in the
 * 32f L2Norm kernel for contiguous strided vectors (element stride 4, single
 * or array):
 *   lengths 3 to 6  squares added in pairs, ((x0^2 + x1^2) + (x2^2 + x3^2))
 *                   + x4^2 for length 5, and the root taken as s * r' with
 *                   r the processor's reciprocal-square-root estimate of s
 *                   and r' = r * 0.5 * (3 - s*r*r); this root may differ in
 *                   the last bits from the correctly rounded one and between
 *                   processors.  Sums that are 0, subnormal or infinite get
 *                   the correctly rounded root.
 *   lengths 11 up   four running sums, lane l taking the squares of the
 *                   elements l, l+4, l+8, ..., added as (p0 + p1) + (p2 + p3).
 *
 * Trace adds the diagonal of a size x size matrix: d0 + d1 + d2 (+ d3) for
 * sizes 3 and 4; d4 + d0 + d1 + d2 + d3 for size 5 (the last element first);
 * every other size sets *dst to 0 and adds d0, d1, ... into it in ascending
 * order, storing the running sum in dst after each addition.
 *
 * Checks: null (source, dst), count (arrays), size, strides, shift.  The
 * pointer description (_P) has one pointer per element (matrices row-major);
 * the list description (_L) one pointer per object.  Arrays above a size
 * threshold split their objects over the library's threads; results are the
 * same bits either way. */

#ifdef __cplusplus
extern "C" {
#endif

KELM_API kelStatus kelmL2Norm_v_32f(const kel32f* src, int srcElemStride, kel32f* dst, int len);
KELM_API kelStatus kelmL2Norm_v_64f(const kel64f* src, int srcElemStride, kel64f* dst, int len);
KELM_API kelStatus kelmL2Norm_v_32f_P(const kel32f* const* src, int srcObjShift, kel32f* dst, int len);
KELM_API kelStatus kelmL2Norm_v_64f_P(const kel64f* const* src, int srcObjShift, kel64f* dst, int len);
KELM_API kelStatus kelmL2Norm_va_32f(const kel32f* src, int srcObjStride, int srcElemStride, kel32f* dst, int len,
                                     int count);
KELM_API kelStatus kelmL2Norm_va_64f(const kel64f* src, int srcObjStride, int srcElemStride, kel64f* dst, int len,
                                     int count);
KELM_API kelStatus kelmL2Norm_va_32f_P(const kel32f* const* src, int srcObjShift, int srcObjStride, kel32f* dst,
                                       int len, int count);
KELM_API kelStatus kelmL2Norm_va_64f_P(const kel64f* const* src, int srcObjShift, int srcObjStride, kel64f* dst,
                                       int len, int count);
KELM_API kelStatus kelmL2Norm_va_32f_L(const kel32f* const* src, int srcObjShift, int srcElemStride, kel32f* dst,
                                       int len, int count);
KELM_API kelStatus kelmL2Norm_va_64f_L(const kel64f* const* src, int srcObjShift, int srcElemStride, kel64f* dst,
                                       int len, int count);

KELM_API kelStatus kelmFrobNorm_m_32f(const kel32f* src, int srcRowStride, int srcElemStride, int width, int height,
                                      kel32f* dst);
KELM_API kelStatus kelmFrobNorm_m_64f(const kel64f* src, int srcRowStride, int srcElemStride, int width, int height,
                                      kel64f* dst);
KELM_API kelStatus kelmFrobNorm_m_32f_P(const kel32f* const* src, int srcObjShift, int width, int height,
                                        kel32f* dst);
KELM_API kelStatus kelmFrobNorm_m_64f_P(const kel64f* const* src, int srcObjShift, int width, int height,
                                        kel64f* dst);
KELM_API kelStatus kelmFrobNorm_ma_32f(const kel32f* src, int srcObjStride, int srcRowStride, int srcElemStride,
                                       int width, int height, kel32f* dst, int count);
KELM_API kelStatus kelmFrobNorm_ma_64f(const kel64f* src, int srcObjStride, int srcRowStride, int srcElemStride,
                                       int width, int height, kel64f* dst, int count);
KELM_API kelStatus kelmFrobNorm_ma_32f_P(const kel32f* const* src, int srcObjShift, int srcObjStride, int width,
                                         int height, kel32f* dst, int count);
KELM_API kelStatus kelmFrobNorm_ma_64f_P(const kel64f* const* src, int srcObjShift, int srcObjStride, int width,
                                         int height, kel64f* dst, int count);
KELM_API kelStatus kelmFrobNorm_ma_32f_L(const kel32f* const* src, int srcObjShift, int srcRowStride,
                                         int srcElemStride, int width, int height, kel32f* dst, int count);
KELM_API kelStatus kelmFrobNorm_ma_64f_L(const kel64f* const* src, int srcObjShift, int srcRowStride,
                                         int srcElemStride, int width, int height, kel64f* dst, int count);

KELM_API kelStatus kelmTrace_m_32f(const kel32f* src, int srcRowStride, int srcElemStride, int size, kel32f* dst);
KELM_API kelStatus kelmTrace_m_64f(const kel64f* src, int srcRowStride, int srcElemStride, int size, kel64f* dst);
KELM_API kelStatus kelmTrace_m_32f_P(const kel32f* const* src, int srcObjShift, int size, kel32f* dst);
KELM_API kelStatus kelmTrace_m_64f_P(const kel64f* const* src, int srcObjShift, int size, kel64f* dst);
KELM_API kelStatus kelmTrace_ma_32f(const kel32f* src, int srcObjStride, int srcRowStride, int srcElemStride,
                                    int size, kel32f* dst, int count);
KELM_API kelStatus kelmTrace_ma_64f(const kel64f* src, int srcObjStride, int srcRowStride, int srcElemStride,
                                    int size, kel64f* dst, int count);
KELM_API kelStatus kelmTrace_ma_32f_P(const kel32f* const* src, int srcObjShift, int srcObjStride, int size,
                                      kel32f* dst, int count);
KELM_API kelStatus kelmTrace_ma_64f_P(const kel64f* const* src, int srcObjShift, int srcObjStride, int size,
                                      kel64f* dst, int count);
KELM_API kelStatus kelmTrace_ma_32f_L(const kel32f* const* src, int srcObjShift, int srcRowStride,
                                      int srcElemStride, int size, kel32f* dst, int count);
KELM_API kelStatus kelmTrace_ma_64f_L(const kel64f* const* src, int srcObjShift, int srcRowStride,
                                      int srcElemStride, int size, kel64f* dst, int count);

#ifdef __cplusplus
}
#endif

#endif
