/* Part of kelm.h; include that header, not this one. */
#ifndef KELM_ADDSUB_H
#define KELM_ADDSUB_H

/* Add and Sub: dst = src1 + src2, src1 - src2, element by element.  A
 * constant, or array of constants, always follows the vector operand in the
 * argument list: kelmSub_cv takes (src, ..., val, ...) and computes val - src.
 * Arrays of constants are a base and a byte stride (strided and _P) or a
 * list of count pointers and a shift (_L).  For a transposed operand (t),
 * width and height are those of the result. */

#ifdef __cplusplus
extern "C" {
#endif

KELM_API kelStatus kelmAdd_vv_32f(const kel32f* src1, int src1ElemStride, const kel32f* src2, int src2ElemStride, kel32f* dst, int
    dstElemStride, int len);
KELM_API kelStatus kelmAdd_vv_32f_P(const kel32f* const* src1, int src1ObjShift, const kel32f* const* src2, int src2ObjShift, kel32f* const*
    dst, int dstObjShift, int len);
KELM_API kelStatus kelmAdd_vv_64f(const kel64f* src1, int src1ElemStride, const kel64f* src2, int src2ElemStride, kel64f* dst, int
    dstElemStride, int len);
KELM_API kelStatus kelmAdd_vv_64f_P(const kel64f* const* src1, int src1ObjShift, const kel64f* const* src2, int src2ObjShift, kel64f* const*
    dst, int dstObjShift, int len);

KELM_API kelStatus kelmAdd_vc_32f(const kel32f* src, int srcElemStride, kel32f val, kel32f* dst, int dstElemStride, int len);
KELM_API kelStatus kelmAdd_vc_32f_P(const kel32f* const* src, int srcObjShift, kel32f val, kel32f* const* dst, int dstObjShift, int len);
KELM_API kelStatus kelmAdd_vc_64f(const kel64f* src, int srcElemStride, kel64f val, kel64f* dst, int dstElemStride, int len);
KELM_API kelStatus kelmAdd_vc_64f_P(const kel64f* const* src, int srcObjShift, kel64f val, kel64f* const* dst, int dstObjShift, int len);

KELM_API kelStatus kelmAdd_mm_32f(const kel32f* src1, int src1RowStride, int src1ElemStride, const kel32f* src2, int src2RowStride, int
    src2ElemStride, kel32f* dst, int dstRowStride, int dstElemStride, int width, int height);
KELM_API kelStatus kelmAdd_mm_32f_P(const kel32f* const* src1, int src1ObjShift, const kel32f* const* src2, int src2ObjShift, kel32f* const*
    dst, int dstObjShift, int width, int height);
KELM_API kelStatus kelmAdd_mm_64f(const kel64f* src1, int src1RowStride, int src1ElemStride, const kel64f* src2, int src2RowStride, int
    src2ElemStride, kel64f* dst, int dstRowStride, int dstElemStride, int width, int height);
KELM_API kelStatus kelmAdd_mm_64f_P(const kel64f* const* src1, int src1ObjShift, const kel64f* const* src2, int src2ObjShift, kel64f* const*
    dst, int dstObjShift, int width, int height);

KELM_API kelStatus kelmAdd_tm_32f(const kel32f* src1, int src1RowStride, int src1ElemStride, const kel32f* src2, int src2RowStride, int
    src2ElemStride, kel32f* dst, int dstRowStride, int dstElemStride, int width, int height);
KELM_API kelStatus kelmAdd_tm_32f_P(const kel32f* const* src1, int src1ObjShift, const kel32f* const* src2, int src2ObjShift, kel32f* const*
    dst, int dstObjShift, int width, int height);
KELM_API kelStatus kelmAdd_tm_64f(const kel64f* src1, int src1RowStride, int src1ElemStride, const kel64f* src2, int src2RowStride, int
    src2ElemStride, kel64f* dst, int dstRowStride, int dstElemStride, int width, int height);
KELM_API kelStatus kelmAdd_tm_64f_P(const kel64f* const* src1, int src1ObjShift, const kel64f* const* src2, int src2ObjShift, kel64f* const*
    dst, int dstObjShift, int width, int height);

KELM_API kelStatus kelmAdd_tt_32f(const kel32f* src1, int src1RowStride, int src1ElemStride, const kel32f* src2, int src2RowStride, int
    src2ElemStride, kel32f* dst, int dstRowStride, int dstElemStride, int width, int height);
KELM_API kelStatus kelmAdd_tt_32f_P(const kel32f* const* src1, int src1ObjShift, const kel32f* const* src2, int src2ObjShift, kel32f* const*
    dst, int dstObjShift, int width, int height);
KELM_API kelStatus kelmAdd_tt_64f(const kel64f* src1, int src1RowStride, int src1ElemStride, const kel64f* src2, int src2RowStride, int
    src2ElemStride, kel64f* dst, int dstRowStride, int dstElemStride, int width, int height);
KELM_API kelStatus kelmAdd_tt_64f_P(const kel64f* const* src1, int src1ObjShift, const kel64f* const* src2, int src2ObjShift, kel64f* const*
    dst, int dstObjShift, int width, int height);

KELM_API kelStatus kelmAdd_vav_32f(const kel32f* src1, int src1ObjStride, int src1ElemStride, const kel32f* src2, int src2ElemStride, kel32f*
    dst, int dstObjStride, int dstElemStride, int len, int count);
KELM_API kelStatus kelmAdd_vav_32f_P(const kel32f* const* src1, int src1ObjShift, int src1ObjStride, const kel32f* const* src2, int
    src2ObjShift, kel32f* const* dst, int dstObjShift, int dstObjStride, int len, int count);
KELM_API kelStatus kelmAdd_vav_32f_L(const kel32f* const* src1, int src1ObjShift, int src1ElemStride, const kel32f* src2, int src2ElemStride,
    kel32f* const* dst, int dstObjShift, int dstElemStride, int len, int count);
KELM_API kelStatus kelmAdd_vav_64f(const kel64f* src1, int src1ObjStride, int src1ElemStride, const kel64f* src2, int src2ElemStride, kel64f*
    dst, int dstObjStride, int dstElemStride, int len, int count);
KELM_API kelStatus kelmAdd_vav_64f_P(const kel64f* const* src1, int src1ObjShift, int src1ObjStride, const kel64f* const* src2, int
    src2ObjShift, kel64f* const* dst, int dstObjShift, int dstObjStride, int len, int count);
KELM_API kelStatus kelmAdd_vav_64f_L(const kel64f* const* src1, int src1ObjShift, int src1ElemStride, const kel64f* src2, int src2ElemStride,
    kel64f* const* dst, int dstObjShift, int dstElemStride, int len, int count);

KELM_API kelStatus kelmAdd_vava_32f(const kel32f* src1, int src1ObjStride, int src1ElemStride, const kel32f* src2, int src2ObjStride, int
    src2ElemStride, kel32f* dst, int dstObjStride, int dstElemStride, int len, int count);
KELM_API kelStatus kelmAdd_vava_32f_P(const kel32f* const* src1, int src1ObjShift, int src1ObjStride, const kel32f* const* src2, int
    src2ObjShift, int src2ObjStride, kel32f* const* dst, int dstObjShift, int dstObjStride, int len, int
    count);
KELM_API kelStatus kelmAdd_vava_32f_L(const kel32f* const* src1, int src1ObjShift, int src1ElemStride, const kel32f* const* src2, int
    src2ObjShift, int src2ElemStride, kel32f* const* dst, int dstObjShift, int dstElemStride, int len, int
    count);
KELM_API kelStatus kelmAdd_vava_64f(const kel64f* src1, int src1ObjStride, int src1ElemStride, const kel64f* src2, int src2ObjStride, int
    src2ElemStride, kel64f* dst, int dstObjStride, int dstElemStride, int len, int count);
KELM_API kelStatus kelmAdd_vava_64f_P(const kel64f* const* src1, int src1ObjShift, int src1ObjStride, const kel64f* const* src2, int
    src2ObjShift, int src2ObjStride, kel64f* const* dst, int dstObjShift, int dstObjStride, int len, int
    count);
KELM_API kelStatus kelmAdd_vava_64f_L(const kel64f* const* src1, int src1ObjShift, int src1ElemStride, const kel64f* const* src2, int
    src2ObjShift, int src2ElemStride, kel64f* const* dst, int dstObjShift, int dstElemStride, int len, int
    count);

KELM_API kelStatus kelmAdd_vac_32f(const kel32f* src, int srcObjStride, int srcElemStride, kel32f val, kel32f* dst, int dstObjStride, int
    dstElemStride, int len, int count);
KELM_API kelStatus kelmAdd_vac_32f_P(const kel32f* const* src, int srcObjShift, int srcObjStride, kel32f val, kel32f* const* dst, int
    dstObjShift, int dstObjStride, int len, int count);
KELM_API kelStatus kelmAdd_vac_32f_L(const kel32f* const* src, int srcObjShift, int srcElemStride, kel32f val, kel32f* const* dst, int
    dstObjShift, int dstElemStride, int len, int count);
KELM_API kelStatus kelmAdd_vac_64f(const kel64f* src, int srcObjStride, int srcElemStride, kel64f val, kel64f* dst, int dstObjStride, int
    dstElemStride, int len, int count);
KELM_API kelStatus kelmAdd_vac_64f_P(const kel64f* const* src, int srcObjShift, int srcObjStride, kel64f val, kel64f* const* dst, int
    dstObjShift, int dstObjStride, int len, int count);
KELM_API kelStatus kelmAdd_vac_64f_L(const kel64f* const* src, int srcObjShift, int srcElemStride, kel64f val, kel64f* const* dst, int
    dstObjShift, int dstElemStride, int len, int count);

KELM_API kelStatus kelmAdd_vaca_32f(const kel32f* src, int srcObjStride, int srcElemStride, const kel32f* val, int valStride, kel32f* dst, int
    dstObjStride, int dstElemStride, int len, int count);
KELM_API kelStatus kelmAdd_vaca_32f_P(const kel32f* const* src, int srcObjShift, int srcObjStride, const kel32f* val, int valStride, kel32f*
    const* dst, int dstObjShift, int dstObjStride, int len, int count);
KELM_API kelStatus kelmAdd_vaca_32f_L(const kel32f* const* src, int srcObjShift, int srcElemStride, const kel32f* const* val, int valShift,
    kel32f* const* dst, int dstObjShift, int dstElemStride, int len, int count);
KELM_API kelStatus kelmAdd_vaca_64f(const kel64f* src, int srcObjStride, int srcElemStride, const kel64f* val, int valStride, kel64f* dst, int
    dstObjStride, int dstElemStride, int len, int count);
KELM_API kelStatus kelmAdd_vaca_64f_P(const kel64f* const* src, int srcObjShift, int srcObjStride, const kel64f* val, int valStride, kel64f*
    const* dst, int dstObjShift, int dstObjStride, int len, int count);
KELM_API kelStatus kelmAdd_vaca_64f_L(const kel64f* const* src, int srcObjShift, int srcElemStride, const kel64f* const* val, int valShift,
    kel64f* const* dst, int dstObjShift, int dstElemStride, int len, int count);

KELM_API kelStatus kelmAdd_vca_32f(const kel32f* src, int srcElemStride, const kel32f* val, int valStride, kel32f* dst, int dstObjStride, int
    dstElemStride, int len, int count);
KELM_API kelStatus kelmAdd_vca_32f_P(const kel32f* const* src, int srcObjShift, const kel32f* val, int valStride, kel32f* const* dst, int
    dstObjShift, int dstObjStride, int len, int count);
KELM_API kelStatus kelmAdd_vca_32f_L(const kel32f* src, int srcElemStride, const kel32f* const* val, int valShift, kel32f* const* dst, int
    dstObjShift, int dstElemStride, int len, int count);
KELM_API kelStatus kelmAdd_vca_64f(const kel64f* src, int srcElemStride, const kel64f* val, int valStride, kel64f* dst, int dstObjStride, int
    dstElemStride, int len, int count);
KELM_API kelStatus kelmAdd_vca_64f_P(const kel64f* const* src, int srcObjShift, const kel64f* val, int valStride, kel64f* const* dst, int
    dstObjShift, int dstObjStride, int len, int count);
KELM_API kelStatus kelmAdd_vca_64f_L(const kel64f* src, int srcElemStride, const kel64f* const* val, int valShift, kel64f* const* dst, int
    dstObjShift, int dstElemStride, int len, int count);

KELM_API kelStatus kelmAdd_mam_32f(const kel32f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, const kel32f* src2, int
    src2RowStride, int src2ElemStride, kel32f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int
    width, int height, int count);
KELM_API kelStatus kelmAdd_mam_32f_P(const kel32f* const* src1, int src1ObjShift, int src1ObjStride, const kel32f* const* src2, int
    src2ObjShift, kel32f* const* dst, int dstObjShift, int dstObjStride, int width, int height, int count);
KELM_API kelStatus kelmAdd_mam_32f_L(const kel32f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, const kel32f* src2,
    int src2RowStride, int src2ElemStride, kel32f* const* dst, int dstObjShift, int dstRowStride, int
    dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmAdd_mam_64f(const kel64f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, const kel64f* src2, int
    src2RowStride, int src2ElemStride, kel64f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int
    width, int height, int count);
KELM_API kelStatus kelmAdd_mam_64f_P(const kel64f* const* src1, int src1ObjShift, int src1ObjStride, const kel64f* const* src2, int
    src2ObjShift, kel64f* const* dst, int dstObjShift, int dstObjStride, int width, int height, int count);
KELM_API kelStatus kelmAdd_mam_64f_L(const kel64f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, const kel64f* src2,
    int src2RowStride, int src2ElemStride, kel64f* const* dst, int dstObjShift, int dstRowStride, int
    dstElemStride, int width, int height, int count);

KELM_API kelStatus kelmAdd_mama_32f(const kel32f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, const kel32f* src2, int
    src2ObjStride, int src2RowStride, int src2ElemStride, kel32f* dst, int dstObjStride, int dstRowStride, int
    dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmAdd_mama_32f_P(const kel32f* const* src1, int src1ObjShift, int src1ObjStride, const kel32f* const* src2, int
    src2ObjShift, int src2ObjStride, kel32f* const* dst, int dstObjShift, int dstObjStride, int width, int
    height, int count);
KELM_API kelStatus kelmAdd_mama_32f_L(const kel32f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, const kel32f* const*
    src2, int src2ObjShift, int src2RowStride, int src2ElemStride, kel32f* const* dst, int dstObjShift, int
    dstRowStride, int dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmAdd_mama_64f(const kel64f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, const kel64f* src2, int
    src2ObjStride, int src2RowStride, int src2ElemStride, kel64f* dst, int dstObjStride, int dstRowStride, int
    dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmAdd_mama_64f_P(const kel64f* const* src1, int src1ObjShift, int src1ObjStride, const kel64f* const* src2, int
    src2ObjShift, int src2ObjStride, kel64f* const* dst, int dstObjShift, int dstObjStride, int width, int
    height, int count);
KELM_API kelStatus kelmAdd_mama_64f_L(const kel64f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, const kel64f* const*
    src2, int src2ObjShift, int src2RowStride, int src2ElemStride, kel64f* const* dst, int dstObjShift, int
    dstRowStride, int dstElemStride, int width, int height, int count);

KELM_API kelStatus kelmAdd_mat_32f(const kel32f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, const kel32f* src2, int
    src2RowStride, int src2ElemStride, kel32f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int
    width, int height, int count);
KELM_API kelStatus kelmAdd_mat_32f_P(const kel32f* const* src1, int src1ObjShift, int src1ObjStride, const kel32f* const* src2, int
    src2ObjShift, kel32f* const* dst, int dstObjShift, int dstObjStride, int width, int height, int count);
KELM_API kelStatus kelmAdd_mat_32f_L(const kel32f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, const kel32f* src2,
    int src2RowStride, int src2ElemStride, kel32f* const* dst, int dstObjShift, int dstRowStride, int
    dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmAdd_mat_64f(const kel64f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, const kel64f* src2, int
    src2RowStride, int src2ElemStride, kel64f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int
    width, int height, int count);
KELM_API kelStatus kelmAdd_mat_64f_P(const kel64f* const* src1, int src1ObjShift, int src1ObjStride, const kel64f* const* src2, int
    src2ObjShift, kel64f* const* dst, int dstObjShift, int dstObjStride, int width, int height, int count);
KELM_API kelStatus kelmAdd_mat_64f_L(const kel64f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, const kel64f* src2,
    int src2RowStride, int src2ElemStride, kel64f* const* dst, int dstObjShift, int dstRowStride, int
    dstElemStride, int width, int height, int count);

KELM_API kelStatus kelmAdd_tam_32f(const kel32f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, const kel32f* src2, int
    src2RowStride, int src2ElemStride, kel32f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int
    width, int height, int count);
KELM_API kelStatus kelmAdd_tam_32f_P(const kel32f* const* src1, int src1ObjShift, int src1ObjStride, const kel32f* const* src2, int
    src2ObjShift, kel32f* const* dst, int dstObjShift, int dstObjStride, int width, int height, int count);
KELM_API kelStatus kelmAdd_tam_32f_L(const kel32f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, const kel32f* src2,
    int src2RowStride, int src2ElemStride, kel32f* const* dst, int dstObjShift, int dstRowStride, int
    dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmAdd_tam_64f(const kel64f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, const kel64f* src2, int
    src2RowStride, int src2ElemStride, kel64f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int
    width, int height, int count);
KELM_API kelStatus kelmAdd_tam_64f_P(const kel64f* const* src1, int src1ObjShift, int src1ObjStride, const kel64f* const* src2, int
    src2ObjShift, kel64f* const* dst, int dstObjShift, int dstObjStride, int width, int height, int count);
KELM_API kelStatus kelmAdd_tam_64f_L(const kel64f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, const kel64f* src2,
    int src2RowStride, int src2ElemStride, kel64f* const* dst, int dstObjShift, int dstRowStride, int
    dstElemStride, int width, int height, int count);

KELM_API kelStatus kelmAdd_tama_32f(const kel32f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, const kel32f* src2, int
    src2ObjStride, int src2RowStride, int src2ElemStride, kel32f* dst, int dstObjStride, int dstRowStride, int
    dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmAdd_tama_32f_P(const kel32f* const* src1, int src1ObjShift, int src1ObjStride, const kel32f* const* src2, int
    src2ObjShift, int src2ObjStride, kel32f* const* dst, int dstObjShift, int dstObjStride, int width, int
    height, int count);
KELM_API kelStatus kelmAdd_tama_32f_L(const kel32f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, const kel32f* const*
    src2, int src2ObjShift, int src2RowStride, int src2ElemStride, kel32f* const* dst, int dstObjShift, int
    dstRowStride, int dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmAdd_tama_64f(const kel64f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, const kel64f* src2, int
    src2ObjStride, int src2RowStride, int src2ElemStride, kel64f* dst, int dstObjStride, int dstRowStride, int
    dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmAdd_tama_64f_P(const kel64f* const* src1, int src1ObjShift, int src1ObjStride, const kel64f* const* src2, int
    src2ObjShift, int src2ObjStride, kel64f* const* dst, int dstObjShift, int dstObjStride, int width, int
    height, int count);
KELM_API kelStatus kelmAdd_tama_64f_L(const kel64f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, const kel64f* const*
    src2, int src2ObjShift, int src2RowStride, int src2ElemStride, kel64f* const* dst, int dstObjShift, int
    dstRowStride, int dstElemStride, int width, int height, int count);

KELM_API kelStatus kelmAdd_tat_32f(const kel32f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, const kel32f* src2, int
    src2RowStride, int src2ElemStride, kel32f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int
    width, int height, int count);
KELM_API kelStatus kelmAdd_tat_32f_P(const kel32f* const* src1, int src1ObjShift, int src1ObjStride, const kel32f* const* src2, int
    src2ObjShift, kel32f* const* dst, int dstObjShift, int dstObjStride, int width, int height, int count);
KELM_API kelStatus kelmAdd_tat_32f_L(const kel32f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, const kel32f* src2,
    int src2RowStride, int src2ElemStride, kel32f* const* dst, int dstObjShift, int dstRowStride, int
    dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmAdd_tat_64f(const kel64f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, const kel64f* src2, int
    src2RowStride, int src2ElemStride, kel64f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int
    width, int height, int count);
KELM_API kelStatus kelmAdd_tat_64f_P(const kel64f* const* src1, int src1ObjShift, int src1ObjStride, const kel64f* const* src2, int
    src2ObjShift, kel64f* const* dst, int dstObjShift, int dstObjStride, int width, int height, int count);
KELM_API kelStatus kelmAdd_tat_64f_L(const kel64f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, const kel64f* src2,
    int src2RowStride, int src2ElemStride, kel64f* const* dst, int dstObjShift, int dstRowStride, int
    dstElemStride, int width, int height, int count);

KELM_API kelStatus kelmAdd_tata_32f(const kel32f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, const kel32f* src2, int
    src2ObjStride, int src2RowStride, int src2ElemStride, kel32f* dst, int dstObjStride, int dstRowStride, int
    dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmAdd_tata_32f_P(const kel32f* const* src1, int src1ObjShift, int src1ObjStride, const kel32f* const* src2, int
    src2ObjShift, int src2ObjStride, kel32f* const* dst, int dstObjShift, int dstObjStride, int width, int
    height, int count);
KELM_API kelStatus kelmAdd_tata_32f_L(const kel32f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, const kel32f* const*
    src2, int src2ObjShift, int src2RowStride, int src2ElemStride, kel32f* const* dst, int dstObjShift, int
    dstRowStride, int dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmAdd_tata_64f(const kel64f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, const kel64f* src2, int
    src2ObjStride, int src2RowStride, int src2ElemStride, kel64f* dst, int dstObjStride, int dstRowStride, int
    dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmAdd_tata_64f_P(const kel64f* const* src1, int src1ObjShift, int src1ObjStride, const kel64f* const* src2, int
    src2ObjShift, int src2ObjStride, kel64f* const* dst, int dstObjShift, int dstObjStride, int width, int
    height, int count);
KELM_API kelStatus kelmAdd_tata_64f_L(const kel64f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, const kel64f* const*
    src2, int src2ObjShift, int src2RowStride, int src2ElemStride, kel64f* const* dst, int dstObjShift, int
    dstRowStride, int dstElemStride, int width, int height, int count);

KELM_API kelStatus kelmSub_vv_32f(const kel32f* src1, int src1ElemStride, const kel32f* src2, int src2ElemStride, kel32f* dst, int
    dstElemStride, int len);
KELM_API kelStatus kelmSub_vv_32f_P(const kel32f* const* src1, int src1ObjShift, const kel32f* const* src2, int src2ObjShift, kel32f* const*
    dst, int dstObjShift, int len);
KELM_API kelStatus kelmSub_vv_64f(const kel64f* src1, int src1ElemStride, const kel64f* src2, int src2ElemStride, kel64f* dst, int
    dstElemStride, int len);
KELM_API kelStatus kelmSub_vv_64f_P(const kel64f* const* src1, int src1ObjShift, const kel64f* const* src2, int src2ObjShift, kel64f* const*
    dst, int dstObjShift, int len);

KELM_API kelStatus kelmSub_vc_32f(const kel32f* src, int srcElemStride, kel32f val, kel32f* dst, int dstElemStride, int len);
KELM_API kelStatus kelmSub_vc_32f_P(const kel32f* const* src, int srcObjShift, kel32f val, kel32f* const* dst, int dstObjShift, int len);
KELM_API kelStatus kelmSub_vc_64f(const kel64f* src, int srcElemStride, kel64f val, kel64f* dst, int dstElemStride, int len);
KELM_API kelStatus kelmSub_vc_64f_P(const kel64f* const* src, int srcObjShift, kel64f val, kel64f* const* dst, int dstObjShift, int len);

KELM_API kelStatus kelmSub_cv_32f(const kel32f* src, int srcElemStride, kel32f val, kel32f* dst, int dstElemStride, int len);
KELM_API kelStatus kelmSub_cv_32f_P(const kel32f* const* src, int srcObjShift, kel32f val, kel32f* const* dst, int dstObjShift, int len);
KELM_API kelStatus kelmSub_cv_64f(const kel64f* src, int srcElemStride, kel64f val, kel64f* dst, int dstElemStride, int len);
KELM_API kelStatus kelmSub_cv_64f_P(const kel64f* const* src, int srcObjShift, kel64f val, kel64f* const* dst, int dstObjShift, int len);

KELM_API kelStatus kelmSub_mm_32f(const kel32f* src1, int src1RowStride, int src1ElemStride, const kel32f* src2, int src2RowStride, int
    src2ElemStride, kel32f* dst, int dstRowStride, int dstElemStride, int width, int height);
KELM_API kelStatus kelmSub_mm_32f_P(const kel32f* const* src1, int src1ObjShift, const kel32f* const* src2, int src2ObjShift, kel32f* const*
    dst, int dstObjShift, int width, int height);
KELM_API kelStatus kelmSub_mm_64f(const kel64f* src1, int src1RowStride, int src1ElemStride, const kel64f* src2, int src2RowStride, int
    src2ElemStride, kel64f* dst, int dstRowStride, int dstElemStride, int width, int height);
KELM_API kelStatus kelmSub_mm_64f_P(const kel64f* const* src1, int src1ObjShift, const kel64f* const* src2, int src2ObjShift, kel64f* const*
    dst, int dstObjShift, int width, int height);

KELM_API kelStatus kelmSub_mt_32f(const kel32f* src1, int src1RowStride, int src1ElemStride, const kel32f* src2, int src2RowStride, int
    src2ElemStride, kel32f* dst, int dstRowStride, int dstElemStride, int width, int height);
KELM_API kelStatus kelmSub_mt_32f_P(const kel32f* const* src1, int src1ObjShift, const kel32f* const* src2, int src2ObjShift, kel32f* const*
    dst, int dstObjShift, int width, int height);
KELM_API kelStatus kelmSub_mt_64f(const kel64f* src1, int src1RowStride, int src1ElemStride, const kel64f* src2, int src2RowStride, int
    src2ElemStride, kel64f* dst, int dstRowStride, int dstElemStride, int width, int height);
KELM_API kelStatus kelmSub_mt_64f_P(const kel64f* const* src1, int src1ObjShift, const kel64f* const* src2, int src2ObjShift, kel64f* const*
    dst, int dstObjShift, int width, int height);

KELM_API kelStatus kelmSub_tm_32f(const kel32f* src1, int src1RowStride, int src1ElemStride, const kel32f* src2, int src2RowStride, int
    src2ElemStride, kel32f* dst, int dstRowStride, int dstElemStride, int width, int height);
KELM_API kelStatus kelmSub_tm_32f_P(const kel32f* const* src1, int src1ObjShift, const kel32f* const* src2, int src2ObjShift, kel32f* const*
    dst, int dstObjShift, int width, int height);
KELM_API kelStatus kelmSub_tm_64f(const kel64f* src1, int src1RowStride, int src1ElemStride, const kel64f* src2, int src2RowStride, int
    src2ElemStride, kel64f* dst, int dstRowStride, int dstElemStride, int width, int height);
KELM_API kelStatus kelmSub_tm_64f_P(const kel64f* const* src1, int src1ObjShift, const kel64f* const* src2, int src2ObjShift, kel64f* const*
    dst, int dstObjShift, int width, int height);

KELM_API kelStatus kelmSub_tt_32f(const kel32f* src1, int src1RowStride, int src1ElemStride, const kel32f* src2, int src2RowStride, int
    src2ElemStride, kel32f* dst, int dstRowStride, int dstElemStride, int width, int height);
KELM_API kelStatus kelmSub_tt_32f_P(const kel32f* const* src1, int src1ObjShift, const kel32f* const* src2, int src2ObjShift, kel32f* const*
    dst, int dstObjShift, int width, int height);
KELM_API kelStatus kelmSub_tt_64f(const kel64f* src1, int src1RowStride, int src1ElemStride, const kel64f* src2, int src2RowStride, int
    src2ElemStride, kel64f* dst, int dstRowStride, int dstElemStride, int width, int height);
KELM_API kelStatus kelmSub_tt_64f_P(const kel64f* const* src1, int src1ObjShift, const kel64f* const* src2, int src2ObjShift, kel64f* const*
    dst, int dstObjShift, int width, int height);

KELM_API kelStatus kelmSub_vav_32f(const kel32f* src1, int src1ObjStride, int src1ElemStride, const kel32f* src2, int src2ElemStride, kel32f*
    dst, int dstObjStride, int dstElemStride, int len, int count);
KELM_API kelStatus kelmSub_vav_32f_P(const kel32f* const* src1, int src1ObjShift, int src1ObjStride, const kel32f* const* src2, int
    src2ObjShift, kel32f* const* dst, int dstObjShift, int dstObjStride, int len, int count);
KELM_API kelStatus kelmSub_vav_32f_L(const kel32f* const* src1, int src1ObjShift, int src1ElemStride, const kel32f* src2, int src2ElemStride,
    kel32f* const* dst, int dstObjShift, int dstElemStride, int len, int count);
KELM_API kelStatus kelmSub_vav_64f(const kel64f* src1, int src1ObjStride, int src1ElemStride, const kel64f* src2, int src2ElemStride, kel64f*
    dst, int dstObjStride, int dstElemStride, int len, int count);
KELM_API kelStatus kelmSub_vav_64f_P(const kel64f* const* src1, int src1ObjShift, int src1ObjStride, const kel64f* const* src2, int
    src2ObjShift, kel64f* const* dst, int dstObjShift, int dstObjStride, int len, int count);
KELM_API kelStatus kelmSub_vav_64f_L(const kel64f* const* src1, int src1ObjShift, int src1ElemStride, const kel64f* src2, int src2ElemStride,
    kel64f* const* dst, int dstObjShift, int dstElemStride, int len, int count);

KELM_API kelStatus kelmSub_vva_32f(const kel32f* src1, int src1ElemStride, const kel32f* src2, int src2ObjStride, int src2ElemStride, kel32f*
    dst, int dstObjStride, int dstElemStride, int len, int count);
KELM_API kelStatus kelmSub_vva_32f_P(const kel32f* const* src1, int src1ObjShift, const kel32f* const* src2, int src2ObjShift, int
    src2ObjStride, kel32f* const* dst, int dstObjShift, int dstObjStride, int len, int count);
KELM_API kelStatus kelmSub_vva_32f_L(const kel32f* src1, int src1ElemStride, const kel32f* const* src2, int src2ObjShift, int src2ElemStride,
    kel32f* const* dst, int dstObjShift, int dstElemStride, int len, int count);
KELM_API kelStatus kelmSub_vva_64f(const kel64f* src1, int src1ElemStride, const kel64f* src2, int src2ObjStride, int src2ElemStride, kel64f*
    dst, int dstObjStride, int dstElemStride, int len, int count);
KELM_API kelStatus kelmSub_vva_64f_P(const kel64f* const* src1, int src1ObjShift, const kel64f* const* src2, int src2ObjShift, int
    src2ObjStride, kel64f* const* dst, int dstObjShift, int dstObjStride, int len, int count);
KELM_API kelStatus kelmSub_vva_64f_L(const kel64f* src1, int src1ElemStride, const kel64f* const* src2, int src2ObjShift, int src2ElemStride,
    kel64f* const* dst, int dstObjShift, int dstElemStride, int len, int count);

KELM_API kelStatus kelmSub_vava_32f(const kel32f* src1, int src1ObjStride, int src1ElemStride, const kel32f* src2, int src2ObjStride, int
    src2ElemStride, kel32f* dst, int dstObjStride, int dstElemStride, int len, int count);
KELM_API kelStatus kelmSub_vava_32f_P(const kel32f* const* src1, int src1ObjShift, int src1ObjStride, const kel32f* const* src2, int
    src2ObjShift, int src2ObjStride, kel32f* const* dst, int dstObjShift, int dstObjStride, int len, int
    count);
KELM_API kelStatus kelmSub_vava_32f_L(const kel32f* const* src1, int src1ObjShift, int src1ElemStride, const kel32f* const* src2, int
    src2ObjShift, int src2ElemStride, kel32f* const* dst, int dstObjShift, int dstElemStride, int len, int
    count);
KELM_API kelStatus kelmSub_vava_64f(const kel64f* src1, int src1ObjStride, int src1ElemStride, const kel64f* src2, int src2ObjStride, int
    src2ElemStride, kel64f* dst, int dstObjStride, int dstElemStride, int len, int count);
KELM_API kelStatus kelmSub_vava_64f_P(const kel64f* const* src1, int src1ObjShift, int src1ObjStride, const kel64f* const* src2, int
    src2ObjShift, int src2ObjStride, kel64f* const* dst, int dstObjShift, int dstObjStride, int len, int
    count);
KELM_API kelStatus kelmSub_vava_64f_L(const kel64f* const* src1, int src1ObjShift, int src1ElemStride, const kel64f* const* src2, int
    src2ObjShift, int src2ElemStride, kel64f* const* dst, int dstObjShift, int dstElemStride, int len, int
    count);

KELM_API kelStatus kelmSub_vac_32f(const kel32f* src, int srcObjStride, int srcElemStride, kel32f val, kel32f* dst, int dstObjStride, int
    dstElemStride, int len, int count);
KELM_API kelStatus kelmSub_vac_32f_P(const kel32f* const* src, int srcObjShift, int srcObjStride, kel32f val, kel32f* const* dst, int
    dstObjShift, int dstObjStride, int len, int count);
KELM_API kelStatus kelmSub_vac_32f_L(const kel32f* const* src, int srcObjShift, int srcElemStride, kel32f val, kel32f* const* dst, int
    dstObjShift, int dstElemStride, int len, int count);
KELM_API kelStatus kelmSub_vac_64f(const kel64f* src, int srcObjStride, int srcElemStride, kel64f val, kel64f* dst, int dstObjStride, int
    dstElemStride, int len, int count);
KELM_API kelStatus kelmSub_vac_64f_P(const kel64f* const* src, int srcObjShift, int srcObjStride, kel64f val, kel64f* const* dst, int
    dstObjShift, int dstObjStride, int len, int count);
KELM_API kelStatus kelmSub_vac_64f_L(const kel64f* const* src, int srcObjShift, int srcElemStride, kel64f val, kel64f* const* dst, int
    dstObjShift, int dstElemStride, int len, int count);

KELM_API kelStatus kelmSub_vaca_32f(const kel32f* src, int srcObjStride, int srcElemStride, const kel32f* val, int valStride, kel32f* dst, int
    dstObjStride, int dstElemStride, int len, int count);
KELM_API kelStatus kelmSub_vaca_32f_P(const kel32f* const* src, int srcObjShift, int srcObjStride, const kel32f* val, int valStride, kel32f*
    const* dst, int dstObjShift, int dstObjStride, int len, int count);
KELM_API kelStatus kelmSub_vaca_32f_L(const kel32f* const* src, int srcObjShift, int srcElemStride, const kel32f* const* val, int valShift,
    kel32f* const* dst, int dstObjShift, int dstElemStride, int len, int count);
KELM_API kelStatus kelmSub_vaca_64f(const kel64f* src, int srcObjStride, int srcElemStride, const kel64f* val, int valStride, kel64f* dst, int
    dstObjStride, int dstElemStride, int len, int count);
KELM_API kelStatus kelmSub_vaca_64f_P(const kel64f* const* src, int srcObjShift, int srcObjStride, const kel64f* val, int valStride, kel64f*
    const* dst, int dstObjShift, int dstObjStride, int len, int count);
KELM_API kelStatus kelmSub_vaca_64f_L(const kel64f* const* src, int srcObjShift, int srcElemStride, const kel64f* const* val, int valShift,
    kel64f* const* dst, int dstObjShift, int dstElemStride, int len, int count);

KELM_API kelStatus kelmSub_vca_32f(const kel32f* src, int srcElemStride, const kel32f* val, int valStride, kel32f* dst, int dstObjStride, int
    dstElemStride, int len, int count);
KELM_API kelStatus kelmSub_vca_32f_P(const kel32f* const* src, int srcObjShift, const kel32f* val, int valStride, kel32f* const* dst, int
    dstObjShift, int dstObjStride, int len, int count);
KELM_API kelStatus kelmSub_vca_32f_L(const kel32f* src, int srcElemStride, const kel32f* const* val, int valShift, kel32f* const* dst, int
    dstObjShift, int dstElemStride, int len, int count);
KELM_API kelStatus kelmSub_vca_64f(const kel64f* src, int srcElemStride, const kel64f* val, int valStride, kel64f* dst, int dstObjStride, int
    dstElemStride, int len, int count);
KELM_API kelStatus kelmSub_vca_64f_P(const kel64f* const* src, int srcObjShift, const kel64f* val, int valStride, kel64f* const* dst, int
    dstObjShift, int dstObjStride, int len, int count);
KELM_API kelStatus kelmSub_vca_64f_L(const kel64f* src, int srcElemStride, const kel64f* const* val, int valShift, kel64f* const* dst, int
    dstObjShift, int dstElemStride, int len, int count);

KELM_API kelStatus kelmSub_cav_32f(const kel32f* src, int srcElemStride, const kel32f* val, int valStride, kel32f* dst, int dstObjStride, int
    dstElemStride, int len, int count);
KELM_API kelStatus kelmSub_cav_32f_P(const kel32f* const* src, int srcObjShift, const kel32f* val, int valStride, kel32f* const* dst, int
    dstObjShift, int dstObjStride, int len, int count);
KELM_API kelStatus kelmSub_cav_32f_L(const kel32f* src, int srcElemStride, const kel32f* const* val, int valShift, kel32f* const* dst, int
    dstObjShift, int dstElemStride, int len, int count);
KELM_API kelStatus kelmSub_cav_64f(const kel64f* src, int srcElemStride, const kel64f* val, int valStride, kel64f* dst, int dstObjStride, int
    dstElemStride, int len, int count);
KELM_API kelStatus kelmSub_cav_64f_P(const kel64f* const* src, int srcObjShift, const kel64f* val, int valStride, kel64f* const* dst, int
    dstObjShift, int dstObjStride, int len, int count);
KELM_API kelStatus kelmSub_cav_64f_L(const kel64f* src, int srcElemStride, const kel64f* const* val, int valShift, kel64f* const* dst, int
    dstObjShift, int dstElemStride, int len, int count);

KELM_API kelStatus kelmSub_cva_32f(const kel32f* src, int srcObjStride, int srcElemStride, kel32f val, kel32f* dst, int dstObjStride, int
    dstElemStride, int len, int count);
KELM_API kelStatus kelmSub_cva_32f_P(const kel32f* const* src, int srcObjShift, int srcObjStride, kel32f val, kel32f* const* dst, int
    dstObjShift, int dstObjStride, int len, int count);
KELM_API kelStatus kelmSub_cva_32f_L(const kel32f* const* src, int srcObjShift, int srcElemStride, kel32f val, kel32f* const* dst, int
    dstObjShift, int dstElemStride, int len, int count);
KELM_API kelStatus kelmSub_cva_64f(const kel64f* src, int srcObjStride, int srcElemStride, kel64f val, kel64f* dst, int dstObjStride, int
    dstElemStride, int len, int count);
KELM_API kelStatus kelmSub_cva_64f_P(const kel64f* const* src, int srcObjShift, int srcObjStride, kel64f val, kel64f* const* dst, int
    dstObjShift, int dstObjStride, int len, int count);
KELM_API kelStatus kelmSub_cva_64f_L(const kel64f* const* src, int srcObjShift, int srcElemStride, kel64f val, kel64f* const* dst, int
    dstObjShift, int dstElemStride, int len, int count);

KELM_API kelStatus kelmSub_cava_32f(const kel32f* src, int srcObjStride, int srcElemStride, const kel32f* val, int valStride, kel32f* dst, int
    dstObjStride, int dstElemStride, int len, int count);
KELM_API kelStatus kelmSub_cava_32f_P(const kel32f* const* src, int srcObjShift, int srcObjStride, const kel32f* val, int valStride, kel32f*
    const* dst, int dstObjShift, int dstObjStride, int len, int count);
KELM_API kelStatus kelmSub_cava_32f_L(const kel32f* const* src, int srcObjShift, int srcElemStride, const kel32f* const* val, int valShift,
    kel32f* const* dst, int dstObjShift, int dstElemStride, int len, int count);
KELM_API kelStatus kelmSub_cava_64f(const kel64f* src, int srcObjStride, int srcElemStride, const kel64f* val, int valStride, kel64f* dst, int
    dstObjStride, int dstElemStride, int len, int count);
KELM_API kelStatus kelmSub_cava_64f_P(const kel64f* const* src, int srcObjShift, int srcObjStride, const kel64f* val, int valStride, kel64f*
    const* dst, int dstObjShift, int dstObjStride, int len, int count);
KELM_API kelStatus kelmSub_cava_64f_L(const kel64f* const* src, int srcObjShift, int srcElemStride, const kel64f* const* val, int valShift,
    kel64f* const* dst, int dstObjShift, int dstElemStride, int len, int count);

KELM_API kelStatus kelmSub_mam_32f(const kel32f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, const kel32f* src2, int
    src2RowStride, int src2ElemStride, kel32f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int
    width, int height, int count);
KELM_API kelStatus kelmSub_mam_32f_P(const kel32f* const* src1, int src1ObjShift, int src1ObjStride, const kel32f* const* src2, int
    src2ObjShift, kel32f* const* dst, int dstObjShift, int dstObjStride, int width, int height, int count);
KELM_API kelStatus kelmSub_mam_32f_L(const kel32f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, const kel32f* src2,
    int src2RowStride, int src2ElemStride, kel32f* const* dst, int dstObjShift, int dstRowStride, int
    dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmSub_mam_64f(const kel64f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, const kel64f* src2, int
    src2RowStride, int src2ElemStride, kel64f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int
    width, int height, int count);
KELM_API kelStatus kelmSub_mam_64f_P(const kel64f* const* src1, int src1ObjShift, int src1ObjStride, const kel64f* const* src2, int
    src2ObjShift, kel64f* const* dst, int dstObjShift, int dstObjStride, int width, int height, int count);
KELM_API kelStatus kelmSub_mam_64f_L(const kel64f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, const kel64f* src2,
    int src2RowStride, int src2ElemStride, kel64f* const* dst, int dstObjShift, int dstRowStride, int
    dstElemStride, int width, int height, int count);

KELM_API kelStatus kelmSub_mma_32f(const kel32f* src1, int src1RowStride, int src1ElemStride, const kel32f* src2, int src2ObjStride, int
    src2RowStride, int src2ElemStride, kel32f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int
    width, int height, int count);
KELM_API kelStatus kelmSub_mma_32f_P(const kel32f* const* src1, int src1ObjShift, const kel32f* const* src2, int src2ObjShift, int
    src2ObjStride, kel32f* const* dst, int dstObjShift, int dstObjStride, int width, int height, int count);
KELM_API kelStatus kelmSub_mma_32f_L(const kel32f* src1, int src1RowStride, int src1ElemStride, const kel32f* const* src2, int src2ObjShift,
    int src2RowStride, int src2ElemStride, kel32f* const* dst, int dstObjShift, int dstRowStride, int
    dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmSub_mma_64f(const kel64f* src1, int src1RowStride, int src1ElemStride, const kel64f* src2, int src2ObjStride, int
    src2RowStride, int src2ElemStride, kel64f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int
    width, int height, int count);
KELM_API kelStatus kelmSub_mma_64f_P(const kel64f* const* src1, int src1ObjShift, const kel64f* const* src2, int src2ObjShift, int
    src2ObjStride, kel64f* const* dst, int dstObjShift, int dstObjStride, int width, int height, int count);
KELM_API kelStatus kelmSub_mma_64f_L(const kel64f* src1, int src1RowStride, int src1ElemStride, const kel64f* const* src2, int src2ObjShift,
    int src2RowStride, int src2ElemStride, kel64f* const* dst, int dstObjShift, int dstRowStride, int
    dstElemStride, int width, int height, int count);

KELM_API kelStatus kelmSub_mama_32f(const kel32f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, const kel32f* src2, int
    src2ObjStride, int src2RowStride, int src2ElemStride, kel32f* dst, int dstObjStride, int dstRowStride, int
    dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmSub_mama_32f_P(const kel32f* const* src1, int src1ObjShift, int src1ObjStride, const kel32f* const* src2, int
    src2ObjShift, int src2ObjStride, kel32f* const* dst, int dstObjShift, int dstObjStride, int width, int
    height, int count);
KELM_API kelStatus kelmSub_mama_32f_L(const kel32f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, const kel32f* const*
    src2, int src2ObjShift, int src2RowStride, int src2ElemStride, kel32f* const* dst, int dstObjShift, int
    dstRowStride, int dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmSub_mama_64f(const kel64f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, const kel64f* src2, int
    src2ObjStride, int src2RowStride, int src2ElemStride, kel64f* dst, int dstObjStride, int dstRowStride, int
    dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmSub_mama_64f_P(const kel64f* const* src1, int src1ObjShift, int src1ObjStride, const kel64f* const* src2, int
    src2ObjShift, int src2ObjStride, kel64f* const* dst, int dstObjShift, int dstObjStride, int width, int
    height, int count);
KELM_API kelStatus kelmSub_mama_64f_L(const kel64f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, const kel64f* const*
    src2, int src2ObjShift, int src2RowStride, int src2ElemStride, kel64f* const* dst, int dstObjShift, int
    dstRowStride, int dstElemStride, int width, int height, int count);

KELM_API kelStatus kelmSub_mat_32f(const kel32f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, const kel32f* src2, int
    src2RowStride, int src2ElemStride, kel32f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int
    width, int height, int count);
KELM_API kelStatus kelmSub_mat_32f_P(const kel32f* const* src1, int src1ObjShift, int src1ObjStride, const kel32f* const* src2, int
    src2ObjShift, kel32f* const* dst, int dstObjShift, int dstObjStride, int width, int height, int count);
KELM_API kelStatus kelmSub_mat_32f_L(const kel32f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, const kel32f* src2,
    int src2RowStride, int src2ElemStride, kel32f* const* dst, int dstObjShift, int dstRowStride, int
    dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmSub_mat_64f(const kel64f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, const kel64f* src2, int
    src2RowStride, int src2ElemStride, kel64f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int
    width, int height, int count);
KELM_API kelStatus kelmSub_mat_64f_P(const kel64f* const* src1, int src1ObjShift, int src1ObjStride, const kel64f* const* src2, int
    src2ObjShift, kel64f* const* dst, int dstObjShift, int dstObjStride, int width, int height, int count);
KELM_API kelStatus kelmSub_mat_64f_L(const kel64f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, const kel64f* src2,
    int src2RowStride, int src2ElemStride, kel64f* const* dst, int dstObjShift, int dstRowStride, int
    dstElemStride, int width, int height, int count);

KELM_API kelStatus kelmSub_mta_32f(const kel32f* src1, int src1RowStride, int src1ElemStride, const kel32f* src2, int src2ObjStride, int
    src2RowStride, int src2ElemStride, kel32f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int
    width, int height, int count);
KELM_API kelStatus kelmSub_mta_32f_P(const kel32f* const* src1, int src1ObjShift, const kel32f* const* src2, int src2ObjShift, int
    src2ObjStride, kel32f* const* dst, int dstObjShift, int dstObjStride, int width, int height, int count);
KELM_API kelStatus kelmSub_mta_32f_L(const kel32f* src1, int src1RowStride, int src1ElemStride, const kel32f* const* src2, int src2ObjShift,
    int src2RowStride, int src2ElemStride, kel32f* const* dst, int dstObjShift, int dstRowStride, int
    dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmSub_mta_64f(const kel64f* src1, int src1RowStride, int src1ElemStride, const kel64f* src2, int src2ObjStride, int
    src2RowStride, int src2ElemStride, kel64f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int
    width, int height, int count);
KELM_API kelStatus kelmSub_mta_64f_P(const kel64f* const* src1, int src1ObjShift, const kel64f* const* src2, int src2ObjShift, int
    src2ObjStride, kel64f* const* dst, int dstObjShift, int dstObjStride, int width, int height, int count);
KELM_API kelStatus kelmSub_mta_64f_L(const kel64f* src1, int src1RowStride, int src1ElemStride, const kel64f* const* src2, int src2ObjShift,
    int src2RowStride, int src2ElemStride, kel64f* const* dst, int dstObjShift, int dstRowStride, int
    dstElemStride, int width, int height, int count);

KELM_API kelStatus kelmSub_mata_32f(const kel32f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, const kel32f* src2, int
    src2ObjStride, int src2RowStride, int src2ElemStride, kel32f* dst, int dstObjStride, int dstRowStride, int
    dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmSub_mata_32f_P(const kel32f* const* src1, int src1ObjShift, int src1ObjStride, const kel32f* const* src2, int
    src2ObjShift, int src2ObjStride, kel32f* const* dst, int dstObjShift, int dstObjStride, int width, int
    height, int count);
KELM_API kelStatus kelmSub_mata_32f_L(const kel32f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, const kel32f* const*
    src2, int src2ObjShift, int src2RowStride, int src2ElemStride, kel32f* const* dst, int dstObjShift, int
    dstRowStride, int dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmSub_mata_64f(const kel64f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, const kel64f* src2, int
    src2ObjStride, int src2RowStride, int src2ElemStride, kel64f* dst, int dstObjStride, int dstRowStride, int
    dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmSub_mata_64f_P(const kel64f* const* src1, int src1ObjShift, int src1ObjStride, const kel64f* const* src2, int
    src2ObjShift, int src2ObjStride, kel64f* const* dst, int dstObjShift, int dstObjStride, int width, int
    height, int count);
KELM_API kelStatus kelmSub_mata_64f_L(const kel64f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, const kel64f* const*
    src2, int src2ObjShift, int src2RowStride, int src2ElemStride, kel64f* const* dst, int dstObjShift, int
    dstRowStride, int dstElemStride, int width, int height, int count);

KELM_API kelStatus kelmSub_tam_32f(const kel32f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, const kel32f* src2, int
    src2RowStride, int src2ElemStride, kel32f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int
    width, int height, int count);
KELM_API kelStatus kelmSub_tam_32f_P(const kel32f* const* src1, int src1ObjShift, int src1ObjStride, const kel32f* const* src2, int
    src2ObjShift, kel32f* const* dst, int dstObjShift, int dstObjStride, int width, int height, int count);
KELM_API kelStatus kelmSub_tam_32f_L(const kel32f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, const kel32f* src2,
    int src2RowStride, int src2ElemStride, kel32f* const* dst, int dstObjShift, int dstRowStride, int
    dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmSub_tam_64f(const kel64f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, const kel64f* src2, int
    src2RowStride, int src2ElemStride, kel64f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int
    width, int height, int count);
KELM_API kelStatus kelmSub_tam_64f_P(const kel64f* const* src1, int src1ObjShift, int src1ObjStride, const kel64f* const* src2, int
    src2ObjShift, kel64f* const* dst, int dstObjShift, int dstObjStride, int width, int height, int count);
KELM_API kelStatus kelmSub_tam_64f_L(const kel64f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, const kel64f* src2,
    int src2RowStride, int src2ElemStride, kel64f* const* dst, int dstObjShift, int dstRowStride, int
    dstElemStride, int width, int height, int count);

KELM_API kelStatus kelmSub_tma_32f(const kel32f* src1, int src1RowStride, int src1ElemStride, const kel32f* src2, int src2ObjStride, int
    src2RowStride, int src2ElemStride, kel32f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int
    width, int height, int count);
KELM_API kelStatus kelmSub_tma_32f_P(const kel32f* const* src1, int src1ObjShift, const kel32f* const* src2, int src2ObjShift, int
    src2ObjStride, kel32f* const* dst, int dstObjShift, int dstObjStride, int width, int height, int count);
KELM_API kelStatus kelmSub_tma_32f_L(const kel32f* src1, int src1RowStride, int src1ElemStride, const kel32f* const* src2, int src2ObjShift,
    int src2RowStride, int src2ElemStride, kel32f* const* dst, int dstObjShift, int dstRowStride, int
    dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmSub_tma_64f(const kel64f* src1, int src1RowStride, int src1ElemStride, const kel64f* src2, int src2ObjStride, int
    src2RowStride, int src2ElemStride, kel64f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int
    width, int height, int count);
KELM_API kelStatus kelmSub_tma_64f_P(const kel64f* const* src1, int src1ObjShift, const kel64f* const* src2, int src2ObjShift, int
    src2ObjStride, kel64f* const* dst, int dstObjShift, int dstObjStride, int width, int height, int count);
KELM_API kelStatus kelmSub_tma_64f_L(const kel64f* src1, int src1RowStride, int src1ElemStride, const kel64f* const* src2, int src2ObjShift,
    int src2RowStride, int src2ElemStride, kel64f* const* dst, int dstObjShift, int dstRowStride, int
    dstElemStride, int width, int height, int count);

KELM_API kelStatus kelmSub_tama_32f(const kel32f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, const kel32f* src2, int
    src2ObjStride, int src2RowStride, int src2ElemStride, kel32f* dst, int dstObjStride, int dstRowStride, int
    dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmSub_tama_32f_P(const kel32f* const* src1, int src1ObjShift, int src1ObjStride, const kel32f* const* src2, int
    src2ObjShift, int src2ObjStride, kel32f* const* dst, int dstObjShift, int dstObjStride, int width, int
    height, int count);
KELM_API kelStatus kelmSub_tama_32f_L(const kel32f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, const kel32f* const*
    src2, int src2ObjShift, int src2RowStride, int src2ElemStride, kel32f* const* dst, int dstObjShift, int
    dstRowStride, int dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmSub_tama_64f(const kel64f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, const kel64f* src2, int
    src2ObjStride, int src2RowStride, int src2ElemStride, kel64f* dst, int dstObjStride, int dstRowStride, int
    dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmSub_tama_64f_P(const kel64f* const* src1, int src1ObjShift, int src1ObjStride, const kel64f* const* src2, int
    src2ObjShift, int src2ObjStride, kel64f* const* dst, int dstObjShift, int dstObjStride, int width, int
    height, int count);
KELM_API kelStatus kelmSub_tama_64f_L(const kel64f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, const kel64f* const*
    src2, int src2ObjShift, int src2RowStride, int src2ElemStride, kel64f* const* dst, int dstObjShift, int
    dstRowStride, int dstElemStride, int width, int height, int count);

KELM_API kelStatus kelmSub_tat_32f(const kel32f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, const kel32f* src2, int
    src2RowStride, int src2ElemStride, kel32f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int
    width, int height, int count);
KELM_API kelStatus kelmSub_tat_32f_P(const kel32f* const* src1, int src1ObjShift, int src1ObjStride, const kel32f* const* src2, int
    src2ObjShift, kel32f* const* dst, int dstObjShift, int dstObjStride, int width, int height, int count);
KELM_API kelStatus kelmSub_tat_32f_L(const kel32f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, const kel32f* src2,
    int src2RowStride, int src2ElemStride, kel32f* const* dst, int dstObjShift, int dstRowStride, int
    dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmSub_tat_64f(const kel64f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, const kel64f* src2, int
    src2RowStride, int src2ElemStride, kel64f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int
    width, int height, int count);
KELM_API kelStatus kelmSub_tat_64f_P(const kel64f* const* src1, int src1ObjShift, int src1ObjStride, const kel64f* const* src2, int
    src2ObjShift, kel64f* const* dst, int dstObjShift, int dstObjStride, int width, int height, int count);
KELM_API kelStatus kelmSub_tat_64f_L(const kel64f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, const kel64f* src2,
    int src2RowStride, int src2ElemStride, kel64f* const* dst, int dstObjShift, int dstRowStride, int
    dstElemStride, int width, int height, int count);

KELM_API kelStatus kelmSub_tta_32f(const kel32f* src1, int src1RowStride, int src1ElemStride, const kel32f* src2, int src2ObjStride, int
    src2RowStride, int src2ElemStride, kel32f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int
    width, int height, int count);
KELM_API kelStatus kelmSub_tta_32f_P(const kel32f* const* src1, int src1ObjShift, const kel32f* const* src2, int src2ObjShift, int
    src2ObjStride, kel32f* const* dst, int dstObjShift, int dstObjStride, int width, int height, int count);
KELM_API kelStatus kelmSub_tta_32f_L(const kel32f* src1, int src1RowStride, int src1ElemStride, const kel32f* const* src2, int src2ObjShift,
    int src2RowStride, int src2ElemStride, kel32f* const* dst, int dstObjShift, int dstRowStride, int
    dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmSub_tta_64f(const kel64f* src1, int src1RowStride, int src1ElemStride, const kel64f* src2, int src2ObjStride, int
    src2RowStride, int src2ElemStride, kel64f* dst, int dstObjStride, int dstRowStride, int dstElemStride, int
    width, int height, int count);
KELM_API kelStatus kelmSub_tta_64f_P(const kel64f* const* src1, int src1ObjShift, const kel64f* const* src2, int src2ObjShift, int
    src2ObjStride, kel64f* const* dst, int dstObjShift, int dstObjStride, int width, int height, int count);
KELM_API kelStatus kelmSub_tta_64f_L(const kel64f* src1, int src1RowStride, int src1ElemStride, const kel64f* const* src2, int src2ObjShift,
    int src2RowStride, int src2ElemStride, kel64f* const* dst, int dstObjShift, int dstRowStride, int
    dstElemStride, int width, int height, int count);

KELM_API kelStatus kelmSub_tata_32f(const kel32f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, const kel32f* src2, int
    src2ObjStride, int src2RowStride, int src2ElemStride, kel32f* dst, int dstObjStride, int dstRowStride, int
    dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmSub_tata_32f_P(const kel32f* const* src1, int src1ObjShift, int src1ObjStride, const kel32f* const* src2, int
    src2ObjShift, int src2ObjStride, kel32f* const* dst, int dstObjShift, int dstObjStride, int width, int
    height, int count);
KELM_API kelStatus kelmSub_tata_32f_L(const kel32f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, const kel32f* const*
    src2, int src2ObjShift, int src2RowStride, int src2ElemStride, kel32f* const* dst, int dstObjShift, int
    dstRowStride, int dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmSub_tata_64f(const kel64f* src1, int src1ObjStride, int src1RowStride, int src1ElemStride, const kel64f* src2, int
    src2ObjStride, int src2RowStride, int src2ElemStride, kel64f* dst, int dstObjStride, int dstRowStride, int
    dstElemStride, int width, int height, int count);
KELM_API kelStatus kelmSub_tata_64f_P(const kel64f* const* src1, int src1ObjShift, int src1ObjStride, const kel64f* const* src2, int
    src2ObjShift, int src2ObjStride, kel64f* const* dst, int dstObjShift, int dstObjStride, int width, int
    height, int count);
KELM_API kelStatus kelmSub_tata_64f_L(const kel64f* const* src1, int src1ObjShift, int src1RowStride, int src1ElemStride, const kel64f* const*
    src2, int src2ObjShift, int src2RowStride, int src2ElemStride, kel64f* const* dst, int dstObjShift, int
    dstRowStride, int dstElemStride, int width, int height, int count);

#ifdef __cplusplus
}
#endif

#endif
