/* Part of kelm.h; include that header, not this one. */
#ifndef KELM_COPY_H
#define KELM_COPY_H

/* Copy, Extract and LoadIdentity: data movement on the calling thread (no
 * operation of this family starts threads, whatever the count).
 *
 * Elements are moved as bit patterns: a signalling NaN arrives as the same
 * signalling NaN, and -0 stays -0.
 *
 * Copy: kelmCopy_va_<type>_XY and kelmCopy_ma_<type>_XY copy an array of
 * vectors or matrices from description X of the source to description Y of
 * the destination, each S (strided), P (pointer) or L (list).  Arguments: the
 * source description, the destination description, then len (or width,
 * height), then count.  Object k, row i, element j are copied in increasing
 * order, one element at a time: a destination overlapping its source gets
 * the result of that forward element-by-element copy, not of a memmove.
 * Checks: null, size, count, row and element strides, shifts, and last the
 * object strides, which are tested only when count is above 1 (a count of 1
 * ignores them, whatever their value).  kelmCopy_va_32f_SP,
 * kelmCopy_va_32f_LP and the _PP members test the shifts before the element
 * strides.
 *
 * Extract: kelmExtract_<operands>_<type> gathers one object (v, m, t) or an
 * array of objects (va, ma, ta) into dst, a plain buffer: objects one after
 * another, a vector as len consecutive elements, a matrix as height rows of
 * width consecutive elements.  For a matrix stored transposed (t, ta) the
 * buffer receives the matrix as used: buffer row i holds stored column i, the
 * stored matrix having width rows of height elements (its _P table holds
 * height pointers per stored row).  Checks: single objects null, size, then
 * strides (strided) or shifts (_P), except kelmExtract_m_<type>_P,
 * kelmExtract_t_<type>_P and kelmExtract_v_64f_P, which test the sizes
 * before the pointers; arrays null, size, count, then the strides of the
 * source including its object stride (strided), or the shift and then the
 * strides (_P, _L).  Object strides are tested whatever the count.
 *
 * LoadIdentity: every matrix of the array receives zeros with ones on the
 * leading diagonal of min(width, height) elements (non-square matrices
 * included).  Checks: null, size, count, row and element strides, and the
 * object stride only when count is above 1.  kelmLoadIdentity_ma_32f_P tests
 * its shift before count, kelmLoadIdentity_ma_64f_P right after it; the _L
 * members test the shift last. */

