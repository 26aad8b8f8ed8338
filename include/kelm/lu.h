/* Part of kelm.h; include that header, not this one. */
#ifndef KELM_LU_H
#define KELM_LU_H

/* LUDecomp and LUBackSubst: P A = L U with partial (row) pivoting, and the
 * solution of A x = b with such a factor.  n is the order of the square
 * matrices (width = height = n).
 *
 * Layout of a factor.  Rows are never exchanged: index (n ints per matrix)
 * receives the permutation, index[k] being the source row chosen as the k-th
 * pivot row, and destination row index[k] holds row k of the factor: the
 * multipliers of L in columns j < k (its unit diagonal is not stored) and U
 * in columns j >= k.  LUBackSubst reads the factor and b through index and
 * writes x in natural order.  Arrays of matrices use one index block of n
 * entries per matrix (matrix k at index[k*n]); exception: kelmLUDecomp_ma
 * (strided) with an element stride other than the element size and n outside
 * 3..6 writes every matrix's permutation to the same block, index[0..n-1].
 * mva applies one factor (one index block) to every vector; mava pairs
 * factor k and index block k with vector k.
 *
 * Singularity.  Orders 3 to 6 accept a pivot whose magnitude is at least
 * twice the smallest normal number (2^-125 for 32f, 2^-1021 for 64f); other
 * orders need a pivot above the machine epsilon (2^-23, 2^-52).  A singular
 * matrix returns kelErrSingular and leaves its destination and index block
 * partly written: do not use them.  An array stops at the first singular
 * matrix (the ones before it are complete, the ones after it untouched); in
 * a parallel run the other threads' matrices are still factored.  The
 * decomposition may run in place (dst = src with the same strides).
 * LUBackSubst does not test the factor: a zero diagonal gives infinities or
 * NaNs.  Its destination must not overlap the right-hand vector. */

