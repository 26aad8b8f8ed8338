/* Part of kelm.h; include that header, not this one. */
#ifndef KELM_SAXPY_H
#define KELM_SAXPY_H

/* Saxpy, LComb and Gaxpy.
 *
 * Saxpy:  dst = x*scale + y              (x, the first source, is the scaled one)
 * LComb:  dst = x*scale1 + y*scale2      (both products rounded, then added)
 * Gaxpy:  dst = A*x + z                  (A: src1, x: src2, z: src3)
 *
 * Saxpy and LComb take x, its scale factor, y (LComb: then y's factor), the
 * destination, the length (and count); every vector has that one length, so
 * there is no size-agreement check.  vav pairs each x of an array with the
 * one y, vva the one x with each y of an array (Saxpy only).
 *
 * Gaxpy takes the matrix with its width and height, x with its length, z with
 * its length, then the destination.  The matrix is always one, shared by
 * every object: mva pairs x k with z k, mvav each x k with the one z.  The
 * width must equal the length of x and the height the length of z, else
 * kelErrSizeMismatch (tested after the sizes, before the strides).  Each
 * result element is the sum of the products A(i,k) x(k) from zero in
 * ascending k, exactly as kelmMul_mv forms it, plus z(i) last.  The
 * destination must not be z (partial sums may be stored in the destination
 * before z is read).
 *
 * Scale factors are values of the element type.  Checks, in order: null
 * pointers, count, sizes, size agreement (Gaxpy), strides, shifts.
 */

