// Symmetric eigenproblems: eigenvalues, and optionally eigenvectors, of real
// symmetric matrices.
//
// Order 1 is its own answer; order 2 has a closed form; from order 3 on the
// matrix is reduced to tridiagonal form by Householder reflections and the
// tridiagonal matrix is diagonalised by implicitly shifted QL sweeps with
// Givens rotations, run from the top or, mirrored, from the bottom.
//
// Callers compare the last bits of these results, so every formula below is
// evaluated exactly as written, in the element type:
//   - a subdiagonal element is negligible when |e|*0.5 <= eps: an absolute
//     test, not scaled by its neighbours;
//   - 30 sweeps per eigenvalue at most, then kelErrNotConverged;
//   - 32f takes the square roots of the order-2 closed form and of the shift
//     in double, on float arguments; the reciprocal roots of the order-2
//     rotation are divided in double and rounded once;
//   - the singularity test is |product of the eigenvalues| <= eps, the product
//     formed as each eigenvalue becomes final.
//
// Orders 3 to 6 run on local copies of the matrix, the band and the vectors
// (the same operations as the general path, which works in the caller's
// buffer and directly in the destination), so every path gives the same bits.
#pragma once

#include <cmath>
#include <cstddef>
#include <limits>

#include "common/check.h"
#include "common/desc.h"
#include "common/parallel.h"
#include "kelm.h"

