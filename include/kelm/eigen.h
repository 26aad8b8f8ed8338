/* Part of kelm.h; include that header, not this one. */
#ifndef KELM_EIGEN_H
#define KELM_EIGEN_H

/* EigenValues: all eigenvalues, real and complex, of general (nonsymmetric)
 * real n x n matrices, by Householder reduction to Hessenberg form and
 * double-shift QR iteration, deflating 1x1 and 2x2 blocks from the bottom.
 *
 * Eigenvalue k is (valRe[k], valIm[k]).  A real eigenvalue has valIm[k] == 0
 * exactly; a complex conjugate pair takes two adjacent positions k, k+1 with
 * equal real parts, the positive imaginary part first.  Eigenvalues come in
 * the order the iteration finds them on the diagonal of its final
 * quasi-triangular form: NOT sorted.  Array forms write object j's values
 * from element j*n of valRe and valIm.
 *
 * Work buffer (last argument): kelmEigenValuesGetBufSize_32f/_64f report its
 * size in bytes, n*(n+5) elements; the eigenvector operations need
 * n*(3n+5) elements (kelmEigenValuesVectorsGetBufSize_32f/_64f).  The queries
 * form the product in unsigned 32-bit arithmetic without an overflow test.
 * Array forms reuse one buffer for every object; parallel runs leave the
 * caller's buffer alone and give each thread its own n*(3n+5) elements.
 *
 * Convergence.  The iteration has a budget of 30*n QR sweeps for the whole
 * matrix (with exceptional shifts at the 10th and 20th sweep on one block)
 * and deflates a subdiagonal element when its magnitude is at most the
 * machine epsilon: an absolute test, not relative to the matrix's scale, so
 * that matrices whose elements are all near or below epsilon deflate at
 * once.  A matrix that uses up the budget returns kelErrNotConverged; only
 * the trailing eigenvalues found so far are written.  This is rare but real:
 * about 12 in a million random 4x4 or 6x6 matrices (uniform entries) cycle
 * without converging.  An array stops at the first such object (objects
 * before it are complete, later ones untouched); a parallel run still
 * finishes the other threads' blocks.
 *
 * A 2x2 block with equal diagonal elements (within the smallest normal
 * number) is reported as a complex pair a +- i*sqrt(|b|)*sqrt(|c|) whatever
 * the signs of its off-diagonal elements b and c: [[1, 2], [3, 1]] gives
 * 1 +- i*sqrt(6), not 1 +- sqrt(6).  Callers rely on this and it is kept.
 *
 * EigenValuesVectorsRight, EigenValuesVectorsLeft, EigenValuesVectors: the
 * eigenvalues (exactly as EigenValues gives them, same bits) with right
 * eigenvectors x (A x = lambda x), left eigenvectors y (y^T A = lambda y^T),
 * or both.  The QR transformations are accumulated into Schur vectors; the
 * eigenvectors of the quasi-triangular form are found by substitution and
 * carried back.  Eigenvector k is column k of the n x n vector matrix
 * (element [i][k] is component i).  A real eigenvector has Euclidean norm 1.
 * For a complex pair at k, k+1, column k holds the real part and column k+1
 * the imaginary part of the eigenvector of valRe[k] + i*valIm[k] (the one
 * with the positive imaginary part); the conjugate eigenvalue's vector is
 * the conjugate.  The pair is scaled so that |re|^2 + |im|^2 = 1, with its
 * largest component made real.  Left vectors of a pair satisfy
 * y^T A = lambda y^T with that same lambda: the plain transpose, not the
 * conjugate transpose.
 *
 * kelmEigenValuesVectors: the FIRST vector matrix receives the RIGHT
 * eigenvectors, the SECOND the LEFT ones, in every description and type.
 *
 * Statuses besides the argument checks: kelErrNotConverged (budget used
 * up: trailing eigenvalues written, no eigenvectors); kelErrEigenSolve (a
 * 2x2 block of the substitution has no element above the threshold
 * max(eps*(|re|+|im|), smallest normal) for that eigenvalue: eigenvalues
 * written, the eigenvector columns before the failing one written, the rest
 * not).  A 1x1 diagonal step whose divisor is below that threshold divides
 * by the threshold instead, so repeated eigenvalues (the identity, say) give
 * finite vectors.  kelErrFail is reserved for an inconsistent pair state in
 * kelmEigenValuesVectors and does not occur with this implementation.
 * Argument checks: null (source, buffer, real parts, imaginary parts, then
 * the vector matrices), order, count, then the source's shift and strides
 * before the vector matrices' shifts and strides (single strided forms test
 * all strides at once, single _P forms all shifts at once). */

