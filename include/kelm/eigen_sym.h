/* Part of kelm.h; include that header, not this one. */
#ifndef KELM_EIGEN_SYM_H
#define KELM_EIGEN_SYM_H

/* EigenValuesSym and EigenValuesVectorsSym: eigenvalues, and an orthonormal
 * set of eigenvectors, of real symmetric matrices of order n (size >= 1).
 * The whole matrix is read; it is the caller's duty that it is symmetric.
 *
 * Results.  values receives n elements per matrix, contiguous (matrix k of an
 * array at values[k*n]).  Eigenvector k is column k of the vectors matrix
 * (element [i][k] is its component i) and belongs to value k.  From order 3 on
 * the values come in descending order (ties keep their order of appearance);
 * order 2 gives (tr + r)/2 first unless the trace is clearly negative, in
 * which case the value of larger magnitude, (tr - r)/2, comes first.
 *
 * Work buffer: n*n elements of the element type, for every form (arrays share
 * it; parallel runs use their own).  On return it holds no useful result.
 *
 * Statuses beyond the argument checks:
 *   kelErrSingular (-195)  CARRIES RESULTS from order 3 on: the product of the
 *       eigenvalues is at most the machine epsilon in magnitude (2^-23 for 32f,
 *       2^-52 for 64f), but values (and vectors) are written.  The vectors
 *       family has sorted them; the values-only family leaves them unsorted.
 *       Order 2 returns it when |a00*a11 - a01^2| <= epsilon and writes
 *       NOTHING.  Order 1 never fails.
 *   kelErrNotConverged (-205)  an eigenvalue took more than 30 sweeps;
 *       values and vectors are partly computed.
 * Arrays stop at the first matrix whose status is not kelOk: the ones before
 * it are complete, the ones after it untouched (in a parallel run the other
 * threads' blocks are still processed).
 *
 * Argument checks, in this order: null (values-only: src, buffer, values;
 * vectors, strided: src, buffer, values, vectors; vectors, _P and _L: src,
 * vectors, buffer, values), size, count, shifts, strides. */

#ifdef __cplusplus
extern "C" {
#endif

KELM_API kelStatus kelmEigenValuesSym_m_32f(const kel32f* src, int srcRowStride, int srcElemStride, kel32f* buffer,
    kel32f* values, int size);
KELM_API kelStatus kelmEigenValuesSym_m_64f(const kel64f* src, int srcRowStride, int srcElemStride, kel64f* buffer,
    kel64f* values, int size);
KELM_API kelStatus kelmEigenValuesSym_m_32f_P(const kel32f* const* src, int srcObjShift, kel32f* buffer, kel32f* values,
    int size);
KELM_API kelStatus kelmEigenValuesSym_m_64f_P(const kel64f* const* src, int srcObjShift, kel64f* buffer, kel64f* values,
    int size);

KELM_API kelStatus kelmEigenValuesSym_ma_32f(const kel32f* src, int srcObjStride, int srcRowStride, int srcElemStride,
    kel32f* buffer, kel32f* values, int size, int count);
KELM_API kelStatus kelmEigenValuesSym_ma_64f(const kel64f* src, int srcObjStride, int srcRowStride, int srcElemStride,
    kel64f* buffer, kel64f* values, int size, int count);
KELM_API kelStatus kelmEigenValuesSym_ma_32f_P(const kel32f* const* src, int srcObjShift, int srcObjStride,
    kel32f* buffer, kel32f* values, int size, int count);
KELM_API kelStatus kelmEigenValuesSym_ma_64f_P(const kel64f* const* src, int srcObjShift, int srcObjStride,
    kel64f* buffer, kel64f* values, int size, int count);
KELM_API kelStatus kelmEigenValuesSym_ma_32f_L(const kel32f* const* src, int srcObjShift, int srcRowStride,
    int srcElemStride, kel32f* buffer, kel32f* values, int size, int count);
KELM_API kelStatus kelmEigenValuesSym_ma_64f_L(const kel64f* const* src, int srcObjShift, int srcRowStride,
    int srcElemStride, kel64f* buffer, kel64f* values, int size, int count);

KELM_API kelStatus kelmEigenValuesVectorsSym_m_32f(const kel32f* src, int srcRowStride, int srcElemStride,
    kel32f* buffer, kel32f* vectors, int vectorsRowStride, int vectorsElemStride, kel32f* values, int size);
KELM_API kelStatus kelmEigenValuesVectorsSym_m_64f(const kel64f* src, int srcRowStride, int srcElemStride,
    kel64f* buffer, kel64f* vectors, int vectorsRowStride, int vectorsElemStride, kel64f* values, int size);
KELM_API kelStatus kelmEigenValuesVectorsSym_m_32f_P(const kel32f* const* src, int srcObjShift, kel32f* buffer,
    kel32f* const* vectors, int vectorsObjShift, kel32f* values, int size);
KELM_API kelStatus kelmEigenValuesVectorsSym_m_64f_P(const kel64f* const* src, int srcObjShift, kel64f* buffer,
    kel64f* const* vectors, int vectorsObjShift, kel64f* values, int size);

KELM_API kelStatus kelmEigenValuesVectorsSym_ma_32f(const kel32f* src, int srcObjStride, int srcRowStride,
    int srcElemStride, kel32f* buffer, kel32f* vectors, int vectorsObjStride, int vectorsRowStride,
    int vectorsElemStride, kel32f* values, int size, int count);
KELM_API kelStatus kelmEigenValuesVectorsSym_ma_64f(const kel64f* src, int srcObjStride, int srcRowStride,
    int srcElemStride, kel64f* buffer, kel64f* vectors, int vectorsObjStride, int vectorsRowStride,
    int vectorsElemStride, kel64f* values, int size, int count);
KELM_API kelStatus kelmEigenValuesVectorsSym_ma_32f_P(const kel32f* const* src, int srcObjShift, int srcObjStride,
    kel32f* buffer, kel32f* const* vectors, int vectorsObjShift, int vectorsObjStride, kel32f* values, int size,
    int count);
KELM_API kelStatus kelmEigenValuesVectorsSym_ma_64f_P(const kel64f* const* src, int srcObjShift, int srcObjStride,
    kel64f* buffer, kel64f* const* vectors, int vectorsObjShift, int vectorsObjStride, kel64f* values, int size,
    int count);
KELM_API kelStatus kelmEigenValuesVectorsSym_ma_32f_L(const kel32f* const* src, int srcObjShift, int srcRowStride,
    int srcElemStride, kel32f* buffer, kel32f* const* vectors, int vectorsObjShift, int vectorsRowStride,
    int vectorsElemStride, kel32f* values, int size, int count);
KELM_API kelStatus kelmEigenValuesVectorsSym_ma_64f_L(const kel64f* const* src, int srcObjShift, int srcRowStride,
    int srcElemStride, kel64f* buffer, kel64f* const* vectors, int vectorsObjShift, int vectorsRowStride,
    int vectorsElemStride, kel64f* values, int size, int count);

#ifdef __cplusplus
}
#endif

#endif
