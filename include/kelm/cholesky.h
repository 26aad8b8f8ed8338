/* Part of kelm.h; include that header, not this one. */
#ifndef KELM_CHOLESKY_H
#define KELM_CHOLESKY_H

/* CholeskyDecomp and CholeskyBackSubst: A = L L^T for symmetric positive
 * definite matrices of order n, and the solution of A x = b with such a
 * factor.
 *
 * Layout of a factor.  Entry (i, j) below the diagonal holds l[i][j]; the
 * diagonal entry (i, i) holds the reciprocal 1/l[i][i], not l[i][i]; entries
 * above the diagonal are never written (the destination keeps what it held
 * there).  The decomposition reads only the lower triangle of its source,
 * which need not be symmetric, and may run in place (dst = src with the same
 * strides).  CholeskyBackSubst multiplies by the stored reciprocals and does
 * not test the factor.  mva applies one factor to every vector; mava pairs
 * factor k with vector k.
 *
 * Failure.  A diagonal value s that is not > 0 (a NaN included) returns
 * kelErrNotPosDef; the rows finished before it, and the entries left of the
 * diagonal of its row, are written; the destination is not to be used.  An
 * array stops at the first such matrix: the ones before it are complete, the
 * ones after it untouched (in a parallel run other threads' matrices are
 * still factored).
 *
 * kelmCholeskyDecomp_ma_32f with element strides of 4 bytes and n from 3 to 6
 * factors four matrices at a time (CholoDec_32f_V8): the reciprocal square
 * root there is the processor's estimate refined by one Newton step,
 * r = 0.5 r0 (3 - s r0^2), within a few units in the last place of 1/sqrt(s)
 * and reproducible on one processor model, not across makers.  A row fails
 * there only when s <= 0 (a NaN passes), and the call returns kelErrNotPosDef
 * as soon as one matrix of a group of four fails, with the group's rows
 * before the failing one written.  The last count mod 4 matrices go one at a
 * time with the same formulas.  All other forms, and every back
 * substitution, give the same bits on every processor.
 *
 * The four-lane kernels are exported as well.  They check nothing (their
 * arguments must be valid), with unit element strides where no element
 * stride is passed:
 *   CholoDec_32f_V8          count matrices of order n = 3..6 (another n
 *                            returns kelErrSize and touches nothing), as
 *                            kelmCholeskyDecomp_ma_32f above
 *   CholBackSubst_32f_V8     one factor, count vectors, four at a time: as
 *                            kelmCholeskyBackSubst_mva_32f, any n
 *   CholBackSubst_32f_S2_V8  the same with any element strides */

