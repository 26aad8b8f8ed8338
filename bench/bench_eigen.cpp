// General eigenvalues (EigenValues_ma) and eigenvalues with right
// eigenvectors (EigenValuesVectorsRight_ma): real parts into f, imaginary
// parts into e, eigenvectors into d, one work buffer for the whole array.
#include "harness.h"

namespace kb {
namespace {

template <class T, class F>
kelStatus values(const Job& j, F f)
{
    return f(static_cast<const T*>(j.a), j.matStride(), j.rowStride(), j.elemStride(), static_cast<T*>(j.f),
             static_cast<T*>(j.e), j.n, j.count, static_cast<T*>(j.work));
}

template <class T, class F>
kelStatus vectors(const Job& j, F f)
{
    return f(static_cast<const T*>(j.a), j.matStride(), j.rowStride(), j.elemStride(), static_cast<T*>(j.d),
             j.matStride(), j.rowStride(), j.elemStride(), static_cast<T*>(j.f), static_cast<T*>(j.e), j.n, j.count,
             static_cast<T*>(j.work));
}

kelStatus lib_values(const Job& j)
{
    return j.elem == 4 ? values<kel32f>(j, kelmEigenValues_ma_32f) : values<kel64f>(j, kelmEigenValues_ma_64f);
}

kelStatus lib_vectors(const Job& j)
{
    return j.elem == 4 ? vectors<kel32f>(j, kelmEigenValuesVectorsRight_ma_32f)
                       : vectors<kel64f>(j, kelmEigenValuesVectorsRight_ma_64f);
}

[[maybe_unused]] const bool registeredValues =
    register_workload({Workload::EigVal, "EigenValues_ma", lib_values, false});
[[maybe_unused]] const bool registeredVectors =
    register_workload({Workload::EigVec, "EigenValuesVectorsRight_ma", lib_vectors, false});

}  // namespace
}  // namespace kb
