/* Part of kelm.h; include that header, not this one. */
#ifndef KELM_AFFINE_H
#define KELM_AFFINE_H

/* AffineTransform3DH: one 4x4 single-precision matrix M (row-major as
 * described by its row and element strides) applied to each point (x, y, z)
 * of an array with the implicit fourth coordinate 1, and the result projected
 * back to three coordinates:
 *   w = ((M30 x + M33) + M31 y) + M32 z,   q = 1 / w,
 *   X = (((M00 x + M03) + M01 y) + M02 z) q, Y and Z the same with rows 1, 2.
 * A point with |w| at most the smallest normal float (1.1754944e-38) gets
 * 3.4028235e38 in all three coordinates; the loop goes on and the call
 * returns kelErrTinyDivisor.  Every point is written in either case.
 * Checks: null (matrix, points, dst), count, strides. */

#ifdef __cplusplus
extern "C" {
#endif

KELM_API kelStatus kelmAffineTransform3DH_mva_32f(const kel32f* src1, int src1RowStride, int src1ElemStride,
                                                  const kel32f* src2, int src2ObjStride, int src2ElemStride,
                                                  kel32f* dst, int dstObjStride, int dstElemStride, int count);

#ifdef __cplusplus
}
#endif

#endif