#ifdef __cplusplus
extern "C" {
#endif


KELM_API kelStatus kelmSaxpy_vv_32f(const kel32f* src1, int src1ElemStride, kel32f scale, const kel32f* src2, int
    src2ElemStride, kel32f* dst, int dstElemStride, int len);
KELM_API kelStatus kelmSaxpy_vv_32f_P(const kel32f* const* src1, int src1ObjShift, kel32f scale, const kel32f* const*
    src2, int src2ObjShift, kel32f* const* dst, int dstObjShift, int len);
KELM_API kelStatus kelmSaxpy_vv_64f(const kel64f* src1, int src1ElemStride, kel64f scale, const kel64f* src2, int
    src2ElemStride, kel64f* dst, int dstElemStride, int len);
KELM_API kelStatus kelmSaxpy_vv_64f_P(const kel64f* const* src1, int src1ObjShift, kel64f scale, const kel64f* const*
    src2, int src2ObjShift, kel64f* const* dst, int dstObjShift, int len);

KELM_API kelStatus kelmSaxpy_vav_32f(const kel32f* src1, int src1ObjStride, int src1ElemStride, kel32f scale, const
    kel32f* src2, int src2ElemStride, kel32f* dst, int dstObjStride, int dstElemStride, int len, int count);
KELM_API kelStatus kelmSaxpy_vav_32f_P(const kel32f* const* src1, int src1ObjShift, int src1ObjStride, kel32f scale,
    const kel32f* const* src2, int src2ObjShift, kel32f* const* dst, int dstObjShift, int dstObjStride, int len, int
    count);
KELM_API kelStatus kelmSaxpy_vav_32f_L(const kel32f* const* src1, int src1ObjShift, int src1ElemStride, kel32f scale,
    const kel32f* src2, int src2ElemStride, kel32f* const* dst, int dstObjShift, int dstElemStride, int len, int
    count);
KELM_API kelStatus kelmSaxpy_vav_64f(const kel64f* src1, int src1ObjStride, int src1ElemStride, kel64f scale, const
    kel64f* src2, int src2ElemStride, kel64f* dst, int dstObjStride, int dstElemStride, int len, int count);
KELM_API kelStatus kelmSaxpy_vav_64f_P(const kel64f* const* src1, int src1ObjShift, int src1ObjStride, kel64f scale,
    const kel64f* const* src2, int src2ObjShift, kel64f* const* dst, int dstObjShift, int dstObjStride, int len, int
    count);
KELM_API kelStatus kelmSaxpy_vav_64f_L(const kel64f* const* src1, int src1ObjShift, int src1ElemStride, kel64f scale,
    const kel64f* src2, int src2ElemStride, kel64f* const* dst, int dstObjShift, int dstElemStride, int len, int
    count);

KELM_API kelStatus kelmSaxpy_vva_32f(const kel32f* src1, int src1ElemStride, kel32f scale, const kel32f* src2, int
    src2ObjStride, int src2ElemStride, kel32f* dst, int dstObjStride, int dstElemStride, int len, int count);
KELM_API kelStatus kelmSaxpy_vva_32f_P(const kel32f* const* src1, int src1ObjShift, kel32f scale, const kel32f* const*
    src2, int src2ObjShift, int src2ObjStride, kel32f* const* dst, int dstObjShift, int dstObjStride, int len, int
    count);
KELM_API kelStatus kelmSaxpy_vva_32f_L(const kel32f* src1, int src1ElemStride, kel32f scale, const kel32f* const*
    src2, int src2ObjShift, int src2ElemStride, kel32f* const* dst, int dstObjShift, int dstElemStride, int len, int
    count);
KELM_API kelStatus kelmSaxpy_vva_64f(const kel64f* src1, int src1ElemStride, kel64f scale, const kel64f* src2, int
    src2ObjStride, int src2ElemStride, kel64f* dst, int dstObjStride, int dstElemStride, int len, int count);
KELM_API kelStatus kelmSaxpy_vva_64f_P(const kel64f* const* src1, int src1ObjShift, kel64f scale, const kel64f* const*
    src2, int src2ObjShift, int src2ObjStride, kel64f* const* dst, int dstObjShift, int dstObjStride, int len, int
    count);
KELM_API kelStatus kelmSaxpy_vva_64f_L(const kel64f* src1, int src1ElemStride, kel64f scale, const kel64f* const*
    src2, int src2ObjShift, int src2ElemStride, kel64f* const* dst, int dstObjShift, int dstElemStride, int len, int
    count);

KELM_API kelStatus kelmSaxpy_vava_32f(const kel32f* src1, int src1ObjStride, int src1ElemStride, kel32f scale, const
    kel32f* src2, int src2ObjStride, int src2ElemStride, kel32f* dst, int dstObjStride, int dstElemStride, int len,
    int count);
KELM_API kelStatus kelmSaxpy_vava_32f_P(const kel32f* const* src1, int src1ObjShift, int src1ObjStride, kel32f scale,
    const kel32f* const* src2, int src2ObjShift, int src2ObjStride, kel32f* const* dst, int dstObjShift, int
    dstObjStride, int len, int count);
KELM_API kelStatus kelmSaxpy_vava_32f_L(const kel32f* const* src1, int src1ObjShift, int src1ElemStride, kel32f scale,
    const kel32f* const* src2, int src2ObjShift, int src2ElemStride, kel32f* const* dst, int dstObjShift, int
    dstElemStride, int len, int count);
KELM_API kelStatus kelmSaxpy_vava_64f(const kel64f* src1, int src1ObjStride, int src1ElemStride, kel64f scale, const
    kel64f* src2, int src2ObjStride, int src2ElemStride, kel64f* dst, int dstObjStride, int dstElemStride, int len,
    int count);
KELM_API kelStatus kelmSaxpy_vava_64f_P(const kel64f* const* src1, int src1ObjShift, int src1ObjStride, kel64f scale,
    const kel64f* const* src2, int src2ObjShift, int src2ObjStride, kel64f* const* dst, int dstObjShift, int
    dstObjStride, int len, int count);
KELM_API kelStatus kelmSaxpy_vava_64f_L(const kel64f* const* src1, int src1ObjShift, int src1ElemStride, kel64f scale,
    const kel64f* const* src2, int src2ObjShift, int src2ElemStride, kel64f* const* dst, int dstObjShift, int
    dstElemStride, int len, int count);

KELM_API kelStatus kelmLComb_vv_32f(const kel32f* src1, int src1ElemStride, kel32f scale1, const kel32f* src2, int
    src2ElemStride, kel32f scale2, kel32f* dst, int dstElemStride, int len);
KELM_API kelStatus kelmLComb_vv_32f_P(const kel32f* const* src1, int src1ObjShift, kel32f scale1, const kel32f* const*
    src2, int src2ObjShift, kel32f scale2, kel32f* const* dst, int dstObjShift, int len);
KELM_API kelStatus kelmLComb_vv_64f(const kel64f* src1, int src1ElemStride, kel64f scale1, const kel64f* src2, int
    src2ElemStride, kel64f scale2, kel64f* dst, int dstElemStride, int len);
KELM_API kelStatus kelmLComb_vv_64f_P(const kel64f* const* src1, int src1ObjShift, kel64f scale1, const kel64f* const*
    src2, int src2ObjShift, kel64f scale2, kel64f* const* dst, int dstObjShift, int len);

KELM_API kelStatus kelmLComb_vav_32f(const kel32f* src1, int src1ObjStride, int src1ElemStride, kel32f scale1, const
    kel32f* src2, int src2ElemStride, kel32f scale2, kel32f* dst, int dstObjStride, int dstElemStride, int len, int
    count);
KELM_API kelStatus kelmLComb_vav_32f_P(const kel32f* const* src1, int src1ObjShift, int src1ObjStride, kel32f scale1,
    const kel32f* const* src2, int src2ObjShift, kel32f scale2, kel32f* const* dst, int dstObjShift, int dstObjStride,
    int len, int count);
KELM_API kelStatus kelmLComb_vav_32f_L(const kel32f* const* src1, int src1ObjShift, int src1ElemStride, kel32f scale1,
    const kel32f* src2, int src2ElemStride, kel32f scale2, kel32f* const* dst, int dstObjShift, int dstElemStride, int
    len, int count);
KELM_API kelStatus kelmLComb_vav_64f(const kel64f* src1, int src1ObjStride, int src1ElemStride, kel64f scale1, const
    kel64f* src2, int src2ElemStride, kel64f scale2, kel64f* dst, int dstObjStride, int dstElemStride, int len, int
    count);
KELM_API kelStatus kelmLComb_vav_64f_P(const kel64f* const* src1, int src1ObjShift, int src1ObjStride, kel64f scale1,
    const kel64f* const* src2, int src2ObjShift, kel64f scale2, kel64f* const* dst, int dstObjShift, int dstObjStride,
    int len, int count);
KELM_API kelStatus kelmLComb_vav_64f_L(const kel64f* const* src1, int src1ObjShift, int src1ElemStride, kel64f scale1,
    const kel64f* src2, int src2ElemStride, kel64f scale2, kel64f* const* dst, int dstObjShift, int dstElemStride, int
    len, int count);

KELM_API kelStatus kelmLComb_vava_32f(const kel32f* src1, int src1ObjStride, int src1ElemStride, kel32f scale1, const
    kel32f* src2, int src2ObjStride, int src2ElemStride, kel32f scale2, kel32f* dst, int dstObjStride, int
    dstElemStride, int len, int count);
KELM_API kelStatus kelmLComb_vava_32f_P(const kel32f* const* src1, int src1ObjShift, int src1ObjStride, kel32f scale1,
    const kel32f* const* src2, int src2ObjShift, int src2ObjStride, kel32f scale2, kel32f* const* dst, int
    dstObjShift, int dstObjStride, int len, int count);
KELM_API kelStatus kelmLComb_vava_32f_L(const kel32f* const* src1, int src1ObjShift, int src1ElemStride, kel32f
    scale1, const kel32f* const* src2, int src2ObjShift, int src2ElemStride, kel32f scale2, kel32f* const* dst, int
    dstObjShift, int dstElemStride, int len, int count);
KELM_API kelStatus kelmLComb_vava_64f(const kel64f* src1, int src1ObjStride, int src1ElemStride, kel64f scale1, const
    kel64f* src2, int src2ObjStride, int src2ElemStride, kel64f scale2, kel64f* dst, int dstObjStride, int
    dstElemStride, int len, int count);
KELM_API kelStatus kelmLComb_vava_64f_P(const kel64f* const* src1, int src1ObjShift, int src1ObjStride, kel64f scale1,
    const kel64f* const* src2, int src2ObjShift, int src2ObjStride, kel64f scale2, kel64f* const* dst, int
    dstObjShift, int dstObjStride, int len, int count);
KELM_API kelStatus kelmLComb_vava_64f_L(const kel64f* const* src1, int src1ObjShift, int src1ElemStride, kel64f
    scale1, const kel64f* const* src2, int src2ObjShift, int src2ElemStride, kel64f scale2, kel64f* const* dst, int
    dstObjShift, int dstElemStride, int len, int count);

KELM_API kelStatus kelmGaxpy_mv_32f(const kel32f* src1, int src1RowStride, int src1ElemStride, int src1Width, int
    src1Height, const kel32f* src2, int src2ElemStride, int src2Len, const kel32f* src3, int src3ElemStride, int
    src3Len, kel32f* dst, int dstElemStride);
KELM_API kelStatus kelmGaxpy_mv_32f_P(const kel32f* const* src1, int src1ObjShift, int src1Width, int src1Height,
    const kel32f* const* src2, int src2ObjShift, int src2Len, const kel32f* const* src3, int src3ObjShift, int
    src3Len, kel32f* const* dst, int dstObjShift);
KELM_API kelStatus kelmGaxpy_mv_64f(const kel64f* src1, int src1RowStride, int src1ElemStride, int src1Width, int
    src1Height, const kel64f* src2, int src2ElemStride, int src2Len, const kel64f* src3, int src3ElemStride, int
    src3Len, kel64f* dst, int dstElemStride);
KELM_API kelStatus kelmGaxpy_mv_64f_P(const kel64f* const* src1, int src1ObjShift, int src1Width, int src1Height,
    const kel64f* const* src2, int src2ObjShift, int src2Len, const kel64f* const* src3, int src3ObjShift, int
    src3Len, kel64f* const* dst, int dstObjShift);

KELM_API kelStatus kelmGaxpy_mva_32f(const kel32f* src1, int src1RowStride, int src1ElemStride, int src1Width, int
    src1Height, const kel32f* src2, int src2ObjStride, int src2ElemStride, int src2Len, const kel32f* src3, int
    src3ObjStride, int src3ElemStride, int src3Len, kel32f* dst, int dstObjStride, int dstElemStride, int count);
KELM_API kelStatus kelmGaxpy_mva_32f_P(const kel32f* const* src1, int src1ObjShift, int src1Width, int src1Height,
    const kel32f* const* src2, int src2ObjShift, int src2ObjStride, int src2Len, const kel32f* const* src3, int
    src3ObjShift, int src3ObjStride, int src3Len, kel32f* const* dst, int dstObjShift, int dstObjStride, int count);
KELM_API kelStatus kelmGaxpy_mva_32f_L(const kel32f* src1, int src1RowStride, int src1ElemStride, int src1Width, int
    src1Height, const kel32f* const* src2, int src2ObjShift, int src2ElemStride, int src2Len, const kel32f* const*
    src3, int src3ObjShift, int src3ElemStride, int src3Len, kel32f* const* dst, int dstObjShift, int dstElemStride,
    int count);
KELM_API kelStatus kelmGaxpy_mva_64f(const kel64f* src1, int src1RowStride, int src1ElemStride, int src1Width, int
    src1Height, const kel64f* src2, int src2ObjStride, int src2ElemStride, int src2Len, const kel64f* src3, int
    src3ObjStride, int src3ElemStride, int src3Len, kel64f* dst, int dstObjStride, int dstElemStride, int count);
KELM_API kelStatus kelmGaxpy_mva_64f_P(const kel64f* const* src1, int src1ObjShift, int src1Width, int src1Height,
    const kel64f* const* src2, int src2ObjShift, int src2ObjStride, int src2Len, const kel64f* const* src3, int
    src3ObjShift, int src3ObjStride, int src3Len, kel64f* const* dst, int dstObjShift, int dstObjStride, int count);
KELM_API kelStatus kelmGaxpy_mva_64f_L(const kel64f* src1, int src1RowStride, int src1ElemStride, int src1Width, int
    src1Height, const kel64f* const* src2, int src2ObjShift, int src2ElemStride, int src2Len, const kel64f* const*
    src3, int src3ObjShift, int src3ElemStride, int src3Len, kel64f* const* dst, int dstObjShift, int dstElemStride,
    int count);

KELM_API kelStatus kelmGaxpy_mvav_32f(const kel32f* src1, int src1RowStride, int src1ElemStride, int src1Width, int
    src1Height, const kel32f* src2, int src2ObjStride, int src2ElemStride, int src2Len, const kel32f* src3, int
    src3ElemStride, int src3Len, kel32f* dst, int dstObjStride, int dstElemStride, int count);
KELM_API kelStatus kelmGaxpy_mvav_32f_P(const kel32f* const* src1, int src1ObjShift, int src1Width, int src1Height,
    const kel32f* const* src2, int src2ObjShift, int src2ObjStride, int src2Len, const kel32f* const* src3, int
    src3ObjShift, int src3Len, kel32f* const* dst, int dstObjShift, int dstObjStride, int count);
KELM_API kelStatus kelmGaxpy_mvav_32f_L(const kel32f* src1, int src1RowStride, int src1ElemStride, int src1Width, int
    src1Height, const kel32f* const* src2, int src2ObjShift, int src2ElemStride, int src2Len, const kel32f* src3, int
    src3ElemStride, int src3Len, kel32f* const* dst, int dstObjShift, int dstElemStride, int count);
KELM_API kelStatus kelmGaxpy_mvav_64f(const kel64f* src1, int src1RowStride, int src1ElemStride, int src1Width, int
    src1Height, const kel64f* src2, int src2ObjStride, int src2ElemStride, int src2Len, const kel64f* src3, int
    src3ElemStride, int src3Len, kel64f* dst, int dstObjStride, int dstElemStride, int count);
KELM_API kelStatus kelmGaxpy_mvav_64f_P(const kel64f* const* src1, int src1ObjShift, int src1Width, int src1Height,
    const kel64f* const* src2, int src2ObjShift, int src2ObjStride, int src2Len, const kel64f* const* src3, int
    src3ObjShift, int src3Len, kel64f* const* dst, int dstObjShift, int dstObjStride, int count);
KELM_API kelStatus kelmGaxpy_mvav_64f_L(const kel64f* src1, int src1RowStride, int src1ElemStride, int src1Width, int
    src1Height, const kel64f* const* src2, int src2ObjShift, int src2ElemStride, int src2Len, const kel64f* src3, int
    src3ElemStride, int src3Len, kel64f* const* dst, int dstObjShift, int dstElemStride, int count);

#ifdef __cplusplus
}
#endif

#endif
