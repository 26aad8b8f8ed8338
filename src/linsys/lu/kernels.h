// LU decomposition with partial pivoting, and the back substitution that
// reads its factor.
//
// Layout shared by the two families: rows are never exchanged.  index[k] is
// the source row chosen as the k-th pivot row, and destination row index[k]
// holds row k of the factor: the multipliers of L in columns j < k (the unit
// diagonal is not stored) and U in columns j >= k.  Back substitution reads
// the factor and the right-hand vector through the index array and writes x
// in natural order.
//
// Kernels are templates over the object views and descriptions of desc.h; the
// view or description type picks the variant: contiguous (DenseView<T, true>,
// Strided<T, true>), general element stride (_S2), per-element pointers (_P),
// lists (_L with unit element strides, _LS2 otherwise).
//
//   ownkelmLUDecomp_m_NxN<N>      orders 3 to 6, written out on a local copy
//   ownkelmLUDecomp_m_com          every other order (_S_com, _S2_com, _P_com)
//   ownkelmLUDecomp_m              one matrix: picks one of the two by order
//   ownkelmLUDecomp_ma             an array of matrices, stops at the first failure
//   ownkelmLUBackSubst_mv_NxN<N>, ownkelmLUBackSubst_mv_com, ownkelmLUBackSubst_mv
//   ownkelmLUBackSubst_mva         one factor, an array of right-hand vectors
//   ownkelmLUBackSubst_mava        arrays of factors and vectors, paired
//
// The two decomposition paths differ on purpose and callers see it: the
// written-out orders accept a pivot of magnitude >= tau (twice the smallest
// normal number), the general worker needs a pivot > epsilon.  Both keep
// their own failure footprint (see each kernel).
#pragma once

#include <cmath>
#include <cstddef>
#include <type_traits>

#include "common/check.h"
#include "common/desc.h"
#include "common/parallel.h"

namespace kelm {

template <class T>
struct LuLimits;
template <>
struct LuLimits<float> {
    static constexpr float eps = 1.1920928955078125e-07f;  // 2^-23
    static constexpr float tau = 2.350988701644575e-38f;   // 2^-125
};
template <>
struct LuLimits<double> {
    static constexpr double eps = 2.220446049250313e-16;    // 2^-52
    static constexpr double tau = 4.450147717014403e-308;   // 2^-1021
};

// Magnitudes are compared in the element type: widening a float to double is
// exact and keeps the order (and every comparison with NaN false), so the
// outcome is that of a comparison in double.
template <class T>
inline T mag(T x) { return std::fabs(x); }

template <class V>
using ElemOf = std::remove_reference_t<decltype(std::declval<const V&>()(0, 0))>;

// --- decomposition: the general-order worker ------------------------------------
// Copies the source into the destination first (so both may be one matrix
// with equal strides), then eliminates in the destination through the index
// array.  On a failed pivot test it stops at once: the destination is then
// partly reduced and the index array holds the exchanges made so far.
template <class SV, class DV>
kelStatus ownkelmLUDecomp_m_com(const SV& s, int* index, const DV& d, int n)
{
    using T = ElemOf<DV>;
    for (int i = 0; i < n; ++i) index[i] = i;
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) d(i, j) = s(i, j);
    for (int k = 0; k < n - 1; ++k) {
        T m = mag(d(index[k], k));
        int p = k;
        for (int i = k + 1; i < n; ++i) {
            const T v = mag(d(index[i], k));
            if (!(m >= v)) m = v, p = i;  // a later row wins only when strictly larger
        }
        if (!(m > LuLimits<T>::eps)) return kelErrSingular;
        if (p != k) {
            const int t = index[p];
            index[p] = index[k];
            index[k] = t;
        }
        const int pk = index[k];
        const T r = T(1) / d(pk, k);
        for (int i = k + 1; i < n; ++i) d(index[i], k) = d(index[i], k) * r;
        for (int i = k + 1; i < n; ++i) {
            const int pi = index[i];
            const T l = d(pi, k);
            for (int j = k + 1; j < n; ++j) d(pi, j) = d(pi, j) - l * d(pk, j);
        }
    }
    return mag(d(index[n - 1], n - 1)) > LuLimits<T>::eps ? kelOk : kelErrSingular;
}

