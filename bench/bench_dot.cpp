// Vector products and scaled sums, pairwise over arrays of n-vectors:
// Dot_vava (one scalar per pair), Cross_vava (3-vectors vecStride apart),
// Saxpy_vava (x*c + y), LComb_vava (x*c + y*0.5) and Gaxpy_mva (A x + z with
// one shared matrix: the first of a, the z vectors right after it).
#include "harness.h"

namespace kb {
namespace {

template <class T>
const T* at(const void* p, int bytes)
{
    return reinterpret_cast<const T*>(static_cast<const char*>(p) + bytes);
}

template <class T, class F>
kelStatus dot_vava(const Job& j, F f)
{
    return f(static_cast<const T*>(j.a), j.vecStride(), j.elemStride(), static_cast<const T*>(j.b), j.vecStride(),
             j.elemStride(), static_cast<T*>(j.d), j.n, j.count);
}

template <class T, class F>
kelStatus cross_vava(const Job& j, F f)
{
    return f(static_cast<const T*>(j.a), j.vecStride(), j.elemStride(), static_cast<const T*>(j.b), j.vecStride(),
             j.elemStride(), static_cast<T*>(j.d), j.vecStride(), j.elemStride(), j.count);
}

template <class T, class F>
kelStatus saxpy_vava(const Job& j, F f)
{
    return f(static_cast<const T*>(j.a), j.vecStride(), j.elemStride(), T(j.c), static_cast<const T*>(j.b),
             j.vecStride(), j.elemStride(), static_cast<T*>(j.d), j.vecStride(), j.elemStride(), j.n, j.count);
}

template <class T, class F>
kelStatus lcomb_vava(const Job& j, F f)
{
    return f(static_cast<const T*>(j.a), j.vecStride(), j.elemStride(), T(j.c), static_cast<const T*>(j.b),
             j.vecStride(), j.elemStride(), T(0.5), static_cast<T*>(j.d), j.vecStride(), j.elemStride(), j.n, j.count);
}

template <class T, class F>
kelStatus gaxpy_mva(const Job& j, F f)
{
    return f(static_cast<const T*>(j.a), j.rowStride(), j.elemStride(), j.n, j.n, static_cast<const T*>(j.b),
             j.vecStride(), j.elemStride(), j.n, at<T>(j.a, j.matStride()), j.vecStride(), j.elemStride(), j.n,
             static_cast<T*>(j.d), j.vecStride(), j.elemStride(), j.count);
}

kelStatus lib_dot(const Job& j)
{
    return j.elem == 4 ? dot_vava<kel32f>(j, kelmDotProduct_vava_32f) : dot_vava<kel64f>(j, kelmDotProduct_vava_64f);
}
kelStatus lib_cross(const Job& j)
{
    return j.elem == 4 ? cross_vava<kel32f>(j, kelmCrossProduct_vava_32f)
                       : cross_vava<kel64f>(j, kelmCrossProduct_vava_64f);
}
kelStatus lib_saxpy(const Job& j)
{
    return j.elem == 4 ? saxpy_vava<kel32f>(j, kelmSaxpy_vava_32f) : saxpy_vava<kel64f>(j, kelmSaxpy_vava_64f);
}
kelStatus lib_lcomb(const Job& j)
{
    return j.elem == 4 ? lcomb_vava<kel32f>(j, kelmLComb_vava_32f) : lcomb_vava<kel64f>(j, kelmLComb_vava_64f);
}
kelStatus lib_gaxpy(const Job& j)
{
    return j.elem == 4 ? gaxpy_mva<kel32f>(j, kelmGaxpy_mva_32f) : gaxpy_mva<kel64f>(j, kelmGaxpy_mva_64f);
}

[[maybe_unused]] const bool dot = register_workload({Workload::DotVava, "Dot_vava", lib_dot, true});
[[maybe_unused]] const bool cross = register_workload({Workload::CrossVava, "Cross_vava", lib_cross, true});
[[maybe_unused]] const bool saxpy = register_workload({Workload::SaxpyVava, "Saxpy_vava", lib_saxpy, true});
[[maybe_unused]] const bool lcomb = register_workload({Workload::LCombVava, "LComb_vava", lib_lcomb, true});
[[maybe_unused]] const bool gaxpy = register_workload({Workload::GaxpyMva, "Gaxpy_mva", lib_gaxpy, true});

}  // namespace
}  // namespace kb
