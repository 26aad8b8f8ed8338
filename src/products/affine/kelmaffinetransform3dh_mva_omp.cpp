// kelmAffineTransform3DH_mva_32f: the entry and its parallel driver.
#include "kernels.h"

namespace kelm {

// Checks: null (matrix, points, destination), count, strides.  Above 800
// elements of work (16 of the matrix, 6 per point) the points are split over
// the threads; a tiny w in any thread's block makes the call's status.
extern "C" KELM_API kelStatus kelmAffineTransform3DH_mva_32f(const float* src1, int src1RowStride,
                                                             int src1ElemStride, const float* src2,
                                                             int src2ObjStride, int src2ElemStride, float* dst,
                                                             int dstObjStride, int dstElemStride, int count)
{
    KELM_CHECKS(nulls(src1, src2, dst), counts(count),
                strides<float>(src1RowStride, src1ElemStride, src2ObjStride, src2ElemStride, dstObjStride,
                               dstElemStride));
    const auto m = mat(src1, src1RowStride, src1ElemStride);
    const auto p = vecs(src2, src2ObjStride, src2ElemStride);
    const auto d = vecs(dst, dstObjStride, dstElemStride);
    if (I32(6) * I32(count) + I32(16) > 800) return ownOMP_kelmAffineTransform3DH_mva_32f(m, p, d, count);
    return with_unit_strides([&](const auto& mu, const auto& pu, const auto& du) { return affine_kernel(mu, pu, du, count); },
                             m, p, d);
}

}  // namespace kelm