// --- decomposition: orders 3 to 6 ------------------------------------------------
// The same elimination, pivot rule and tie rule on a local copy whose rows are
// exchanged as pivots are chosen (perm follows them).  Row k of the factor is
// written to destination row perm[k] as soon as step k is done; the pivot is
// tested against tau after the exchange, so on failure the index array holds
// that exchange and unfinished rows are left unwritten.  The last pivot is
// tested before the last row is written.
template <int N, class SV, class DV>
kelStatus ownkelmLUDecomp_m_NxN(const SV& s, int* index, const DV& d)
{
    using T = ElemOf<DV>;
    T a[N][N];
    int perm[N];
#pragma GCC unroll 8
    for (int i = 0; i < N; ++i) {
        perm[i] = i;
#pragma GCC unroll 8
        for (int j = 0; j < N; ++j) a[i][j] = s(i, j);
    }
    auto publish = [&] {
#pragma GCC unroll 8
        for (int i = 0; i < N; ++i) index[i] = perm[i];
    };
#pragma GCC unroll 8
    for (int k = 0; k < N - 1; ++k) {
        T m = mag(a[k][k]);
        int p = k;
        // Without branches: pivots of random data are unpredictable.  "m > v ?
        // m : v" keeps m exactly when m >= v holds (magnitudes are never -0).
#pragma GCC unroll 8
        for (int i = k + 1; i < N; ++i) {
            const T v = mag(a[i][k]);
            p += (i - p) & -int(!(m >= v));
            m = m > v ? m : v;
        }
        {
            const int t = perm[p];
            perm[p] = perm[k];
            perm[k] = t;
        }
#pragma GCC unroll 8
        for (int j = 0; j < N; ++j) {  // p == k exchanges a row with itself
            const T t = a[p][j];
            a[p][j] = a[k][j];
            a[k][j] = t;
        }
        if (!(m >= LuLimits<T>::tau)) {
            publish();
            return kelErrSingular;
        }
        const T r = T(1) / a[k][k];
#pragma GCC unroll 8
        for (int i = k + 1; i < N; ++i) a[i][k] = a[i][k] * r;
#pragma GCC unroll 8
        for (int i = k + 1; i < N; ++i)
#pragma GCC unroll 8
            for (int j = k + 1; j < N; ++j) a[i][j] = a[i][j] - a[i][k] * a[k][j];
        const int row = perm[k];
#pragma GCC unroll 8
        for (int j = 0; j < N; ++j) d(row, j) = a[k][j];
    }
    publish();
    if (!(mag(a[N - 1][N - 1]) >= LuLimits<T>::tau)) return kelErrSingular;
    const int row = perm[N - 1];
#pragma GCC unroll 8
    for (int j = 0; j < N; ++j) d(row, j) = a[N - 1][j];
    return kelOk;
}

// One matrix, any view (contiguous, _S2 or _P).
template <class SV, class DV>
kelStatus ownkelmLUDecomp_m(const SV& s, int* index, const DV& d, int n)
{
    switch (n) {
    case 3: return ownkelmLUDecomp_m_NxN<3>(s, index, d);
    case 4: return ownkelmLUDecomp_m_NxN<4>(s, index, d);
    case 5: return ownkelmLUDecomp_m_NxN<5>(s, index, d);
    case 6: return ownkelmLUDecomp_m_NxN<6>(s, index, d);
    default: return ownkelmLUDecomp_m_com(s, index, d, n);
    }
}

