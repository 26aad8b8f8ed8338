/* Part of kelm.h; include that header, not this one. */
#ifndef KELM_DET_H
#define KELM_DET_H

/* Det: the determinant of an n x n matrix (or of each of count matrices),
 * written to dst (arrays: count values, contiguous).  buffer is scratch of
 * n*(n+1) elements and must not be null, whatever n.  A singular matrix gives
 * 0 and kelOk; only argument errors are reported.
 *
 * Orders 3 to 6 expand along the first row in a precision wider than the
 * element and round once: 32f in double, 64f in double-double (within one
 * unit in the last place of the exact expansion, cancelling minors and rows
 * of any scale included).  Other orders eliminate with partial pivoting in
 * the element type; a pivot below 2*n^3 times the smallest normal number
 * gives 0. */

#ifdef __cplusplus
extern "C" {
#endif

KELM_API kelStatus kelmDet_m_32f(const kel32f* src, int srcRowStride, int srcElemStride, int n, kel32f* buffer,
                                 kel32f* dst);
KELM_API kelStatus kelmDet_m_64f(const kel64f* src, int srcRowStride, int srcElemStride, int n, kel64f* buffer,
                                 kel64f* dst);
KELM_API kelStatus kelmDet_m_32f_P(const kel32f* const* src, int srcObjShift, int n, kel32f* buffer, kel32f* dst);
KELM_API kelStatus kelmDet_m_64f_P(const kel64f* const* src, int srcObjShift, int n, kel64f* buffer, kel64f* dst);

KELM_API kelStatus kelmDet_ma_32f(const kel32f* src, int srcObjStride, int srcRowStride, int srcElemStride, int n,
                                  kel32f* buffer, kel32f* dst, int count);
KELM_API kelStatus kelmDet_ma_64f(const kel64f* src, int srcObjStride, int srcRowStride, int srcElemStride, int n,
                                  kel64f* buffer, kel64f* dst, int count);
KELM_API kelStatus kelmDet_ma_32f_P(const kel32f* const* src, int srcObjShift, int srcObjStride, int n,
                                    kel32f* buffer, kel32f* dst, int count);
KELM_API kelStatus kelmDet_ma_64f_P(const kel64f* const* src, int srcObjShift, int srcObjStride, int n,
                                    kel64f* buffer, kel64f* dst, int count);
KELM_API kelStatus kelmDet_ma_32f_L(const kel32f* const* src, int srcObjShift, int srcRowStride, int srcElemStride,
                                    int n, kel32f* buffer, kel32f* dst, int count);
KELM_API kelStatus kelmDet_ma_64f_L(const kel64f* const* src, int srcObjShift, int srcRowStride, int srcElemStride,
                                    int n, kel64f* buffer, kel64f* dst, int count);

#ifdef __cplusplus
}
#endif

#endif
