// Det ma: one determinant per matrix, into a contiguous array.
#include "harness.h"

namespace kb {
namespace {

template <class T, class F>
kelStatus det_ma(const Job& j, F f)
{
    return f(static_cast<const T*>(j.a), j.matStride(), j.rowStride(), j.elemStride(), j.n,
             static_cast<T*>(j.work), static_cast<T*>(j.d), j.count);
}

kelStatus lib_det(const Job& j)
{
    return j.elem == 4 ? det_ma<kel32f>(j, kelmDet_ma_32f) : det_ma<kel64f>(j, kelmDet_ma_64f);
}

[[maybe_unused]] const bool registered = register_workload({Workload::Det, "Det_ma", lib_det, false});

}  // namespace
}  // namespace kb