// An array of matrices.  Index blocks advance by n per object, except in the
// strided form with a general element stride (_S2) for orders outside 3..6:
// there every object is given the first block, so each object's permutation
// overwrites the one before.  Callers rely on that footprint; keep it.
template <class S, class D>
kelStatus ownkelmLUDecomp_ma(int count, const S& s, int* index, const D& d, int n)
{
    using T = typename D::Elem;
    const bool sharedBlock = std::is_same_v<S, Strided<T, false>> && (n < 3 || n > 6);
    const ptrdiff_t step = sharedBlock ? 0 : n;
    for (int k = 0; k < count; ++k)
        if (kelStatus st = ownkelmLUDecomp_m(s[k], index + k * step, d[k], n)) return st;
    return kelOk;
}

// --- back substitution -------------------------------------------------------------
// General order: the forward pass keeps y in the destination, sums start from
// zero and run over increasing columns, and each diagonal entry divides.
// There is no singularity test: a zero diagonal gives infinities or NaNs.
template <class SV, class BV, class DV>
void ownkelmLUBackSubst_mv_com(const SV& s, const int* index, const BV& b, const DV& x, int n)
{
    using T = ElemOf<DV>;
    x[0] = b[index[0]];
    for (int i = 1; i < n; ++i) {
        const int r = index[i];
        T sum = 0;
        for (int j = 0; j < i; ++j) sum = sum + s(r, j) * x[j];
        x[i] = b[r] - sum;
    }
    x[n - 1] = x[n - 1] / s(index[n - 1], n - 1);
    for (int i = n - 2; i >= 0; --i) {
        const int r = index[i];
        T sum = 0;
        for (int j = i + 1; j < n; ++j) sum = sum + s(r, j) * x[j];
        x[i] = (x[i] - sum) / s(r, i);
    }
}

// Orders 3 to 6, written out: every term is subtracted in turn, from the
// highest column down (y2 = b2 - l21*y1 - l20*y0; x0 = (y0 - u02*x2 - u01*x1)
// * (1/u00)), and each diagonal entry becomes one reciprocal that multiplies.
template <int N, class SV, class BV, class DV>
void ownkelmLUBackSubst_mv_NxN(const SV& s, const int* index, const BV& b, const DV& x)
{
    using T = ElemOf<DV>;
    int r[N];
    T y[N];
#pragma GCC unroll 8
    for (int i = 0; i < N; ++i) r[i] = index[i];
#pragma GCC unroll 8
    for (int i = 0; i < N; ++i) {
        T v = b[r[i]];
#pragma GCC unroll 8
        for (int j = i - 1; j >= 0; --j) v = v - s(r[i], j) * y[j];
        y[i] = v;
    }
#pragma GCC unroll 8
    for (int i = N - 1; i >= 0; --i) {
        T v = y[i];
#pragma GCC unroll 8
        for (int j = N - 1; j > i; --j) v = v - s(r[i], j) * y[j];
        y[i] = v * (T(1) / s(r[i], i));
    }
#pragma GCC unroll 8
    for (int i = 0; i < N; ++i) x[i] = y[i];
}

template <class SV, class BV, class DV>
kelStatus ownkelmLUBackSubst_mv(const SV& s, const int* index, const BV& b, const DV& x, int n)
{
    switch (n) {
    case 3: ownkelmLUBackSubst_mv_NxN<3>(s, index, b, x); break;
    case 4: ownkelmLUBackSubst_mv_NxN<4>(s, index, b, x); break;
    case 5: ownkelmLUBackSubst_mv_NxN<5>(s, index, b, x); break;
    case 6: ownkelmLUBackSubst_mv_NxN<6>(s, index, b, x); break;
    default: ownkelmLUBackSubst_mv_com(s, index, b, x, n); break;
    }
    return kelOk;
}

// One factor (and one index block) for every vector.
template <class S, class B, class D>
kelStatus ownkelmLUBackSubst_mva(int count, const S& s, const int* index, const B& b, const D& x, int n)
{
    for (int k = 0; k < count; ++k) ownkelmLUBackSubst_mv(s[0], index, b[k], x[k], n);
    return kelOk;
}

