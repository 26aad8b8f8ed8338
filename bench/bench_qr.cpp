// QRDecomp ma followed by QRBackSubst mava: solve A[k] x[k] = b[k] through
// the stored Householder factors, as a caller of the two calls does.
#include "harness.h"

namespace kb {
namespace {

template <class T, class Decomp, class Solve>
kelStatus qr_solve(const Job& j, Decomp decomp, Solve solve)
{
    T* work = static_cast<T*>(j.work);
    const kelStatus s = decomp(static_cast<const T*>(j.a), j.matStride(), j.rowStride(), j.elemStride(), work,
                               static_cast<T*>(j.f), j.matStride(), j.rowStride(), j.elemStride(), j.n, j.n, j.count);
    if (s != kelOk) return s;
    return solve(static_cast<const T*>(j.f), j.matStride(), j.rowStride(), j.elemStride(), work,
                 static_cast<const T*>(j.b), j.vecStride(), j.elemStride(), static_cast<T*>(j.d), j.vecStride(),
                 j.elemStride(), j.n, j.n, j.count);
}

kelStatus lib_qr(const Job& j)
{
    return j.elem == 4 ? qr_solve<kel32f>(j, kelmQRDecomp_ma_32f, kelmQRBackSubst_mava_32f)
                       : qr_solve<kel64f>(j, kelmQRDecomp_ma_64f, kelmQRBackSubst_mava_64f);
}

[[maybe_unused]] const bool registered = register_workload({Workload::QR, "QR_solve", lib_qr, false});

}  // namespace
}  // namespace kb
