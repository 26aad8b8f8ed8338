// Norms, trace and the homogeneous point transform: one scalar per object
// (L2 norm of n-vectors, Frobenius norm and trace of n x n matrices), and 3-D
// points through one 4x4 matrix (32f, reported at order 4 only).
#include "harness.h"

namespace kb {
namespace {

kelStatus lib_l2norm(const Job& j)
{
    if (j.elem == 4)
        return kelmL2Norm_va_32f(static_cast<const kel32f*>(j.a), j.vecStride(), j.elemStride(),
                                 static_cast<kel32f*>(j.d), j.n, j.count);
    return kelmL2Norm_va_64f(static_cast<const kel64f*>(j.a), j.vecStride(), j.elemStride(), static_cast<kel64f*>(j.d),
                             j.n, j.count);
}

kelStatus lib_frobnorm(const Job& j)
{
    if (j.elem == 4)
        return kelmFrobNorm_ma_32f(static_cast<const kel32f*>(j.a), j.matStride(), j.rowStride(), j.elemStride(), j.n,
                                   j.n, static_cast<kel32f*>(j.d), j.count);
    return kelmFrobNorm_ma_64f(static_cast<const kel64f*>(j.a), j.matStride(), j.rowStride(), j.elemStride(), j.n, j.n,
                               static_cast<kel64f*>(j.d), j.count);
}

kelStatus lib_trace(const Job& j)
{
    if (j.elem == 4)
        return kelmTrace_ma_32f(static_cast<const kel32f*>(j.a), j.matStride(), j.rowStride(), j.elemStride(), j.n,
                                static_cast<kel32f*>(j.d), j.count);
    return kelmTrace_ma_64f(static_cast<const kel64f*>(j.a), j.matStride(), j.rowStride(), j.elemStride(), j.n,
                            static_cast<kel64f*>(j.d), j.count);
}

kelStatus lib_affine(const Job& j)
{
    const int e = j.elemStride();
    return kelmAffineTransform3DH_mva_32f(affine_matrix(j.es), 4 * e, e, static_cast<const kel32f*>(j.a), 3 * e, e,
                                          static_cast<kel32f*>(j.d), 3 * e, e, j.count);
}

bool affine_cases(int elem, int n) { return elem == 4 && n == 4; }

[[maybe_unused]] const bool registered =
    register_workload({Workload::L2Norm, "L2Norm_va", lib_l2norm, true}) &&
    register_workload({Workload::FrobNorm, "FrobNorm_ma", lib_frobnorm, true}) &&
    register_workload({Workload::Trace, "Trace_ma", lib_trace, true}) &&
    register_workload({Workload::Affine, "Affine3DH_mva", lib_affine, true, affine_cases});

}  // namespace
}  // namespace kb