namespace kelm {
namespace eigsym {

#define KELM_EIGSYM_INLINE inline __attribute__((always_inline))

template <class T>
constexpr T kEps = std::numeric_limits<T>::epsilon();  // 2^-23, 2^-52

// Square roots of float arguments taken in double (for 64f the same as sqrt).
template <class T>
KELM_EIGSYM_INLINE T root_wide(T x)
{
    return T(std::sqrt(double(x)));
}
template <class T>
KELM_EIGSYM_INLINE T inv_root_wide(T x)
{
    return T(1.0 / std::sqrt(double(x)));
}

// The vectors of the values-only family: nothing.
struct NoView {};
struct NoVectors {
    NoView operator[](ptrdiff_t) const { return {}; }
    NoVectors from(ptrdiff_t) const { return *this; }
    bool unit() const { return true; }
    NoVectors as_unit() const { return *this; }
};

// A row-major n x n block of local memory.
template <class T>
struct Local {
    T* p;
    int n;
    T& operator()(int i, int j) const { return p[i * n + j]; }
};

template <class T>
KELM_EIGSYM_INLINE bool negligible(T e)
{
    return std::fabs(e) * T(0.5) <= kEps<T>;
}

// --- order 2 -------------------------------------------------------------------

// a holds the 2x2 copy of the source (row-major).  Nothing is written when
// the determinant test fails.
template <class T, bool Vecs, class VV>
KELM_EIGSYM_INLINE kelStatus closed_form_2x2(const T* m, const VV& v, T* values)
{
    constexpr T eps = kEps<T>;
    const T a = m[0], b = m[1], c = m[3];
    if (std::fabs(a * c - b * b) <= eps) return kelErrSingular;
    const T t = 2 * b;
    const T r = root_wide<T>((a - c) * (a - c) + t * t);
    const T tr = a + c;
    T l0, l1;
    int flag1;
    if (tr > eps) {
        l0 = (tr + r) * T(0.5);
        l1 = (a * c - b * b) / l0;
        flag1 = 1;
    } else if (tr >= -eps) {
        l0 = T(0.5) * r;
        l1 = T(-0.5) * r;
        flag1 = 1;
    } else {
        l0 = T(0.5) * (tr - r);
        l1 = (a * c - b * b) / l0;
        flag1 = -1;
    }
    values[0] = l0;
    values[1] = l1;
    if constexpr (Vecs) {
        T q = a - c;
        int flag2;
        if (q >= -eps) {
            q = q + r;
            flag2 = 1;
        } else {
            q = q - r;
            flag2 = -1;
        }
        T co, si;
        if (std::fabs(t) >= std::fabs(q)) {
            if (std::fabs(t) > eps) {
                const T u = -q / t;
                co = inv_root_wide<T>(1 + u * u);
                si = u * co;
            } else {
                co = 1;
                si = 0;
            }
        } else {
            const T u = -t / q;
            si = inv_root_wide<T>(u * u + 1);
            co = u * si;
        }
        if (flag1 != flag2) {
            v(0, 0) = co, v(0, 1) = -si, v(1, 0) = si, v(1, 1) = co;
        } else {
            v(0, 0) = -si, v(1, 0) = co, v(0, 1) = -co, v(1, 1) = -si;
        }
    }
    return kelOk;
}

// --- order 3 and up --------------------------------------------------------------

// Householder reduction of the row-major copy a to tridiagonal form; the band
// is read from the diagonal and the subdiagonal afterwards.  Reflector k is
// kept in row k (above the diagonal), which nothing reads again; V collects
// the product of the reflectors.
template <class T, int N, bool Vecs, class VV>
KELM_EIGSYM_INLINE void householder(T* a, int nrun, const VV& v)
{
    const int n = N ? N : nrun;
    constexpr T eps = kEps<T>;
    bool identity = true;
    for (int k = 0; k + 2 < n; ++k) {
        T* w = a + k * n;  // w[j], j = k+1 .. n-1
        T ss = 0;
        for (int i = k + 1; i < n; ++i) ss = ss + a[i * n + k] * a[i * n + k];
        const T sigma = std::sqrt(ss);
        const T x0 = a[(k + 1) * n + k];
        if (std::fabs(sigma - x0) <= eps) continue;
        T w0, h;
        if (x0 > eps) {
            w0 = x0 + sigma;
            h = 2 * (sigma * sigma + sigma * x0);
        } else if (x0 >= -eps) {
            w0 = sigma;
            h = 2 * (sigma * sigma);
        } else {
            w0 = x0 - sigma;
            h = 2 * (sigma * sigma - sigma * x0);
        }
        if (h <= eps) continue;
        w[k + 1] = w0;
        for (int i = k + 2; i < n; ++i) w[i] = a[i * n + k];
        const T beta = 2 / h;
        // From the left: columns k .. n-1, rows k+1 .. n-1.
        for (int j = k; j < n; ++j) {
            T s = 0;
            for (int i = k + 1; i < n; ++i) s = s + w[i] * a[i * n + j];
            const T f = beta * s;
            for (int i = k + 1; i < n; ++i) a[i * n + j] = a[i * n + j] - f * w[i];
        }
        // From the right: rows k+1 .. n-1, columns k+1 .. n-1 (row k holds w).
        for (int i = k + 1; i < n; ++i) {
            T* ri = a + i * n;
            T s = 0;
            for (int j = k + 1; j < n; ++j) s = s + ri[j] * w[j];
            const T f = beta * s;
            for (int j = k + 1; j < n; ++j) ri[j] = ri[j] - f * w[j];
        }
        if constexpr (Vecs) {
            if (identity) {  // V = I - beta w w^T on the block, written directly
                for (int i = k + 1; i < n; ++i) {
                    const T f = beta * w[i];
                    for (int j = k + 1; j < n; ++j) v(i, j) = T(i == j ? 1 : 0) - f * w[j];
                }
                identity = false;
            } else {
                for (int r = 0; r < n; ++r) {
                    T s = 0;
                    for (int j = k + 1; j < n; ++j) s = s + v(r, j) * w[j];
                    const T f = beta * s;
                    for (int j = k + 1; j < n; ++j) v(r, j) = v(r, j) - f * w[j];
                }
            }
        }
    }
}

// Implicitly shifted QL on the band: D(i) the diagonal, E(i) the element
// between i and i+1 (E(n-1) = 0), both in the sweep's own index order; the
// rotations act on columns col(i) of V.  The product of the eigenvalues goes
// to prod.  The bottom direction runs this on the mirrored band.
template <class T, bool Vecs, class DA, class EA, class CM, class VV>
KELM_EIGSYM_INLINE kelStatus ql_sweeps(int n, const DA& D, const EA& E, const CM& col, const VV& v, T& prod)
{
    constexpr T eps = kEps<T>;
    T P = 1;
    for (int l = 0; l < n; ++l) {
        int iter = 0;
        for (;;) {
            int m = l;
            for (; m < n - 1; ++m)
                if (negligible(E(m))) break;
            if (m == l) break;
            if (iter == 30) return kelErrNotConverged;
            ++iter;
            T g = (D(l + 1) - D(l)) / (2 * E(l));
            T r = root_wide<T>(g * g + 1);
            g = D(m) - D(l) + E(l) / (g > eps ? g + r : g - r);
            T s = 1, c = 1, p = 0;
            bool early = false;
            for (int i = m - 1; i >= l; --i) {
                T f = s * E(i);
                const T b = c * E(i);
                r = std::sqrt(f * f + g * g);
                E(i + 1) = r;
                if (std::fabs(r) <= eps) {
                    D(i + 1) = D(i + 1) - p;
                    E(m) = 0;
                    early = true;
                    break;
                }
                s = f / r;
                c = g / r;
                g = D(i + 1) - p;
                r = (D(i) - g) * s + 2 * c * b;
                p = s * r;
                D(i + 1) = g + p;
                g = c * r - b;
                if constexpr (Vecs) {
                    const int c0 = col(i), c1 = col(i + 1);
                    for (int k = 0; k < n; ++k) {
                        f = v(k, c1);
                        v(k, c1) = s * v(k, c0) + c * f;
                        v(k, c0) = c * v(k, c0) - s * f;
                    }
                }
            }
            if (!early) {
                D(l) = D(l) - p;
                E(l) = g;
                E(m) = 0;
            }
        }
        P = P * D(l);
    }
    prod = P;
    return kelOk;
}

// Descending selection sort; a candidate replaces the best only when strictly
// larger, so ties keep the lower index.  Columns of V follow their values.
template <class T, bool Vecs, class VV>
KELM_EIGSYM_INLINE void sort_descending(T* values, int n, const VV& v)
{
    for (int p = 0; p + 1 < n; ++p) {
        int best = p;
        for (int q = p + 1; q < n; ++q)
            if (values[q] > values[best]) best = q;
        if (best == p) continue;
        const T t = values[p];
        values[p] = values[best];
        values[best] = t;
        if constexpr (Vecs) {
            for (int r = 0; r < n; ++r) {
                const T x = v(r, p);
                v(r, p) = v(r, best);
                v(r, best) = x;
            }
        }
    }
}

// Order 3 and up on the row-major copy a (n x n): values written, V (already
// the destination or a local block) filled.
template <class T, int N, bool Vecs, class VV>
KELM_EIGSYM_INLINE kelStatus solve(T* a, int nrun, const VV& v, T* values)
{
    const int n = N ? N : nrun;
    constexpr T eps = kEps<T>;
    if constexpr (Vecs) {
        for (int i = 0; i < n; ++i)
            for (int j = 0; j < n; ++j) v(i, j) = T(i == j ? 1 : 0);
    }
    householder<T, N, Vecs>(a, n, v);
    const bool top = std::fabs(a[(n - 1) * n + n - 1]) > std::fabs(a[0]);
    T prod = 0;
    kelStatus st;
    if constexpr (N != 0) {
        // The band in the sweep's order, in registers.
        T d[N], e[N];
        for (int i = 0; i < N; ++i) {
            const int m = top ? i : N - 1 - i;
            d[i] = a[m * N + m];
            e[i] = i == N - 1 ? T(0) : top ? a[(i + 1) * N + i] : a[(N - 1 - i) * N + (N - 2 - i)];
        }
        auto D = [&](int i) -> T& { return d[i]; };
        auto E = [&](int i) -> T& { return e[i]; };
        if (top) st = ql_sweeps<T, Vecs>(N, D, E, [](int i) { return i; }, v, prod);
        else st = ql_sweeps<T, Vecs>(N, D, E, [](int i) { return N - 1 - i; }, v, prod);
        for (int i = 0; i < N; ++i) values[top ? i : N - 1 - i] = d[i];
    } else {
        // The band in the buffer: E(n-1) lives in the corner (0, n-1), which
        // the reduction no longer needs.
        a[n - 1] = 0;
        if (top) {
            auto D = [&](int i) -> T& { return a[i * n + i]; };
            auto E = [&](int i) -> T& { return i == n - 1 ? a[n - 1] : a[(i + 1) * n + i]; };
            st = ql_sweeps<T, Vecs>(n, D, E, [](int i) { return i; }, v, prod);
        } else {
            auto D = [&](int i) -> T& { return a[(n - 1 - i) * (n + 1)]; };
            auto E = [&](int i) -> T& { return i == n - 1 ? a[n - 1] : a[(n - 1 - i) * n + (n - 2 - i)]; };
            st = ql_sweeps<T, Vecs>(n, D, E, [n](int i) { return n - 1 - i; }, v, prod);
        }
        for (int i = 0; i < n; ++i) values[i] = a[i * n + i];
    }
    if (st != kelOk) return st;
    if constexpr (Vecs) {
        sort_descending<T, true>(values, n, v);
        return std::fabs(prod) <= eps ? kelErrSingular : kelOk;
    } else {
        if (std::fabs(prod) <= eps) return kelErrSingular;  // values stay in the order found
        sort_descending<T, false>(values, n, v);
        return kelOk;
    }
}

// One matrix: s the source view, vo the destination view of the vectors.
template <class T, int N, bool Vecs, class SV, class VV>
KELM_EIGSYM_INLINE kelStatus one(const SV& s, const VV& vo, T* buf, T* values, int nrun)
{
    if constexpr (N == 1) {
        values[0] = s(0, 0);
        if constexpr (Vecs) vo(0, 0) = T(1);
        return kelOk;
    } else if constexpr (N == 2) {
        T m[4] = {s(0, 0), s(0, 1), s(1, 0), s(1, 1)};
        return closed_form_2x2<T, Vecs>(m, vo, values);
    } else if constexpr (N != 0) {
        T a[N * N];
        for (int i = 0; i < N; ++i)
            for (int j = 0; j < N; ++j) a[i * N + j] = s(i, j);
        if constexpr (Vecs) {
            T vl[N * N];
            const kelStatus st = solve<T, N, true>(a, N, Local<T>{vl, N}, values);
            for (int i = 0; i < N; ++i)
                for (int j = 0; j < N; ++j) vo(i, j) = vl[i * N + j];
            return st;
        } else {
            return solve<T, N, false>(a, N, NoView{}, values);
        }
    } else {
        const int n = nrun;
        for (int i = 0; i < n; ++i)
            for (int j = 0; j < n; ++j) buf[ptrdiff_t(i) * n + j] = s(i, j);
        if constexpr (Vecs) return solve<T, 0, true>(buf, n, vo, values);
        else return solve<T, 0, false>(buf, n, NoView{}, values);
    }
}

// Objects in order, stopping at the first status that is not kelOk.
template <int N, bool Vecs, class S, class V>
kelStatus run(const S& src, const V& vecs, typename S::Elem* buf, typename S::Elem* values, int n, int count)
{
    using T = typename S::Elem;
    for (int k = 0; k < count; ++k) {
        const kelStatus st = one<T, N, Vecs>(src[k], vecs[k], buf, values + ptrdiff_t(k) * n, n);
        if (st != kelOk) return st;
    }
    return kelOk;
}

template <bool Vecs, class S, class V>
kelStatus run_any(const S& src, const V& vecs, typename S::Elem* buf, typename S::Elem* values, int n, int count)
{
    switch (n) {
    case 1: return run<1, Vecs>(src, vecs, buf, values, n, count);
    case 2: return run<2, Vecs>(src, vecs, buf, values, n, count);
    case 3: return run<3, Vecs>(src, vecs, buf, values, n, count);
    case 4: return run<4, Vecs>(src, vecs, buf, values, n, count);
    case 5: return run<5, Vecs>(src, vecs, buf, values, n, count);
    case 6: return run<6, Vecs>(src, vecs, buf, values, n, count);
    default: return run<0, Vecs>(src, vecs, buf, values, n, count);
    }
}

}  // namespace eigsym

// --- kernels: every description is an instantiation (Strided<T, true> the
// contiguous kernel, Strided<T, false> _S2, Pointers _P, List _L / _LS2) ---------

template <class S>
kelStatus ownkelmEigenValuesSym_ma(const S& src, typename S::Elem* buf, typename S::Elem* values, int n, int count)
{
    return eigsym::run_any<false>(src, eigsym::NoVectors{}, buf, values, n, count);
}

template <class S, class V>
kelStatus ownkelmEigenValuesVectorsSym_ma(const S& src, typename S::Elem* buf, const V& vecs,
                                          typename S::Elem* values, int n, int count)
{
    return eigsym::run_any<true>(src, vecs, buf, values, n, count);
}

template <class S>
kelStatus ownkelmEigenValuesSym_m(const S& src, typename S::Elem* buf, typename S::Elem* values, int n)
{
    return ownkelmEigenValuesSym_ma(src, buf, values, n, 1);
}

template <class S, class V>
kelStatus ownkelmEigenValuesVectorsSym_m(const S& src, typename S::Elem* buf, const V& vecs, typename S::Elem* values,
                                         int n)
{
    return ownkelmEigenValuesVectorsSym_ma(src, buf, vecs, values, n, 1);
}

// --- parallel drivers: each thread its own n*n-element work block ---------------

template <class S>
kelStatus ownOMP_kelmEigenValuesSym_ma(const S& src, typename S::Elem* buf, typename S::Elem* values, int n, int count)
{
    using T = typename S::Elem;
    const std::size_t block = std::size_t(n) * std::size_t(n) * sizeof(T);
    return with_unit_strides(
        [&](const auto& s) {
            return split_with_workspace(count, block, buf, [&](int first, int mine, void* ws) {
                return ownkelmEigenValuesSym_ma(s.from(first), static_cast<T*>(ws), values + ptrdiff_t(first) * n, n,
                                                mine);
            });
        },
        src);
}

template <class S, class V>
kelStatus ownOMP_kelmEigenValuesVectorsSym_ma(const S& src, typename S::Elem* buf, const V& vecs,
                                              typename S::Elem* values, int n, int count)
{
    using T = typename S::Elem;
    const std::size_t block = std::size_t(n) * std::size_t(n) * sizeof(T);
    return with_unit_strides(
        [&](const auto& s, const auto& v) {
            return split_with_workspace(count, block, buf, [&](int first, int mine, void* ws) {
                return ownkelmEigenValuesVectorsSym_ma(s.from(first), static_cast<T*>(ws), v.from(first),
                                                       values + ptrdiff_t(first) * n, n, mine);
            });
        },
        src, vecs);
}

// --- the entries' choice: serial below the member's measure, else the driver -----

template <class S>
kelStatus eigen_values_sym_array(const S& src, typename S::Elem* buf, typename S::Elem* values, int n, int count)
{
    if (I32(n) * (I32(n) + 1) * count >= 1001) return ownOMP_kelmEigenValuesSym_ma(src, buf, values, n, count);
    return with_unit_strides([&](const auto& s) { return ownkelmEigenValuesSym_ma(s, buf, values, n, count); }, src);
}

template <class S, class V>
kelStatus eigen_values_vectors_sym_array(const S& src, typename S::Elem* buf, const V& vecs,
                                         typename S::Elem* values, int n, int count)
{
    if (I32(n) * (I32(2) * n + 1) * count >= 701)
        return ownOMP_kelmEigenValuesVectorsSym_ma(src, buf, vecs, values, n, count);
    return with_unit_strides(
        [&](const auto& s, const auto& v) { return ownkelmEigenValuesVectorsSym_ma(s, buf, v, values, n, count); },
        src, vecs);
}

}  // namespace kelm