#ifdef __cplusplus
extern "C" {
#endif

KELM_API kelStatus kelmCopy_va_32f_SS(const kel32f* src, int srcObjStride, int srcElemStride, kel32f* dst, int dstObjStride, int
    dstElemStride, int len, int count);
KELM_API kelStatus kelmCopy_va_32f_SP(const kel32f* src, int srcObjStride, int srcElemStride, kel32f* const* dst, int dstObjShift, int
    dstObjStride, int len, int count);
KELM_API kelStatus kelmCopy_va_32f_SL(const kel32f* src, int srcObjStride, int srcElemStride, kel32f* const* dst, int dstObjShift, int
    dstElemStride, int len, int count);
KELM_API kelStatus kelmCopy_va_32f_PS(const kel32f* const* src, int srcObjShift, int srcObjStride, kel32f* dst, int dstObjStride, int
    dstElemStride, int len, int count);
KELM_API kelStatus kelmCopy_va_32f_PP(const kel32f* const* src, int srcObjShift, int srcObjStride, kel32f* const* dst, int dstObjShift, int
    dstObjStride, int len, int count);
KELM_API kelStatus kelmCopy_va_32f_PL(const kel32f* const* src, int srcObjShift, int srcObjStride, kel32f* const* dst, int dstObjShift, int
    dstElemStride, int len, int count);
KELM_API kelStatus kelmCopy_va_32f_LS(const kel32f* const* src, int srcObjShift, int srcElemStride, kel32f* dst, int dstObjStride, int
    dstElemStride, int len, int count);
KELM_API kelStatus kelmCopy_va_32f_LP(const kel32f* const* src, int srcObjShift, int srcElemStride, kel32f* const* dst, int dstObjShift, int
    dstObjStride, int len, int count);
KELM_API kelStatus kelmCopy_va_32f_LL(const kel32f* const* src, int srcObjShift, int srcElemStride, kel32f* const* dst, int dstObjShift, int
    dstElemStride, int len, int count);

KELM_API kelStatus kelmCopy_va_64f_SS(const kel64f* src, int srcObjStride, int srcElemStride, kel64f* dst, int dstObjStride, int
    dstElemStride, int len, int count);
KELM_API kelStatus kelmCopy_va_64f_SP(const kel64f* src, int srcObjStride, int srcElemStride, kel64f* const* dst, int dstObjShift, int
    dstObjStride, int len, int count);
KELM_API kelStatus kelmCopy_va_64f_SL(const kel64f* src, int srcObjStride, int srcElemStride, kel64f* const* dst, int dstObjShift, int
    dstElemStride, int len, int count);
KELM_API kelStatus kelmCopy_va_64f_PS(const kel64f* const* src, int srcObjShift, int srcObjStride, kel64f* dst, int dstObjStride, int
    dstElemStride, int len, int count);
KELM_API kelStatus kelmCopy_va_64f_PP(const kel64f* const* src, int srcObjShift, int srcObjStride, kel64f* const* dst, int dstObjShift, int
    dstObjStride, int len, int count);
KELM_API kelStatus kelmCopy_va_64f_PL(const kel64f* const* src, int srcObjShift, int srcObjStride, kel64f* const* dst, int dstObjShift, int
    dstElemStride, int len, int count);
KELM_API kelStatus kelmCopy_va_64f_LS(const kel64f* const* src, int srcObjShift, int srcElemStride, kel64f* dst, int dstObjStride, int
    dstElemStride, int len, int count);
KELM_API kelStatus kelmCopy_va_64f_LP(const kel64f* const* src, int srcObjShift, int srcElemStride, kel64f* const* dst, int dstObjShift, int
    dstObjStride, int len, int count);
KELM_API kelStatus kelmCopy_va_64f_LL(const kel64f* const* src, int srcObjShift, int srcElemStride, kel64f* const* dst, int dstObjShift, int
    dstElemStride, int len, int count);

KELM_API kelStatus kelmCopy_ma_32f_SS(const kel32f* src, int srcObjStride, int srcRowStride, int srcElemStride, kel32f* dst, int
    dstObjStride, int dstRowStride, int dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmCopy_ma_32f_SP(const kel32f* src, int srcObjStride, int srcRowStride, int srcElemStride, kel32f* const* dst, int
    dstObjShift, int dstObjStride, int width, int height, int count);
KELM_API kelStatus kelmCopy_ma_32f_SL(const kel32f* src, int srcObjStride, int srcRowStride, int srcElemStride, kel32f* const* dst, int
    dstObjShift, int dstRowStride, int dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmCopy_ma_32f_PS(const kel32f* const* src, int srcObjShift, int srcObjStride, kel32f* dst, int dstObjStride, int
    dstRowStride, int dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmCopy_ma_32f_PP(const kel32f* const* src, int srcObjShift, int srcObjStride, kel32f* const* dst, int dstObjShift, int
    dstObjStride, int width, int height, int count);
KELM_API kelStatus kelmCopy_ma_32f_PL(const kel32f* const* src, int srcObjShift, int srcObjStride, kel32f* const* dst, int dstObjShift, int
    dstRowStride, int dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmCopy_ma_32f_LS(const kel32f* const* src, int srcObjShift, int srcRowStride, int srcElemStride, kel32f* dst, int
    dstObjStride, int dstRowStride, int dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmCopy_ma_32f_LP(const kel32f* const* src, int srcObjShift, int srcRowStride, int srcElemStride, kel32f* const* dst,
    int dstObjShift, int dstObjStride, int width, int height, int count);
KELM_API kelStatus kelmCopy_ma_32f_LL(const kel32f* const* src, int srcObjShift, int srcRowStride, int srcElemStride, kel32f* const* dst,
    int dstObjShift, int dstRowStride, int dstElemStride, int width, int height, int count);

KELM_API kelStatus kelmCopy_ma_64f_SS(const kel64f* src, int srcObjStride, int srcRowStride, int srcElemStride, kel64f* dst, int
    dstObjStride, int dstRowStride, int dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmCopy_ma_64f_SP(const kel64f* src, int srcObjStride, int srcRowStride, int srcElemStride, kel64f* const* dst, int
    dstObjShift, int dstObjStride, int width, int height, int count);
KELM_API kelStatus kelmCopy_ma_64f_SL(const kel64f* src, int srcObjStride, int srcRowStride, int srcElemStride, kel64f* const* dst, int
    dstObjShift, int dstRowStride, int dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmCopy_ma_64f_PS(const kel64f* const* src, int srcObjShift, int srcObjStride, kel64f* dst, int dstObjStride, int
    dstRowStride, int dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmCopy_ma_64f_PP(const kel64f* const* src, int srcObjShift, int srcObjStride, kel64f* const* dst, int dstObjShift, int
    dstObjStride, int width, int height, int count);
KELM_API kelStatus kelmCopy_ma_64f_PL(const kel64f* const* src, int srcObjShift, int srcObjStride, kel64f* const* dst, int dstObjShift, int
    dstRowStride, int dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmCopy_ma_64f_LS(const kel64f* const* src, int srcObjShift, int srcRowStride, int srcElemStride, kel64f* dst, int
    dstObjStride, int dstRowStride, int dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmCopy_ma_64f_LP(const kel64f* const* src, int srcObjShift, int srcRowStride, int srcElemStride, kel64f* const* dst,
    int dstObjShift, int dstObjStride, int width, int height, int count);
KELM_API kelStatus kelmCopy_ma_64f_LL(const kel64f* const* src, int srcObjShift, int srcRowStride, int srcElemStride, kel64f* const* dst,
    int dstObjShift, int dstRowStride, int dstElemStride, int width, int height, int count);

KELM_API kelStatus kelmExtract_v_32f(const kel32f* src, int srcElemStride, kel32f* dst, int len);
KELM_API kelStatus kelmExtract_v_32f_P(const kel32f* const* src, int srcObjShift, kel32f* dst, int len);
KELM_API kelStatus kelmExtract_va_32f(const kel32f* src, int srcObjStride, int srcElemStride, kel32f* dst, int len, int count);
KELM_API kelStatus kelmExtract_va_32f_P(const kel32f* const* src, int srcObjShift, int srcObjStride, kel32f* dst, int len, int count);
KELM_API kelStatus kelmExtract_va_32f_L(const kel32f* const* src, int srcObjShift, int srcElemStride, kel32f* dst, int len, int count);
KELM_API kelStatus kelmExtract_m_32f(const kel32f* src, int srcRowStride, int srcElemStride, kel32f* dst, int width, int height);
KELM_API kelStatus kelmExtract_m_32f_P(const kel32f* const* src, int srcObjShift, kel32f* dst, int width, int height);
KELM_API kelStatus kelmExtract_t_32f(const kel32f* src, int srcRowStride, int srcElemStride, kel32f* dst, int width, int height);
KELM_API kelStatus kelmExtract_t_32f_P(const kel32f* const* src, int srcObjShift, kel32f* dst, int width, int height);
KELM_API kelStatus kelmExtract_ma_32f(const kel32f* src, int srcObjStride, int srcRowStride, int srcElemStride, kel32f* dst, int width, int
    height, int count);
KELM_API kelStatus kelmExtract_ma_32f_P(const kel32f* const* src, int srcObjShift, int srcObjStride, kel32f* dst, int width, int height, int
    count);
KELM_API kelStatus kelmExtract_ma_32f_L(const kel32f* const* src, int srcObjShift, int srcRowStride, int srcElemStride, kel32f* dst, int
    width, int height, int count);
KELM_API kelStatus kelmExtract_ta_32f(const kel32f* src, int srcObjStride, int srcRowStride, int srcElemStride, kel32f* dst, int width, int
    height, int count);
KELM_API kelStatus kelmExtract_ta_32f_P(const kel32f* const* src, int srcObjShift, int srcObjStride, kel32f* dst, int width, int height, int
    count);
KELM_API kelStatus kelmExtract_ta_32f_L(const kel32f* const* src, int srcObjShift, int srcRowStride, int srcElemStride, kel32f* dst, int
    width, int height, int count);

KELM_API kelStatus kelmExtract_v_64f(const kel64f* src, int srcElemStride, kel64f* dst, int len);
KELM_API kelStatus kelmExtract_v_64f_P(const kel64f* const* src, int srcObjShift, kel64f* dst, int len);
KELM_API kelStatus kelmExtract_va_64f(const kel64f* src, int srcObjStride, int srcElemStride, kel64f* dst, int len, int count);
KELM_API kelStatus kelmExtract_va_64f_P(const kel64f* const* src, int srcObjShift, int srcObjStride, kel64f* dst, int len, int count);
KELM_API kelStatus kelmExtract_va_64f_L(const kel64f* const* src, int srcObjShift, int srcElemStride, kel64f* dst, int len, int count);
KELM_API kelStatus kelmExtract_m_64f(const kel64f* src, int srcRowStride, int srcElemStride, kel64f* dst, int width, int height);
KELM_API kelStatus kelmExtract_m_64f_P(const kel64f* const* src, int srcObjShift, kel64f* dst, int width, int height);
KELM_API kelStatus kelmExtract_t_64f(const kel64f* src, int srcRowStride, int srcElemStride, kel64f* dst, int width, int height);
KELM_API kelStatus kelmExtract_t_64f_P(const kel64f* const* src, int srcObjShift, kel64f* dst, int width, int height);
KELM_API kelStatus kelmExtract_ma_64f(const kel64f* src, int srcObjStride, int srcRowStride, int srcElemStride, kel64f* dst, int width, int
    height, int count);
KELM_API kelStatus kelmExtract_ma_64f_P(const kel64f* const* src, int srcObjShift, int srcObjStride, kel64f* dst, int width, int height, int
    count);
KELM_API kelStatus kelmExtract_ma_64f_L(const kel64f* const* src, int srcObjShift, int srcRowStride, int srcElemStride, kel64f* dst, int
    width, int height, int count);
KELM_API kelStatus kelmExtract_ta_64f(const kel64f* src, int srcObjStride, int srcRowStride, int srcElemStride, kel64f* dst, int width, int
    height, int count);
KELM_API kelStatus kelmExtract_ta_64f_P(const kel64f* const* src, int srcObjShift, int srcObjStride, kel64f* dst, int width, int height, int
    count);
KELM_API kelStatus kelmExtract_ta_64f_L(const kel64f* const* src, int srcObjShift, int srcRowStride, int srcElemStride, kel64f* dst, int
    width, int height, int count);

KELM_API kelStatus kelmLoadIdentity_ma_32f(kel32f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int width, int height, int
    count);
KELM_API kelStatus kelmLoadIdentity_ma_32f_P(kel32f* const* dst, int dstObjShift, int dstObjStride, int width, int height, int count);
KELM_API kelStatus kelmLoadIdentity_ma_32f_L(kel32f* const* dst, int dstObjShift, int dstRowStride, int dstElemStride, int width, int
    height, int count);
KELM_API kelStatus kelmLoadIdentity_ma_64f(kel64f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int width, int height, int
    count);
KELM_API kelStatus kelmLoadIdentity_ma_64f_P(kel64f* const* dst, int dstObjShift, int dstObjStride, int width, int height, int count);
KELM_API kelStatus kelmLoadIdentity_ma_64f_L(kel64f* const* dst, int dstObjShift, int dstRowStride, int dstElemStride, int width, int
    height, int count);

#ifdef __cplusplus
}
#endif

#endif
