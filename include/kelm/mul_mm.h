/* Part of kelm.h; include that header, not this one. */
#ifndef KELM_MUL_MM_H
#define KELM_MUL_MM_H

/* Matrix-matrix products: dst = op(src1) * op(src2), op the identity for an
 * operand letter m and transposition for t.  Every source passes its Width
 * and Height as stored (never those of its transpose), directly after its
 * description; the destination has no sizes: it is op(src1) rows by op(src2)
 * columns.  The inner sizes must agree (kelErrSizeMismatch, tested after
 * null, count and size and before any stride or shift).  Each element is the
 * sum from zero of its products in ascending order, in the element type.
 * The destination must not overlap a source; this is not detected. */

#ifdef __cplusplus
extern "C" {
#endif

/* single pairs */
KELM_API kelStatus kelmMul_mm_32f(const kel32f* src1, int src1RowStride, int src1ElemStride, int src1Width, int src1Height, const
    kel32f* src2, int src2RowStride, int src2ElemStride, int src2Width, int src2Height, kel32f* dst, int dstRowStride, int
    dstElemStride);
KELM_API kelStatus kelmMul_mm_32f_P(const kel32f* const* src1, int src1ObjShift, int src1Width, int src1Height, const kel32f*
    const* src2, int src2ObjShift, int src2Width, int src2Height, kel32f* const* dst, int dstObjShift);
KELM_API kelStatus kelmMul_mm_64f(const kel64f* src1, int src1RowStride, int src1ElemStride, int src1Width, int src1Height, const
    kel64f* src2, int src2RowStride, int src2ElemStride, int src2Width, int src2Height, kel64f* dst, int dstRowStride, int
    dstElemStride);
KELM_API kelStatus kelmMul_mm_64f_P(const kel64f* const* src1, int src1ObjShift, int src1Width, int src1Height, const kel64f*
    const* src2, int src2ObjShift, int src2Width, int src2Height, kel64f* const* dst, int dstObjShift);
KELM_API kelStatus kelmMul_mt_32f(const kel32f* src1, int src1RowStride, int src1ElemStride, int src1Width, int src1Height, const
    kel32f* src2, int src2RowStride, int src2ElemStride, int src2Width, int src2Height, kel32f* dst, int dstRowStride, int
    dstElemStride);
KELM_API kelStatus kelmMul_mt_32f_P(const kel32f* const* src1, int src1ObjShift, int src1Width, int src1Height, const kel32f*
    const* src2, int src2ObjShift, int src2Width, int src2Height, kel32f* const* dst, int dstObjShift);
KELM_API kelStatus kelmMul_mt_64f(const kel64f* src1, int src1RowStride, int src1ElemStride, int src1Width, int src1Height, const
    kel64f* src2, int src2RowStride, int src2ElemStride, int src2Width, int src2Height, kel64f* dst, int dstRowStride, int
    dstElemStride);
KELM_API kelStatus kelmMul_mt_64f_P(const kel64f* const* src1, int src1ObjShift, int src1Width, int src1Height, const kel64f*
    const* src2, int src2ObjShift, int src2Width, int src2Height, kel64f* const* dst, int dstObjShift);
KELM_API kelStatus kelmMul_tm_32f(const kel32f* src1, int src1RowStride, int src1ElemStride, int src1Width, int src1Height, const
    kel32f* src2, int src2RowStride, int src2ElemStride, int src2Width, int src2Height, kel32f* dst, int dstRowStride, int
    dstElemStride);
KELM_API kelStatus kelmMul_tm_32f_P(const kel32f* const* src1, int src1ObjShift, int src1Width, int src1Height, const kel32f*
    const* src2, int src2ObjShift, int src2Width, int src2Height, kel32f* const* dst, int dstObjShift);
KELM_API kelStatus kelmMul_tm_64f(const kel64f* src1, int src1RowStride, int src1ElemStride, int src1Width, int src1Height, const
    kel64f* src2, int src2RowStride, int src2ElemStride, int src2Width, int src2Height, kel64f* dst, int dstRowStride, int
    dstElemStride);
KELM_API kelStatus kelmMul_tm_64f_P(const kel64f* const* src1, int src1ObjShift, int src1Width, int src1Height, const kel64f*
    const* src2, int src2ObjShift, int src2Width, int src2Height, kel64f* const* dst, int dstObjShift);
KELM_API kelStatus kelmMul_tt_32f(const kel32f* src1, int src1RowStride, int src1ElemStride, int src1Width, int src1Height, const
    kel32f* src2, int src2RowStride, int src2ElemStride, int src2Width, int src2Height, kel32f* dst, int dstRowStride, int
    dstElemStride);
KELM_API kelStatus kelmMul_tt_32f_P(const kel32f* const* src1, int src1ObjShift, int src1Width, int src1Height, const kel32f*
    const* src2, int src2ObjShift, int src2Width, int src2Height, kel32f* const* dst, int dstObjShift);
KELM_API kelStatus kelmMul_tt_64f(const kel64f* src1, int src1RowStride, int src1ElemStride, int src1Width, int src1Height, const
    kel64f* src2, int src2RowStride, int src2ElemStride, int src2Width, int src2Height, kel64f* dst, int dstRowStride, int
    dstElemStride);
KELM_API kelStatus kelmMul_tt_64f_P(const kel64f* const* src1, int src1ObjShift, int src1Width, int src1Height, const kel64f*
    const* src2, int src2ObjShift, int src2Width, int src2Height, kel64f* const* dst, int dstObjShift);

/* an array times one matrix */
KELM_API kelStatus kelmMul_mam_32f(const kel32f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, int src1Width,
    int src1Height, const kel32f* src2, int src2RowStride, int src2ElemStride, int src2Width, int src2Height, kel32f* dst, int
    dstObjStride, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_mam_32f_P(const kel32f* const* src1, int src1ObjShift, int src1ObjStride, int src1Width, int
    src1Height, const kel32f* const* src2, int src2ObjShift, int src2Width, int src2Height, kel32f* const* dst, int dstObjShift, int
    dstObjStride, int count);
KELM_API kelStatus kelmMul_mam_32f_L(const kel32f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, int
    src1Width, int src1Height, const kel32f* src2, int src2RowStride, int src2ElemStride, int src2Width, int src2Height, kel32f*
    const* dst, int dstObjShift, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_mam_64f(const kel64f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, int src1Width,
    int src1Height, const kel64f* src2, int src2RowStride, int src2ElemStride, int src2Width, int src2Height, kel64f* dst, int
    dstObjStride, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_mam_64f_P(const kel64f* const* src1, int src1ObjShift, int src1ObjStride, int src1Width, int
    src1Height, const kel64f* const* src2, int src2ObjShift, int src2Width, int src2Height, kel64f* const* dst, int dstObjShift, int
    dstObjStride, int count);
KELM_API kelStatus kelmMul_mam_64f_L(const kel64f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, int
    src1Width, int src1Height, const kel64f* src2, int src2RowStride, int src2ElemStride, int src2Width, int src2Height, kel64f*
    const* dst, int dstObjShift, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_mat_32f(const kel32f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, int src1Width,
    int src1Height, const kel32f* src2, int src2RowStride, int src2ElemStride, int src2Width, int src2Height, kel32f* dst, int
    dstObjStride, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_mat_32f_P(const kel32f* const* src1, int src1ObjShift, int src1ObjStride, int src1Width, int
    src1Height, const kel32f* const* src2, int src2ObjShift, int src2Width, int src2Height, kel32f* const* dst, int dstObjShift, int
    dstObjStride, int count);
KELM_API kelStatus kelmMul_mat_32f_L(const kel32f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, int
    src1Width, int src1Height, const kel32f* src2, int src2RowStride, int src2ElemStride, int src2Width, int src2Height, kel32f*
    const* dst, int dstObjShift, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_mat_64f(const kel64f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, int src1Width,
    int src1Height, const kel64f* src2, int src2RowStride, int src2ElemStride, int src2Width, int src2Height, kel64f* dst, int
    dstObjStride, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_mat_64f_P(const kel64f* const* src1, int src1ObjShift, int src1ObjStride, int src1Width, int
    src1Height, const kel64f* const* src2, int src2ObjShift, int src2Width, int src2Height, kel64f* const* dst, int dstObjShift, int
    dstObjStride, int count);
KELM_API kelStatus kelmMul_mat_64f_L(const kel64f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, int
    src1Width, int src1Height, const kel64f* src2, int src2RowStride, int src2ElemStride, int src2Width, int src2Height, kel64f*
    const* dst, int dstObjShift, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_tam_32f(const kel32f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, int src1Width,
    int src1Height, const kel32f* src2, int src2RowStride, int src2ElemStride, int src2Width, int src2Height, kel32f* dst, int
    dstObjStride, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_tam_32f_P(const kel32f* const* src1, int src1ObjShift, int src1ObjStride, int src1Width, int
    src1Height, const kel32f* const* src2, int src2ObjShift, int src2Width, int src2Height, kel32f* const* dst, int dstObjShift, int
    dstObjStride, int count);
KELM_API kelStatus kelmMul_tam_32f_L(const kel32f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, int
    src1Width, int src1Height, const kel32f* src2, int src2RowStride, int src2ElemStride, int src2Width, int src2Height, kel32f*
    const* dst, int dstObjShift, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_tam_64f(const kel64f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, int src1Width,
    int src1Height, const kel64f* src2, int src2RowStride, int src2ElemStride, int src2Width, int src2Height, kel64f* dst, int
    dstObjStride, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_tam_64f_P(const kel64f* const* src1, int src1ObjShift, int src1ObjStride, int src1Width, int
    src1Height, const kel64f* const* src2, int src2ObjShift, int src2Width, int src2Height, kel64f* const* dst, int dstObjShift, int
    dstObjStride, int count);
KELM_API kelStatus kelmMul_tam_64f_L(const kel64f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, int
    src1Width, int src1Height, const kel64f* src2, int src2RowStride, int src2ElemStride, int src2Width, int src2Height, kel64f*
    const* dst, int dstObjShift, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_tat_32f(const kel32f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, int src1Width,
    int src1Height, const kel32f* src2, int src2RowStride, int src2ElemStride, int src2Width, int src2Height, kel32f* dst, int
    dstObjStride, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_tat_32f_P(const kel32f* const* src1, int src1ObjShift, int src1ObjStride, int src1Width, int
    src1Height, const kel32f* const* src2, int src2ObjShift, int src2Width, int src2Height, kel32f* const* dst, int dstObjShift, int
    dstObjStride, int count);
KELM_API kelStatus kelmMul_tat_32f_L(const kel32f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, int
    src1Width, int src1Height, const kel32f* src2, int src2RowStride, int src2ElemStride, int src2Width, int src2Height, kel32f*
    const* dst, int dstObjShift, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_tat_64f(const kel64f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, int src1Width,
    int src1Height, const kel64f* src2, int src2RowStride, int src2ElemStride, int src2Width, int src2Height, kel64f* dst, int
    dstObjStride, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_tat_64f_P(const kel64f* const* src1, int src1ObjShift, int src1ObjStride, int src1Width, int
    src1Height, const kel64f* const* src2, int src2ObjShift, int src2Width, int src2Height, kel64f* const* dst, int dstObjShift, int
    dstObjStride, int count);
KELM_API kelStatus kelmMul_tat_64f_L(const kel64f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, int
    src1Width, int src1Height, const kel64f* src2, int src2RowStride, int src2ElemStride, int src2Width, int src2Height, kel64f*
    const* dst, int dstObjShift, int dstRowStride, int dstElemStride, int count);

/* one matrix times an array */
KELM_API kelStatus kelmMul_mma_32f(const kel32f* src1, int src1RowStride, int src1ElemStride, int src1Width, int src1Height, const
    kel32f* src2, int src2ObjStride, int src2RowStride, int src2ElemStride, int src2Width, int src2Height, kel32f* dst, int
    dstObjStride, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_mma_32f_P(const kel32f* const* src1, int src1ObjShift, int src1Width, int src1Height, const kel32f*
    const* src2, int src2ObjShift, int src2ObjStride, int src2Width, int src2Height, kel32f* const* dst, int dstObjShift, int
    dstObjStride, int count);
KELM_API kelStatus kelmMul_mma_32f_L(const kel32f* src1, int src1RowStride, int src1ElemStride, int src1Width, int src1Height,
    const kel32f* const* src2, int src2ObjShift, int src2RowStride, int src2ElemStride, int src2Width, int src2Height, kel32f* const*
    dst, int dstObjShift, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_mma_64f(const kel64f* src1, int src1RowStride, int src1ElemStride, int src1Width, int src1Height, const
    kel64f* src2, int src2ObjStride, int src2RowStride, int src2ElemStride, int src2Width, int src2Height, kel64f* dst, int
    dstObjStride, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_mma_64f_P(const kel64f* const* src1, int src1ObjShift, int src1Width, int src1Height, const kel64f*
    const* src2, int src2ObjShift, int src2ObjStride, int src2Width, int src2Height, kel64f* const* dst, int dstObjShift, int
    dstObjStride, int count);
KELM_API kelStatus kelmMul_mma_64f_L(const kel64f* src1, int src1RowStride, int src1ElemStride, int src1Width, int src1Height,
    const kel64f* const* src2, int src2ObjShift, int src2RowStride, int src2ElemStride, int src2Width, int src2Height, kel64f* const*
    dst, int dstObjShift, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_mta_32f(const kel32f* src1, int src1RowStride, int src1ElemStride, int src1Width, int src1Height, const
    kel32f* src2, int src2ObjStride, int src2RowStride, int src2ElemStride, int src2Width, int src2Height, kel32f* dst, int
    dstObjStride, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_mta_32f_P(const kel32f* const* src1, int src1ObjShift, int src1Width, int src1Height, const kel32f*
    const* src2, int src2ObjShift, int src2ObjStride, int src2Width, int src2Height, kel32f* const* dst, int dstObjShift, int
    dstObjStride, int count);
KELM_API kelStatus kelmMul_mta_32f_L(const kel32f* src1, int src1RowStride, int src1ElemStride, int src1Width, int src1Height,
    const kel32f* const* src2, int src2ObjShift, int src2RowStride, int src2ElemStride, int src2Width, int src2Height, kel32f* const*
    dst, int dstObjShift, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_mta_64f(const kel64f* src1, int src1RowStride, int src1ElemStride, int src1Width, int src1Height, const
    kel64f* src2, int src2ObjStride, int src2RowStride, int src2ElemStride, int src2Width, int src2Height, kel64f* dst, int
    dstObjStride, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_mta_64f_P(const kel64f* const* src1, int src1ObjShift, int src1Width, int src1Height, const kel64f*
    const* src2, int src2ObjShift, int src2ObjStride, int src2Width, int src2Height, kel64f* const* dst, int dstObjShift, int
    dstObjStride, int count);
KELM_API kelStatus kelmMul_mta_64f_L(const kel64f* src1, int src1RowStride, int src1ElemStride, int src1Width, int src1Height,
    const kel64f* const* src2, int src2ObjShift, int src2RowStride, int src2ElemStride, int src2Width, int src2Height, kel64f* const*
    dst, int dstObjShift, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_tma_32f(const kel32f* src1, int src1RowStride, int src1ElemStride, int src1Width, int src1Height, const
    kel32f* src2, int src2ObjStride, int src2RowStride, int src2ElemStride, int src2Width, int src2Height, kel32f* dst, int
    dstObjStride, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_tma_32f_P(const kel32f* const* src1, int src1ObjShift, int src1Width, int src1Height, const kel32f*
    const* src2, int src2ObjShift, int src2ObjStride, int src2Width, int src2Height, kel32f* const* dst, int dstObjShift, int
    dstObjStride, int count);
KELM_API kelStatus kelmMul_tma_32f_L(const kel32f* src1, int src1RowStride, int src1ElemStride, int src1Width, int src1Height,
    const kel32f* const* src2, int src2ObjShift, int src2RowStride, int src2ElemStride, int src2Width, int src2Height, kel32f* const*
    dst, int dstObjShift, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_tma_64f(const kel64f* src1, int src1RowStride, int src1ElemStride, int src1Width, int src1Height, const
    kel64f* src2, int src2ObjStride, int src2RowStride, int src2ElemStride, int src2Width, int src2Height, kel64f* dst, int
    dstObjStride, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_tma_64f_P(const kel64f* const* src1, int src1ObjShift, int src1Width, int src1Height, const kel64f*
    const* src2, int src2ObjShift, int src2ObjStride, int src2Width, int src2Height, kel64f* const* dst, int dstObjShift, int
    dstObjStride, int count);
KELM_API kelStatus kelmMul_tma_64f_L(const kel64f* src1, int src1RowStride, int src1ElemStride, int src1Width, int src1Height,
    const kel64f* const* src2, int src2ObjShift, int src2RowStride, int src2ElemStride, int src2Width, int src2Height, kel64f* const*
    dst, int dstObjShift, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_tta_32f(const kel32f* src1, int src1RowStride, int src1ElemStride, int src1Width, int src1Height, const
    kel32f* src2, int src2ObjStride, int src2RowStride, int src2ElemStride, int src2Width, int src2Height, kel32f* dst, int
    dstObjStride, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_tta_32f_P(const kel32f* const* src1, int src1ObjShift, int src1Width, int src1Height, const kel32f*
    const* src2, int src2ObjShift, int src2ObjStride, int src2Width, int src2Height, kel32f* const* dst, int dstObjShift, int
    dstObjStride, int count);
KELM_API kelStatus kelmMul_tta_32f_L(const kel32f* src1, int src1RowStride, int src1ElemStride, int src1Width, int src1Height,
    const kel32f* const* src2, int src2ObjShift, int src2RowStride, int src2ElemStride, int src2Width, int src2Height, kel32f* const*
    dst, int dstObjShift, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_tta_64f(const kel64f* src1, int src1RowStride, int src1ElemStride, int src1Width, int src1Height, const
    kel64f* src2, int src2ObjStride, int src2RowStride, int src2ElemStride, int src2Width, int src2Height, kel64f* dst, int
    dstObjStride, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_tta_64f_P(const kel64f* const* src1, int src1ObjShift, int src1Width, int src1Height, const kel64f*
    const* src2, int src2ObjShift, int src2ObjStride, int src2Width, int src2Height, kel64f* const* dst, int dstObjShift, int
    dstObjStride, int count);
KELM_API kelStatus kelmMul_tta_64f_L(const kel64f* src1, int src1RowStride, int src1ElemStride, int src1Width, int src1Height,
    const kel64f* const* src2, int src2ObjShift, int src2RowStride, int src2ElemStride, int src2Width, int src2Height, kel64f* const*
    dst, int dstObjShift, int dstRowStride, int dstElemStride, int count);

/* two arrays, pairwise */
KELM_API kelStatus kelmMul_mama_32f(const kel32f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, int src1Width,
    int src1Height, const kel32f* src2, int src2ObjStride, int src2RowStride, int src2ElemStride, int src2Width, int src2Height,
    kel32f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_mama_32f_P(const kel32f* const* src1, int src1ObjShift, int src1ObjStride, int src1Width, int
    src1Height, const kel32f* const* src2, int src2ObjShift, int src2ObjStride, int src2Width, int src2Height, kel32f* const* dst, int
    dstObjShift, int dstObjStride, int count);
KELM_API kelStatus kelmMul_mama_32f_L(const kel32f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, int
    src1Width, int src1Height, const kel32f* const* src2, int src2ObjShift, int src2RowStride, int src2ElemStride, int src2Width, int
    src2Height, kel32f* const* dst, int dstObjShift, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_mama_64f(const kel64f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, int src1Width,
    int src1Height, const kel64f* src2, int src2ObjStride, int src2RowStride, int src2ElemStride, int src2Width, int src2Height,
    kel64f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_mama_64f_P(const kel64f* const* src1, int src1ObjShift, int src1ObjStride, int src1Width, int
    src1Height, const kel64f* const* src2, int src2ObjShift, int src2ObjStride, int src2Width, int src2Height, kel64f* const* dst, int
    dstObjShift, int dstObjStride, int count);
KELM_API kelStatus kelmMul_mama_64f_L(const kel64f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, int
    src1Width, int src1Height, const kel64f* const* src2, int src2ObjShift, int src2RowStride, int src2ElemStride, int src2Width, int
    src2Height, kel64f* const* dst, int dstObjShift, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_mata_32f(const kel32f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, int src1Width,
    int src1Height, const kel32f* src2, int src2ObjStride, int src2RowStride, int src2ElemStride, int src2Width, int src2Height,
    kel32f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_mata_32f_P(const kel32f* const* src1, int src1ObjShift, int src1ObjStride, int src1Width, int
    src1Height, const kel32f* const* src2, int src2ObjShift, int src2ObjStride, int src2Width, int src2Height, kel32f* const* dst, int
    dstObjShift, int dstObjStride, int count);
KELM_API kelStatus kelmMul_mata_32f_L(const kel32f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, int
    src1Width, int src1Height, const kel32f* const* src2, int src2ObjShift, int src2RowStride, int src2ElemStride, int src2Width, int
    src2Height, kel32f* const* dst, int dstObjShift, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_mata_64f(const kel64f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, int src1Width,
    int src1Height, const kel64f* src2, int src2ObjStride, int src2RowStride, int src2ElemStride, int src2Width, int src2Height,
    kel64f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_mata_64f_P(const kel64f* const* src1, int src1ObjShift, int src1ObjStride, int src1Width, int
    src1Height, const kel64f* const* src2, int src2ObjShift, int src2ObjStride, int src2Width, int src2Height, kel64f* const* dst, int
    dstObjShift, int dstObjStride, int count);
KELM_API kelStatus kelmMul_mata_64f_L(const kel64f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, int
    src1Width, int src1Height, const kel64f* const* src2, int src2ObjShift, int src2RowStride, int src2ElemStride, int src2Width, int
    src2Height, kel64f* const* dst, int dstObjShift, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_tama_32f(const kel32f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, int src1Width,
    int src1Height, const kel32f* src2, int src2ObjStride, int src2RowStride, int src2ElemStride, int src2Width, int src2Height,
    kel32f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_tama_32f_P(const kel32f* const* src1, int src1ObjShift, int src1ObjStride, int src1Width, int
    src1Height, const kel32f* const* src2, int src2ObjShift, int src2ObjStride, int src2Width, int src2Height, kel32f* const* dst, int
    dstObjShift, int dstObjStride, int count);
KELM_API kelStatus kelmMul_tama_32f_L(const kel32f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, int
    src1Width, int src1Height, const kel32f* const* src2, int src2ObjShift, int src2RowStride, int src2ElemStride, int src2Width, int
    src2Height, kel32f* const* dst, int dstObjShift, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_tama_64f(const kel64f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, int src1Width,
    int src1Height, const kel64f* src2, int src2ObjStride, int src2RowStride, int src2ElemStride, int src2Width, int src2Height,
    kel64f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_tama_64f_P(const kel64f* const* src1, int src1ObjShift, int src1ObjStride, int src1Width, int
    src1Height, const kel64f* const* src2, int src2ObjShift, int src2ObjStride, int src2Width, int src2Height, kel64f* const* dst, int
    dstObjShift, int dstObjStride, int count);
KELM_API kelStatus kelmMul_tama_64f_L(const kel64f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, int
    src1Width, int src1Height, const kel64f* const* src2, int src2ObjShift, int src2RowStride, int src2ElemStride, int src2Width, int
    src2Height, kel64f* const* dst, int dstObjShift, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_tata_32f(const kel32f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, int src1Width,
    int src1Height, const kel32f* src2, int src2ObjStride, int src2RowStride, int src2ElemStride, int src2Width, int src2Height,
    kel32f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_tata_32f_P(const kel32f* const* src1, int src1ObjShift, int src1ObjStride, int src1Width, int
    src1Height, const kel32f* const* src2, int src2ObjShift, int src2ObjStride, int src2Width, int src2Height, kel32f* const* dst, int
    dstObjShift, int dstObjStride, int count);
KELM_API kelStatus kelmMul_tata_32f_L(const kel32f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, int
    src1Width, int src1Height, const kel32f* const* src2, int src2ObjShift, int src2RowStride, int src2ElemStride, int src2Width, int
    src2Height, kel32f* const* dst, int dstObjShift, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_tata_64f(const kel64f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, int src1Width,
    int src1Height, const kel64f* src2, int src2ObjStride, int src2RowStride, int src2ElemStride, int src2Width, int src2Height,
    kel64f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int count);
KELM_API kelStatus kelmMul_tata_64f_P(const kel64f* const* src1, int src1ObjShift, int src1ObjStride, int src1Width, int
    src1Height, const kel64f* const* src2, int src2ObjShift, int src2ObjStride, int src2Width, int src2Height, kel64f* const* dst, int
    dstObjShift, int dstObjStride, int count);
KELM_API kelStatus kelmMul_tata_64f_L(const kel64f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, int
    src1Width, int src1Height, const kel64f* const* src2, int src2ObjShift, int src2RowStride, int src2ElemStride, int src2Width, int
    src2Height, kel64f* const* dst, int dstObjShift, int dstRowStride, int dstElemStride, int count);

#ifdef __cplusplus
}
#endif

#endif
