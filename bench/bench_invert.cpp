// Invert ma: the inverse of every matrix, into a second array of the same layout.
#include "harness.h"

namespace kb {
namespace {

template <class T, class F>
kelStatus invert_ma(const Job& j, F f)
{
    return f(static_cast<const T*>(j.a), j.matStride(), j.rowStride(), j.elemStride(), static_cast<T*>(j.work),
             static_cast<T*>(j.d), j.matStride(), j.rowStride(), j.elemStride(), j.n, j.count);
}

kelStatus lib_invert(const Job& j)
{
    return j.elem == 4 ? invert_ma<kel32f>(j, kelmInvert_ma_32f) : invert_ma<kel64f>(j, kelmInvert_ma_64f);
}

[[maybe_unused]] const bool registered = register_workload({Workload::Invert, "Invert_ma", lib_invert, false});

}  // namespace
}  // namespace kb
