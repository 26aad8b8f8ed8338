// EigenValuesSym ma and EigenValuesVectorsSym ma: the eigenvalues (and the
// eigenvectors, as columns) of arrays of symmetric matrices; values into a
// contiguous array, n per matrix, vectors in the matrices' layout.
#include "harness.h"

namespace kb {
namespace {

template <class T, class F>
kelStatus values_ma(const Job& j, F f)
{
    return f(static_cast<const T*>(j.a), j.matStride(), j.rowStride(), j.elemStride(), static_cast<T*>(j.work),
             static_cast<T*>(j.d), j.n, j.count);
}

template <class T, class F>
kelStatus vectors_ma(const Job& j, F f)
{
    return f(static_cast<const T*>(j.a), j.matStride(), j.rowStride(), j.elemStride(), static_cast<T*>(j.work),
             static_cast<T*>(j.f), j.matStride(), j.rowStride(), j.elemStride(), static_cast<T*>(j.d), j.n,
             j.count);
}

kelStatus lib_values(const Job& j)
{
    return j.elem == 4 ? values_ma<kel32f>(j, kelmEigenValuesSym_ma_32f) : values_ma<kel64f>(j, kelmEigenValuesSym_ma_64f);
}

kelStatus lib_vectors(const Job& j)
{
    return j.elem == 4 ? vectors_ma<kel32f>(j, kelmEigenValuesVectorsSym_ma_32f)
                       : vectors_ma<kel64f>(j, kelmEigenValuesVectorsSym_ma_64f);
}

[[maybe_unused]] const bool values =
    register_workload({Workload::EigSymValues, "EigSym_values", lib_values, false});
[[maybe_unused]] const bool vectors =
    register_workload({Workload::EigSymVectors, "EigSym_vectors", lib_vectors, false});

}  // namespace
}  // namespace kb
