// CholeskyDecomp ma followed by CholeskyBackSubst mava: solve A[k] x[k] = b[k]
// for symmetric positive definite A[k] through the stored factors, as a
// caller of the two calls does.
#include "harness.h"

namespace kb {
namespace {

template <class T, class Decomp, class Solve>
kelStatus chol_solve(const Job& j, Decomp decomp, Solve solve)
{
    const kelStatus s = decomp(static_cast<const T*>(j.a), j.matStride(), j.rowStride(), j.elemStride(),
                               static_cast<T*>(j.f), j.matStride(), j.rowStride(), j.elemStride(), j.n, j.count);
    if (s != kelOk) return s;
    return solve(static_cast<const T*>(j.f), j.matStride(), j.rowStride(), j.elemStride(),
                 static_cast<const T*>(j.b), j.vecStride(), j.elemStride(),
                 static_cast<T*>(j.d), j.vecStride(), j.elemStride(), j.n, j.count);
}

kelStatus lib_chol(const Job& j)
{
    return j.elem == 4 ? chol_solve<kel32f>(j, kelmCholeskyDecomp_ma_32f, kelmCholeskyBackSubst_mava_32f)
                       : chol_solve<kel64f>(j, kelmCholeskyDecomp_ma_64f, kelmCholeskyBackSubst_mava_64f);
}

[[maybe_unused]] const bool registered = register_workload({Workload::Chol, "Chol_solve", lib_chol, false});

}  // namespace
}  // namespace kb
