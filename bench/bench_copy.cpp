// Copy and Transpose of matrix arrays: D = A and D = A transposed (square
// matrices, so the source and destination layouts agree).
#include "harness.h"

namespace kb {
namespace {

template <class T, class F>
kelStatus copy_ma(const Job& j, F f)
{
    return f(static_cast<const T*>(j.a), j.matStride(), j.rowStride(), j.elemStride(), static_cast<T*>(j.d),
             j.matStride(), j.rowStride(), j.elemStride(), j.n, j.n, j.count);
}

template <class T, class F>
kelStatus transpose_ma(const Job& j, F f)
{
    return f(static_cast<const T*>(j.a), j.matStride(), j.rowStride(), j.elemStride(), j.n, j.n, static_cast<T*>(j.d),
             j.matStride(), j.rowStride(), j.elemStride(), j.count);
}

kelStatus lib_copy_ma(const Job& j)
{
    return j.elem == 4 ? copy_ma<kel32f>(j, kelmCopy_ma_32f_SS) : copy_ma<kel64f>(j, kelmCopy_ma_64f_SS);
}

kelStatus lib_transpose_ma(const Job& j)
{
    return j.elem == 4 ? transpose_ma<kel32f>(j, kelmTranspose_ma_32f) : transpose_ma<kel64f>(j, kelmTranspose_ma_64f);
}

[[maybe_unused]] const bool copyRegistered = register_workload({Workload::CopyMa, "Copy_ma", lib_copy_ma, true});
[[maybe_unused]] const bool transposeRegistered =
    register_workload({Workload::TransposeMa, "Transpose_ma", lib_transpose_ma, true});

}  // namespace
}  // namespace kb
