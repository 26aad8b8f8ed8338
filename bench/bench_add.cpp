// Add mama: dst[k] = src1[k] + src2[k], square matrices.
#include "harness.h"

namespace kb {
namespace {

template <class T, class F>
kelStatus add_mama(const Job& j, F f)
{
    return f(static_cast<const T*>(j.a), j.matStride(), j.rowStride(), j.elemStride(),
             static_cast<const T*>(j.b), j.matStride(), j.rowStride(), j.elemStride(),
             static_cast<T*>(j.d), j.matStride(), j.rowStride(), j.elemStride(), j.n, j.n, j.count);
}

kelStatus lib_add_mama(const Job& j)
{
    return j.elem == 4 ? add_mama<kel32f>(j, kelmAdd_mama_32f) : add_mama<kel64f>(j, kelmAdd_mama_64f);
}

[[maybe_unused]] const bool registered = register_workload({Workload::AddMama, "Add_mama", lib_add_mama, true});

}  // namespace
}  // namespace kb