#ifdef __cplusplus
extern "C" {
#endif

KELM_API kelStatus kelmEigenValuesGetBufSize_32f(int n, int* bytes);
KELM_API kelStatus kelmEigenValuesVectorsGetBufSize_32f(int n, int* bytes);
KELM_API kelStatus kelmEigenValues_m_32f(const kel32f* src, int srcRowStride, int srcElemStride, kel32f* valRe, kel32f* valIm, int n,
    kel32f* buffer);
KELM_API kelStatus kelmEigenValues_m_32f_P(const kel32f* const* src, int srcObjShift, kel32f* valRe, kel32f* valIm, int n, kel32f* buffer);
KELM_API kelStatus kelmEigenValues_ma_32f(const kel32f* src, int srcObjStride, int srcRowStride, int srcElemStride, kel32f* valRe,
    kel32f* valIm, int n, int count, kel32f* buffer);
KELM_API kelStatus kelmEigenValues_ma_32f_P(const kel32f* const* src, int srcObjShift, int srcObjStride, kel32f* valRe, kel32f* valIm,
    int n, int count, kel32f* buffer);
KELM_API kelStatus kelmEigenValues_ma_32f_L(const kel32f* const* src, int srcObjShift, int srcRowStride, int srcElemStride, kel32f* valRe,
    kel32f* valIm, int n, int count, kel32f* buffer);

KELM_API kelStatus kelmEigenValuesGetBufSize_64f(int n, int* bytes);
KELM_API kelStatus kelmEigenValuesVectorsGetBufSize_64f(int n, int* bytes);
KELM_API kelStatus kelmEigenValues_m_64f(const kel64f* src, int srcRowStride, int srcElemStride, kel64f* valRe, kel64f* valIm, int n,
    kel64f* buffer);
KELM_API kelStatus kelmEigenValues_m_64f_P(const kel64f* const* src, int srcObjShift, kel64f* valRe, kel64f* valIm, int n, kel64f* buffer);
KELM_API kelStatus kelmEigenValues_ma_64f(const kel64f* src, int srcObjStride, int srcRowStride, int srcElemStride, kel64f* valRe,
    kel64f* valIm, int n, int count, kel64f* buffer);
KELM_API kelStatus kelmEigenValues_ma_64f_P(const kel64f* const* src, int srcObjShift, int srcObjStride, kel64f* valRe, kel64f* valIm,
    int n, int count, kel64f* buffer);
KELM_API kelStatus kelmEigenValues_ma_64f_L(const kel64f* const* src, int srcObjShift, int srcRowStride, int srcElemStride, kel64f* valRe,
    kel64f* valIm, int n, int count, kel64f* buffer);

KELM_API kelStatus kelmEigenValuesVectorsRight_m_32f(const kel32f* src, int srcRowStride, int srcElemStride, kel32f* vec, int vecRowStride,
    int vecElemStride, kel32f* valRe, kel32f* valIm, int n, kel32f* buffer);
KELM_API kelStatus kelmEigenValuesVectorsRight_m_32f_P(const kel32f* const* src, int srcObjShift, kel32f* const* vec, int vecObjShift,
    kel32f* valRe, kel32f* valIm, int n, kel32f* buffer);
KELM_API kelStatus kelmEigenValuesVectorsRight_ma_32f(const kel32f* src, int srcObjStride, int srcRowStride, int srcElemStride, kel32f* vec,
    int vecObjStride, int vecRowStride, int vecElemStride, kel32f* valRe, kel32f* valIm, int n, int count, kel32f* buffer);
KELM_API kelStatus kelmEigenValuesVectorsRight_ma_32f_P(const kel32f* const* src, int srcObjShift, int srcObjStride, kel32f* const* vec,
    int vecObjShift, int vecObjStride, kel32f* valRe, kel32f* valIm, int n, int count, kel32f* buffer);
KELM_API kelStatus kelmEigenValuesVectorsRight_ma_32f_L(const kel32f* const* src, int srcObjShift, int srcRowStride, int srcElemStride,
    kel32f* const* vec, int vecObjShift, int vecRowStride, int vecElemStride, kel32f* valRe, kel32f* valIm, int n, int count,
    kel32f* buffer);

KELM_API kelStatus kelmEigenValuesVectorsLeft_m_32f(const kel32f* src, int srcRowStride, int srcElemStride, kel32f* vec, int vecRowStride,
    int vecElemStride, kel32f* valRe, kel32f* valIm, int n, kel32f* buffer);
KELM_API kelStatus kelmEigenValuesVectorsLeft_m_32f_P(const kel32f* const* src, int srcObjShift, kel32f* const* vec, int vecObjShift,
    kel32f* valRe, kel32f* valIm, int n, kel32f* buffer);
KELM_API kelStatus kelmEigenValuesVectorsLeft_ma_32f(const kel32f* src, int srcObjStride, int srcRowStride, int srcElemStride, kel32f* vec,
    int vecObjStride, int vecRowStride, int vecElemStride, kel32f* valRe, kel32f* valIm, int n, int count, kel32f* buffer);
KELM_API kelStatus kelmEigenValuesVectorsLeft_ma_32f_P(const kel32f* const* src, int srcObjShift, int srcObjStride, kel32f* const* vec,
    int vecObjShift, int vecObjStride, kel32f* valRe, kel32f* valIm, int n, int count, kel32f* buffer);
KELM_API kelStatus kelmEigenValuesVectorsLeft_ma_32f_L(const kel32f* const* src, int srcObjShift, int srcRowStride, int srcElemStride,
    kel32f* const* vec, int vecObjShift, int vecRowStride, int vecElemStride, kel32f* valRe, kel32f* valIm, int n, int count,
    kel32f* buffer);

KELM_API kelStatus kelmEigenValuesVectors_m_32f(const kel32f* src, int srcRowStride, int srcElemStride, kel32f* rvec, int rvecRowStride,
    int rvecElemStride, kel32f* lvec, int lvecRowStride, int lvecElemStride, kel32f* valRe, kel32f* valIm, int n, kel32f* buffer);
KELM_API kelStatus kelmEigenValuesVectors_m_32f_P(const kel32f* const* src, int srcObjShift, kel32f* const* rvec, int rvecObjShift,
    kel32f* const* lvec, int lvecObjShift, kel32f* valRe, kel32f* valIm, int n, kel32f* buffer);
KELM_API kelStatus kelmEigenValuesVectors_ma_32f(const kel32f* src, int srcObjStride, int srcRowStride, int srcElemStride, kel32f* rvec,
    int rvecObjStride, int rvecRowStride, int rvecElemStride, kel32f* lvec, int lvecObjStride, int lvecRowStride, int lvecElemStride,
    kel32f* valRe, kel32f* valIm, int n, int count, kel32f* buffer);
KELM_API kelStatus kelmEigenValuesVectors_ma_32f_P(const kel32f* const* src, int srcObjShift, int srcObjStride, kel32f* const* rvec,
    int rvecObjShift, int rvecObjStride, kel32f* const* lvec, int lvecObjShift, int lvecObjStride, kel32f* valRe, kel32f* valIm, int n,
    int count, kel32f* buffer);
KELM_API kelStatus kelmEigenValuesVectors_ma_32f_L(const kel32f* const* src, int srcObjShift, int srcRowStride, int srcElemStride,
    kel32f* const* rvec, int rvecObjShift, int rvecRowStride, int rvecElemStride, kel32f* const* lvec, int lvecObjShift, int lvecRowStride,
    int lvecElemStride, kel32f* valRe, kel32f* valIm, int n, int count, kel32f* buffer);

KELM_API kelStatus kelmEigenValuesVectorsRight_m_64f(const kel64f* src, int srcRowStride, int srcElemStride, kel64f* vec, int vecRowStride,
    int vecElemStride, kel64f* valRe, kel64f* valIm, int n, kel64f* buffer);
KELM_API kelStatus kelmEigenValuesVectorsRight_m_64f_P(const kel64f* const* src, int srcObjShift, kel64f* const* vec, int vecObjShift,
    kel64f* valRe, kel64f* valIm, int n, kel64f* buffer);
KELM_API kelStatus kelmEigenValuesVectorsRight_ma_64f(const kel64f* src, int srcObjStride, int srcRowStride, int srcElemStride, kel64f* vec,
    int vecObjStride, int vecRowStride, int vecElemStride, kel64f* valRe, kel64f* valIm, int n, int count, kel64f* buffer);
KELM_API kelStatus kelmEigenValuesVectorsRight_ma_64f_P(const kel64f* const* src, int srcObjShift, int srcObjStride, kel64f* const* vec,
    int vecObjShift, int vecObjStride, kel64f* valRe, kel64f* valIm, int n, int count, kel64f* buffer);
KELM_API kelStatus kelmEigenValuesVectorsRight_ma_64f_L(const kel64f* const* src, int srcObjShift, int srcRowStride, int srcElemStride,
    kel64f* const* vec, int vecObjShift, int vecRowStride, int vecElemStride, kel64f* valRe, kel64f* valIm, int n, int count,
    kel64f* buffer);

KELM_API kelStatus kelmEigenValuesVectorsLeft_m_64f(const kel64f* src, int srcRowStride, int srcElemStride, kel64f* vec, int vecRowStride,
    int vecElemStride, kel64f* valRe, kel64f* valIm, int n, kel64f* buffer);
KELM_API kelStatus kelmEigenValuesVectorsLeft_m_64f_P(const kel64f* const* src, int srcObjShift, kel64f* const* vec, int vecObjShift,
    kel64f* valRe, kel64f* valIm, int n, kel64f* buffer);
KELM_API kelStatus kelmEigenValuesVectorsLeft_ma_64f(const kel64f* src, int srcObjStride, int srcRowStride, int srcElemStride, kel64f* vec,
    int vecObjStride, int vecRowStride, int vecElemStride, kel64f* valRe, kel64f* valIm, int n, int count, kel64f* buffer);
KELM_API kelStatus kelmEigenValuesVectorsLeft_ma_64f_P(const kel64f* const* src, int srcObjShift, int srcObjStride, kel64f* const* vec,
    int vecObjShift, int vecObjStride, kel64f* valRe, kel64f* valIm, int n, int count, kel64f* buffer);
KELM_API kelStatus kelmEigenValuesVectorsLeft_ma_64f_L(const kel64f* const* src, int srcObjShift, int srcRowStride, int srcElemStride,
    kel64f* const* vec, int vecObjShift, int vecRowStride, int vecElemStride, kel64f* valRe, kel64f* valIm, int n, int count,
    kel64f* buffer);

KELM_API kelStatus kelmEigenValuesVectors_m_64f(const kel64f* src, int srcRowStride, int srcElemStride, kel64f* rvec, int rvecRowStride,
    int rvecElemStride, kel64f* lvec, int lvecRowStride, int lvecElemStride, kel64f* valRe, kel64f* valIm, int n, kel64f* buffer);
KELM_API kelStatus kelmEigenValuesVectors_m_64f_P(const kel64f* const* src, int srcObjShift, kel64f* const* rvec, int rvecObjShift,
    kel64f* const* lvec, int lvecObjShift, kel64f* valRe, kel64f* valIm, int n, kel64f* buffer);
KELM_API kelStatus kelmEigenValuesVectors_ma_64f(const kel64f* src, int srcObjStride, int srcRowStride, int srcElemStride, kel64f* rvec,
    int rvecObjStride, int rvecRowStride, int rvecElemStride, kel64f* lvec, int lvecObjStride, int lvecRowStride, int lvecElemStride,
    kel64f* valRe, kel64f* valIm, int n, int count, kel64f* buffer);
KELM_API kelStatus kelmEigenValuesVectors_ma_64f_P(const kel64f* const* src, int srcObjShift, int srcObjStride, kel64f* const* rvec,
    int rvecObjShift, int rvecObjStride, kel64f* const* lvec, int lvecObjShift, int lvecObjStride, kel64f* valRe, kel64f* valIm, int n,
    int count, kel64f* buffer);
KELM_API kelStatus kelmEigenValuesVectors_ma_64f_L(const kel64f* const* src, int srcObjShift, int srcRowStride, int srcElemStride,
    kel64f* const* rvec, int rvecObjShift, int rvecRowStride, int rvecElemStride, kel64f* const* lvec, int lvecObjShift, int lvecRowStride,
    int lvecElemStride, kel64f* valRe, kel64f* valIm, int n, int count, kel64f* buffer);

#ifdef __cplusplus
}
#endif

#endif