// Factor k with index block k for vector k.
template <class S, class B, class D>
kelStatus ownkelmLUBackSubst_mava(int count, const S& s, const int* index, const B& b, const D& x, int n)
{
    for (int k = 0; k < count; ++k) ownkelmLUBackSubst_mv(s[k], index + ptrdiff_t(k) * n, b[k], x[k], n);
    return kelOk;
}

// --- choosing the kernel and going parallel ----------------------------------------

// When an array goes parallel (wrapping signed 32-bit products).  The
// one-factor back substitution measures n*(n + 2*count), not count*n*(n + 2):
// its threshold has always been computed that way.
inline bool lu_decomp_parallel(int n, int count) { return I32(n) * n * count > 1000; }
inline bool lu_mva_parallel(int n, int count) { return I32(n) * (I32(n) + I32(2) * count) > 700; }
inline bool lu_mava_parallel(int n, int count) { return I32(n) * (I32(n) + 2) * count > 1200; }

// Parallel drivers: each thread runs the serial kernel of the same form on
// its run of objects, with the per-object index blocks moved to the run.
template <class S, class D>
kelStatus ownOMP_kelmLUDecomp_ma(int count, const S& s, int* index, const D& d, int n)
{
    return with_unit_strides(
        [&](const auto& su, const auto& du) {
            return split(count, [&](int first, int mine) {
                return ownkelmLUDecomp_ma(mine, su.from(first), index + ptrdiff_t(first) * n, du.from(first), n);
            });
        },
        s, d);
}

template <class S, class B, class D>
kelStatus ownOMP_kelmLUBackSubst_mva(int count, const S& s, const int* index, const B& b, const D& x, int n)
{
    return with_unit_strides(
        [&](const auto& su, const auto& bu, const auto& xu) {
            return split(count, [&](int first, int mine) {
                return ownkelmLUBackSubst_mva(mine, su, index, bu.from(first), xu.from(first), n);
            });
        },
        s, b, x);
}

template <class S, class B, class D>
kelStatus ownOMP_kelmLUBackSubst_mava(int count, const S& s, const int* index, const B& b, const D& x, int n)
{
    return with_unit_strides(
        [&](const auto& su, const auto& bu, const auto& xu) {
            return split(count, [&](int first, int mine) {
                return ownkelmLUBackSubst_mava(mine, su.from(first), index + ptrdiff_t(first) * n, bu.from(first),
                                                xu.from(first), n);
            });
        },
        s, b, x);
}

template <class S, class D>
kelStatus lu_decomp_array(bool parallel, int count, const S& s, int* index, const D& d, int n)
{
    if (parallel) return ownOMP_kelmLUDecomp_ma(count, s, index, d, n);
    return with_unit_strides([&](const auto& su, const auto& du) { return ownkelmLUDecomp_ma(count, su, index, du, n); },
                             s, d);
}

template <class S, class B, class D>
kelStatus lu_mva_array(bool parallel, int count, const S& s, const int* index, const B& b, const D& x, int n)
{
    if (parallel) return ownOMP_kelmLUBackSubst_mva(count, s, index, b, x, n);
    return with_unit_strides(
        [&](const auto& su, const auto& bu, const auto& xu) { return ownkelmLUBackSubst_mva(count, su, index, bu, xu, n); },
        s, b, x);
}

template <class S, class B, class D>
kelStatus lu_mava_array(bool parallel, int count, const S& s, const int* index, const B& b, const D& x, int n)
{
    if (parallel) return ownOMP_kelmLUBackSubst_mava(count, s, index, b, x, n);
    return with_unit_strides(
        [&](const auto& su, const auto& bu, const auto& xu) { return ownkelmLUBackSubst_mava(count, su, index, bu, xu, n); },
        s, b, x);
}

}  // namespace kelm