#ifdef __cplusplus
extern "C" {
#endif

KELM_API kelStatus kelmCholeskyDecomp_m_32f(const kel32f* src, int srcRowStride, int srcElemStride, kel32f* dst, int dstRowStride, int
    dstElemStride, int n);
KELM_API kelStatus kelmCholeskyDecomp_m_32f_P(const kel32f* const* src, int srcObjShift, kel32f* const* dst, int dstObjShift, int n);
KELM_API kelStatus kelmCholeskyDecomp_ma_32f(const kel32f* src, int srcObjStride, int srcRowStride, int srcElemStride, kel32f* dst, int
    dstObjStride, int dstRowStride, int dstElemStride, int n, int count);
KELM_API kelStatus kelmCholeskyDecomp_ma_32f_P(const kel32f* const* src, int srcObjShift, int srcObjStride, kel32f* const* dst, int
    dstObjShift, int dstObjStride, int n, int count);
KELM_API kelStatus kelmCholeskyDecomp_ma_32f_L(const kel32f* const* src, int srcObjShift, int srcRowStride, int srcElemStride, kel32f*
    const* dst, int dstObjShift, int dstRowStride, int dstElemStride, int n, int count);

KELM_API kelStatus kelmCholeskyDecomp_m_64f(const kel64f* src, int srcRowStride, int srcElemStride, kel64f* dst, int dstRowStride, int
    dstElemStride, int n);
KELM_API kelStatus kelmCholeskyDecomp_m_64f_P(const kel64f* const* src, int srcObjShift, kel64f* const* dst, int dstObjShift, int n);
KELM_API kelStatus kelmCholeskyDecomp_ma_64f(const kel64f* src, int srcObjStride, int srcRowStride, int srcElemStride, kel64f* dst, int
    dstObjStride, int dstRowStride, int dstElemStride, int n, int count);
KELM_API kelStatus kelmCholeskyDecomp_ma_64f_P(const kel64f* const* src, int srcObjShift, int srcObjStride, kel64f* const* dst, int
    dstObjShift, int dstObjStride, int n, int count);
KELM_API kelStatus kelmCholeskyDecomp_ma_64f_L(const kel64f* const* src, int srcObjShift, int srcRowStride, int srcElemStride, kel64f*
    const* dst, int dstObjShift, int dstRowStride, int dstElemStride, int n, int count);

KELM_API kelStatus kelmCholeskyBackSubst_mv_32f(const kel32f* src1, int src1RowStride, int src1ElemStride, const kel32f* src2, int
    src2ElemStride, kel32f* dst, int dstElemStride, int n);
KELM_API kelStatus kelmCholeskyBackSubst_mv_32f_P(const kel32f* const* src1, int src1ObjShift, const kel32f* const* src2, int src2ObjShift,
    kel32f* const* dst, int dstObjShift, int n);
KELM_API kelStatus kelmCholeskyBackSubst_mva_32f(const kel32f* src1, int src1RowStride, int src1ElemStride, const kel32f* src2, int
    src2ObjStride, int src2ElemStride, kel32f* dst, int dstObjStride, int dstElemStride, int n, int count);
KELM_API kelStatus kelmCholeskyBackSubst_mva_32f_P(const kel32f* const* src1, int src1ObjShift, const kel32f* const* src2, int src2ObjShift,
    int src2ObjStride, kel32f* const* dst, int dstObjShift, int dstObjStride, int n, int count);
KELM_API kelStatus kelmCholeskyBackSubst_mva_32f_L(const kel32f* src1, int src1RowStride, int src1ElemStride, const kel32f* const* src2, int
    src2ObjShift, int src2ElemStride, kel32f* const* dst, int dstObjShift, int dstElemStride, int n, int count);
KELM_API kelStatus kelmCholeskyBackSubst_mava_32f(const kel32f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, const
    kel32f* src2, int src2ObjStride, int src2ElemStride, kel32f* dst, int dstObjStride, int dstElemStride, int n, int count);
KELM_API kelStatus kelmCholeskyBackSubst_mava_32f_P(const kel32f* const* src1, int src1ObjShift, int src1ObjStride, const kel32f* const*
    src2, int src2ObjShift, int src2ObjStride, kel32f* const* dst, int dstObjShift, int dstObjStride, int n, int count);
KELM_API kelStatus kelmCholeskyBackSubst_mava_32f_L(const kel32f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride,
    const kel32f* const* src2, int src2ObjShift, int src2ElemStride, kel32f* const* dst, int dstObjShift, int dstElemStride, int n, int
    count);

KELM_API kelStatus kelmCholeskyBackSubst_mv_64f(const kel64f* src1, int src1RowStride, int src1ElemStride, const kel64f* src2, int
    src2ElemStride, kel64f* dst, int dstElemStride, int n);
KELM_API kelStatus kelmCholeskyBackSubst_mv_64f_P(const kel64f* const* src1, int src1ObjShift, const kel64f* const* src2, int src2ObjShift,
    kel64f* const* dst, int dstObjShift, int n);
KELM_API kelStatus kelmCholeskyBackSubst_mva_64f(const kel64f* src1, int src1RowStride, int src1ElemStride, const kel64f* src2, int
    src2ObjStride, int src2ElemStride, kel64f* dst, int dstObjStride, int dstElemStride, int n, int count);
KELM_API kelStatus kelmCholeskyBackSubst_mva_64f_P(const kel64f* const* src1, int src1ObjShift, const kel64f* const* src2, int src2ObjShift,
    int src2ObjStride, kel64f* const* dst, int dstObjShift, int dstObjStride, int n, int count);
KELM_API kelStatus kelmCholeskyBackSubst_mva_64f_L(const kel64f* src1, int src1RowStride, int src1ElemStride, const kel64f* const* src2, int
    src2ObjShift, int src2ElemStride, kel64f* const* dst, int dstObjShift, int dstElemStride, int n, int count);
KELM_API kelStatus kelmCholeskyBackSubst_mava_64f(const kel64f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, const
    kel64f* src2, int src2ObjStride, int src2ElemStride, kel64f* dst, int dstObjStride, int dstElemStride, int n, int count);
KELM_API kelStatus kelmCholeskyBackSubst_mava_64f_P(const kel64f* const* src1, int src1ObjShift, int src1ObjStride, const kel64f* const*
    src2, int src2ObjShift, int src2ObjStride, kel64f* const* dst, int dstObjShift, int dstObjStride, int n, int count);
KELM_API kelStatus kelmCholeskyBackSubst_mava_64f_L(const kel64f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride,
    const kel64f* const* src2, int src2ObjShift, int src2ElemStride, kel64f* const* dst, int dstObjShift, int dstElemStride, int n, int
    count);

KELM_API kelStatus CholoDec_32f_V8(const kel32f* src, int srcObjStride, int srcRowStride, kel32f* dst, int dstObjStride, int
    dstRowStride, int n, int count);
KELM_API kelStatus CholBackSubst_32f_V8(const kel32f* src1, int src1RowStride, const kel32f* src2, int src2ObjStride, kel32f* dst, int
    dstObjStride, int n, int count);
KELM_API kelStatus CholBackSubst_32f_S2_V8(const kel32f* src1, int src1RowStride, int src1ElemStride, const kel32f* src2, int
    src2ObjStride, int src2ElemStride, kel32f* dst, int dstObjStride, int dstElemStride, int n, int count);

#ifdef __cplusplus
}
#endif

#endif