#ifdef __cplusplus
extern "C" {
#endif

KELM_API kelStatus kelmLUDecomp_m_32f(const kel32f* src, int srcRowStride, int srcElemStride, int* index, kel32f* dst, int dstRowStride, int
    dstElemStride, int n);
KELM_API kelStatus kelmLUDecomp_m_32f_P(const kel32f* const* src, int srcObjShift, int* index, kel32f* const* dst, int dstObjShift, int n);
KELM_API kelStatus kelmLUDecomp_m_64f(const kel64f* src, int srcRowStride, int srcElemStride, int* index, kel64f* dst, int dstRowStride, int
    dstElemStride, int n);
KELM_API kelStatus kelmLUDecomp_m_64f_P(const kel64f* const* src, int srcObjShift, int* index, kel64f* const* dst, int dstObjShift, int n);

KELM_API kelStatus kelmLUDecomp_ma_32f(const kel32f* src, int srcObjStride, int srcRowStride, int srcElemStride, int* index, kel32f* dst,
    int dstObjStride, int dstRowStride, int dstElemStride, int n, int count);
KELM_API kelStatus kelmLUDecomp_ma_32f_P(const kel32f* const* src, int srcObjShift, int srcObjStride, int* index, kel32f* const* dst, int
    dstObjShift, int dstObjStride, int n, int count);
KELM_API kelStatus kelmLUDecomp_ma_32f_L(const kel32f* const* src, int srcObjShift, int srcRowStride, int srcElemStride, int* index, kel32f*
    const* dst, int dstObjShift, int dstRowStride, int dstElemStride, int n, int count);
KELM_API kelStatus kelmLUDecomp_ma_64f(const kel64f* src, int srcObjStride, int srcRowStride, int srcElemStride, int* index, kel64f* dst,
    int dstObjStride, int dstRowStride, int dstElemStride, int n, int count);
KELM_API kelStatus kelmLUDecomp_ma_64f_P(const kel64f* const* src, int srcObjShift, int srcObjStride, int* index, kel64f* const* dst, int
    dstObjShift, int dstObjStride, int n, int count);
KELM_API kelStatus kelmLUDecomp_ma_64f_L(const kel64f* const* src, int srcObjShift, int srcRowStride, int srcElemStride, int* index, kel64f*
    const* dst, int dstObjShift, int dstRowStride, int dstElemStride, int n, int count);

KELM_API kelStatus kelmLUBackSubst_mv_32f(const kel32f* src1, int src1RowStride, int src1ElemStride, const int* index, const kel32f* src2,
    int src2ElemStride, kel32f* dst, int dstElemStride, int n);
KELM_API kelStatus kelmLUBackSubst_mv_32f_P(const kel32f* const* src1, int src1ObjShift, const int* index, const kel32f* const* src2, int
    src2ObjShift, kel32f* const* dst, int dstObjShift, int n);
KELM_API kelStatus kelmLUBackSubst_mv_64f(const kel64f* src1, int src1RowStride, int src1ElemStride, const int* index, const kel64f* src2,
    int src2ElemStride, kel64f* dst, int dstElemStride, int n);
KELM_API kelStatus kelmLUBackSubst_mv_64f_P(const kel64f* const* src1, int src1ObjShift, const int* index, const kel64f* const* src2, int
    src2ObjShift, kel64f* const* dst, int dstObjShift, int n);

KELM_API kelStatus kelmLUBackSubst_mva_32f(const kel32f* src1, int src1RowStride, int src1ElemStride, const int* index, const kel32f* src2,
    int src2ObjStride, int src2ElemStride, kel32f* dst, int dstObjStride, int dstElemStride, int n, int count);
KELM_API kelStatus kelmLUBackSubst_mva_32f_P(const kel32f* const* src1, int src1ObjShift, const int* index, const kel32f* const* src2, int
    src2ObjShift, int src2ObjStride, kel32f* const* dst, int dstObjShift, int dstObjStride, int n, int count);
KELM_API kelStatus kelmLUBackSubst_mva_32f_L(const kel32f* src1, int src1RowStride, int src1ElemStride, const int* index, const kel32f*
    const* src2, int src2ObjShift, int src2ElemStride, kel32f* const* dst, int dstObjShift, int dstElemStride, int n, int count);
KELM_API kelStatus kelmLUBackSubst_mva_64f(const kel64f* src1, int src1RowStride, int src1ElemStride, const int* index, const kel64f* src2,
    int src2ObjStride, int src2ElemStride, kel64f* dst, int dstObjStride, int dstElemStride, int n, int count);
KELM_API kelStatus kelmLUBackSubst_mva_64f_P(const kel64f* const* src1, int src1ObjShift, const int* index, const kel64f* const* src2, int
    src2ObjShift, int src2ObjStride, kel64f* const* dst, int dstObjShift, int dstObjStride, int n, int count);
KELM_API kelStatus kelmLUBackSubst_mva_64f_L(const kel64f* src1, int src1RowStride, int src1ElemStride, const int* index, const kel64f*
    const* src2, int src2ObjShift, int src2ElemStride, kel64f* const* dst, int dstObjShift, int dstElemStride, int n, int count);

KELM_API kelStatus kelmLUBackSubst_mava_32f(const kel32f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, const int* index,
    const kel32f* src2, int src2ObjStride, int src2ElemStride, kel32f* dst, int dstObjStride, int dstElemStride, int n, int count);
KELM_API kelStatus kelmLUBackSubst_mava_32f_P(const kel32f* const* src1, int src1ObjShift, int src1ObjStride, const int* index, const
    kel32f* const* src2, int src2ObjShift, int src2ObjStride, kel32f* const* dst, int dstObjShift, int dstObjStride, int n, int count);
KELM_API kelStatus kelmLUBackSubst_mava_32f_L(const kel32f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, const int*
    index, const kel32f* const* src2, int src2ObjShift, int src2ElemStride, kel32f* const* dst, int dstObjShift, int dstElemStride, int n,
    int count);
KELM_API kelStatus kelmLUBackSubst_mava_64f(const kel64f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, const int* index,
    const kel64f* src2, int src2ObjStride, int src2ElemStride, kel64f* dst, int dstObjStride, int dstElemStride, int n, int count);
KELM_API kelStatus kelmLUBackSubst_mava_64f_P(const kel64f* const* src1, int src1ObjShift, int src1ObjStride, const int* index, const
    kel64f* const* src2, int src2ObjShift, int src2ObjStride, kel64f* const* dst, int dstObjShift, int dstObjStride, int n, int count);
KELM_API kelStatus kelmLUBackSubst_mava_64f_L(const kel64f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, const int*
    index, const kel64f* const* src2, int src2ObjShift, int src2ElemStride, kel64f* const* dst, int dstObjShift, int dstElemStride, int n,
    int count);

#ifdef __cplusplus
}
#endif

#endif
