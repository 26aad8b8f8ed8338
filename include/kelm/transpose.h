/* Part of kelm.h; include that header, not this one. */
#ifndef KELM_TRANSPOSE_H
#define KELM_TRANSPOSE_H

/* Transpose: dst = src transposed, for one matrix or an array of them, on the
 * calling thread (no operation here starts threads, whatever the count).
 *
 * width and height are those of the SOURCE (height rows of width elements);
 * the destination receives width rows of height elements, destination
 * element (j, i) = source element (i, j).  Unlike the other families, the
 * sizes stand between the source and the destination description.  Elements
 * move as bit patterns (NaN payloads and signed zeros survive).  The
 * destination must not overlap the source.
 *
 * Checks: single matrices null, size, then strides (strided) or shifts (_P);
 * arrays null, count, size, strides (object strides whatever the count),
 * shifts. */

#ifdef __cplusplus
extern "C" {
#endif

KELM_API kelStatus kelmTranspose_m_32f(const kel32f* src, int srcRowStride, int srcElemStride, int width, int height, kel32f* dst, int
    dstRowStride, int dstElemStride);
KELM_API kelStatus kelmTranspose_m_32f_P(const kel32f* const* src, int srcObjShift, int width, int height, kel32f* const* dst, int
    dstObjShift);
KELM_API kelStatus kelmTranspose_ma_32f(const kel32f* src, int srcObjStride, int srcRowStride, int srcElemStride, int width, int height,
    kel32f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmTranspose_ma_32f_P(const kel32f* const* src, int srcObjShift, int srcObjStride, int width, int height, kel32f* const*
    dst, int dstObjShift, int dstObjStride, int count);
KELM_API kelStatus kelmTranspose_ma_32f_L(const kel32f* const* src, int srcObjShift, int srcRowStride, int srcElemStride, int width, int
    height, kel32f* const* dst, int dstObjShift, int dstRowStride, int dstElemStride, int count);

KELM_API kelStatus kelmTranspose_m_64f(const kel64f* src, int srcRowStride, int srcElemStride, int width, int height, kel64f* dst, int
    dstRowStride, int dstElemStride);
KELM_API kelStatus kelmTranspose_m_64f_P(const kel64f* const* src, int srcObjShift, int width, int height, kel64f* const* dst, int
    dstObjShift);
KELM_API kelStatus kelmTranspose_ma_64f(const kel64f* src, int srcObjStride, int srcRowStride, int srcElemStride, int width, int height,
    kel64f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmTranspose_ma_64f_P(const kel64f* const* src, int srcObjShift, int srcObjStride, int width, int height, kel64f* const*
    dst, int dstObjShift, int dstObjStride, int count);
KELM_API kelStatus kelmTranspose_ma_64f_L(const kel64f* const* src, int srcObjShift, int srcRowStride, int srcElemStride, int width, int
    height, kel64f* const* dst, int dstObjShift, int dstRowStride, int dstElemStride, int count);

#ifdef __cplusplus
}
#endif

#endif
