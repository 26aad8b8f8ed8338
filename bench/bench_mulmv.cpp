// Mul mava (dst[k] = A[k] x[k]) and Mul mac (dst[k] = c A[k]), square
// matrices.
#include "harness.h"

namespace kb {
namespace {

template <class T, class F>
kelStatus mul_mava(const Job& j, F f)
{
    return f(static_cast<const T*>(j.a), j.matStride(), j.rowStride(), j.elemStride(), j.n, j.n,
             static_cast<const T*>(j.b), j.vecStride(), j.elemStride(), j.n,
             static_cast<T*>(j.d), j.vecStride(), j.elemStride(), j.count);
}

template <class T, class F>
kelStatus mul_mac(const Job& j, F f)
{
    return f(static_cast<const T*>(j.a), j.matStride(), j.rowStride(), j.elemStride(), T(j.c),
             static_cast<T*>(j.d), j.matStride(), j.rowStride(), j.elemStride(), j.n, j.n, j.count);
}

kelStatus lib_mul_mava(const Job& j)
{
    return j.elem == 4 ? mul_mava<kel32f>(j, kelmMul_mava_32f) : mul_mava<kel64f>(j, kelmMul_mava_64f);
}

kelStatus lib_mul_mac(const Job& j)
{
    return j.elem == 4 ? mul_mac<kel32f>(j, kelmMul_mac_32f) : mul_mac<kel64f>(j, kelmMul_mac_64f);
}

[[maybe_unused]] const bool mava = register_workload({Workload::MulMava, "Mul_mava", lib_mul_mava, true});
[[maybe_unused]] const bool mac = register_workload({Workload::MulMac, "Mul_mac", lib_mul_mac, true});

}  // namespace
}  // namespace kb
