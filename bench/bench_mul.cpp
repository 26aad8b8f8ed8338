// Mul mama: dst[k] = src1[k] * src2[k], square matrices.
#include "harness.h"

namespace kb {
namespace {

template <class T, class F>
kelStatus mul_mama(const Job& j, F f)
{
    return f(static_cast<const T*>(j.a), j.matStride(), j.rowStride(), j.elemStride(), j.n, j.n,
             static_cast<const T*>(j.b), j.matStride(), j.rowStride(), j.elemStride(), j.n, j.n,
             static_cast<T*>(j.d), j.matStride(), j.rowStride(), j.elemStride(), j.count);
}

kelStatus lib_mul_mama(const Job& j)
{
    return j.elem == 4 ? mul_mama<kel32f>(j, kelmMul_mama_32f) : mul_mama<kel64f>(j, kelmMul_mama_64f);
}

[[maybe_unused]] const bool registered = register_workload({Workload::MulMama, "Mul_mama", lib_mul_mama, true});

}  // namespace
}  // namespace kb
