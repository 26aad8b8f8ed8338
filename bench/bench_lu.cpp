// LUDecomp ma followed by LUBackSubst mava: solve A[k] x[k] = b[k] through
// the stored factors and pivot indices, as a caller of the two calls does.
#include "harness.h"

namespace kb {
namespace {

template <class T, class Decomp, class Solve>
kelStatus lu_solve(const Job& j, Decomp decomp, Solve solve)
{
    const kelStatus s = decomp(static_cast<const T*>(j.a), j.matStride(), j.rowStride(), j.elemStride(), j.idx,
                               static_cast<T*>(j.f), j.matStride(), j.rowStride(), j.elemStride(), j.n, j.count);
    if (s != kelOk) return s;
    return solve(static_cast<const T*>(j.f), j.matStride(), j.rowStride(), j.elemStride(), j.idx,
                 static_cast<const T*>(j.b), j.vecStride(), j.elemStride(),
                 static_cast<T*>(j.d), j.vecStride(), j.elemStride(), j.n, j.count);
}

kelStatus lib_lu(const Job& j)
{
    return j.elem == 4 ? lu_solve<kel32f>(j, kelmLUDecomp_ma_32f, kelmLUBackSubst_mava_32f)
                       : lu_solve<kel64f>(j, kelmLUDecomp_ma_64f, kelmLUBackSubst_mava_64f);
}

[[maybe_unused]] const bool registered = register_workload({Workload::LU, "LU_solve", lib_lu, false});

}  // namespace
}  // namespace kb
