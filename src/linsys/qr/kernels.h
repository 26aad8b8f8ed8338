// QR decomposition by Householder reflections, and the least-squares back
// substitution that reads its factor.
//
// Factor layout (h rows, w columns, h >= w): R on and above the diagonal;
// below the diagonal, column k holds v[k+1..h-1] of the k-th reflection
// H = I + beta*v*v^T, whose v[k] = 1 is not stored.  beta is not stored
// either: both operations recompute it from the vector as
// beta = -2 / (1 + sum of v[i]^2), the sum starting from 1 and running over
// increasing i, so the decomposition and the back substitution use the very
// same beta.  A square matrix takes w - 1 reflections (its last column needs
// none), any other w.
//
// Every kernel performs the same IEEE operations in the same order, so the
// paths differ in speed only:
//   ownkelmQRDecomp_m_com        any sizes, in place in the destination, the
//                                current vector in the caller's buffer
//   ownkelmQRDecomp_m_NxN<N>     square orders 3 to 6 written out on a local
//                                copy (the vector stays in registers)
//   qr_decomp_lanes<N>           the same written-out code on several objects
//                                at once, one object per vector lane
//   ownkelmQRDecomp_m, _ma       one matrix / an array (views and descriptions
//                                of desc.h pick contiguous, _S2, _P, _L, _LS2)
//   ownkelmQRBackSubst_mv_com, _mv_NxN<N>, _mv, _mva, _mava   likewise
//   ownOMP_kelmQRDecomp_ma, ownOMP_kelmQRBackSubst_mva, _mava   parallel drivers
//
// Arrays of square matrices of orders 3 to 6 run several objects per vector
// (4 doubles or 8 floats): lane l of a value holds that quantity of object
// k + l, computed by exactly the operations the object would see on its own.
// A last block of fewer objects fills its spare lanes with copies of its last
// object and stores only the live lanes.  A block in which any object meets
// a tiny column is stored not at all and run again one object at a time, so
// an array still stops at its first failing object with the same footprint.
#pragma once

#include <emmintrin.h>

#include <cmath>
#include <cstddef>
#include <type_traits>
#include <utility>

#include "common/check.h"
#include "common/desc.h"
#include "common/dispatch.h"
#include "common/parallel.h"
#include "common/vectors.h"
#include "kelm.h"

namespace kelm {

#define KELM_QR_INLINE inline __attribute__((always_inline))

// A column whose squared norm is below epsilon is tiny (the square, not the
// norm: a 32f column of norm 1e-4 is rejected).
template <class T>
struct QrEps;
template <>
struct QrEps<float> {
    static constexpr float v = 1.1920928955078125e-07f;  // 2^-23
};
template <>
struct QrEps<double> {
    static constexpr double v = 2.220446049250313e-16;  // 2^-52
};

template <class V>
using QrElemOf = std::remove_cv_t<std::remove_reference_t<decltype(std::declval<const V&>()(0, 0))>>;

// --- lanes --------------------------------------------------------------------------
// The written-out kernels are templates over the value type: the element type
// itself for one object, or a vector of lanes for several.

template <class T>
struct QrLanes;
template <>
struct QrLanes<double> {
    using V = vx::d4;
    static constexpr int n = 4;
};
template <>
struct QrLanes<float> {
    using V = vx::f8;
    static constexpr int n = 8;
};

template <class V>
constexpr bool kIsLanes = !std::is_floating_point_v<V>;

template <class V, class T>
KELM_QR_INLINE V qr_splat(T x)
{
    if constexpr (kIsLanes<V>) {
        V r = {};
        return r + x;  // lane-wise 0 + x: exact for the constants used here
    } else {
        return V(x);
    }
}

KELM_QR_INLINE float qr_sqrt(float x) { return std::sqrt(x); }
KELM_QR_INLINE double qr_sqrt(double x) { return std::sqrt(x); }
// The square root of lanes by 128-bit halves: correctly rounded like the
// scalar one, and available to every clone.
KELM_QR_INLINE vx::d4 qr_sqrt(vx::d4 x)
{
    const __m128d lo = _mm_sqrt_pd(__m128d{x[0], x[1]}), hi = _mm_sqrt_pd(__m128d{x[2], x[3]});
    return vx::d4{lo[0], lo[1], hi[0], hi[1]};
}
KELM_QR_INLINE vx::f8 qr_sqrt(vx::f8 x)
{
    const __m128 lo = _mm_sqrt_ps(__m128{x[0], x[1], x[2], x[3]}), hi = _mm_sqrt_ps(__m128{x[4], x[5], x[6], x[7]});
    return vx::f8{lo[0], lo[1], lo[2], lo[3], hi[0], hi[1], hi[2], hi[3]};
}

// sigma keeps its sign when a > 0, else takes the negative one (a zero
// diagonal of either sign, and NaN, go negative).
KELM_QR_INLINE float qr_sign_of(float a, float sigma) { return a > 0 ? sigma : -sigma; }
KELM_QR_INLINE double qr_sign_of(double a, double sigma) { return a > 0 ? sigma : -sigma; }
template <class V>
KELM_QR_INLINE V qr_sign_of(V a, V sigma)
{
    return a > V{} ? sigma : -sigma;
}

// eps > |s2| on any lane.
template <class V, class T>
KELM_QR_INLINE bool qr_tiny(V s2, T eps)
{
    if constexpr (kIsLanes<V>) {
        const auto m = (s2 < eps) & (s2 > -eps);
        bool any = false;
        for (int l = 0; l < int(sizeof(V) / sizeof(T)); ++l) any |= m[l] != 0;
        return any;
    } else {
        return eps > std::fabs(s2);
    }
}

// --- the written-out square kernels, on a local copy ---------------------------------

// Reduces a in place; false when column k is tiny, a then holding the state
// reached (columns before k finished, the rest reduced by the reflections
// before k), exactly what the general worker leaves in its destination.
template <int N, class V, class T>
KELM_QR_INLINE bool qr_decomp_NxN(V (&a)[N][N])
{
    const T eps = QrEps<T>::v;
#pragma GCC unroll 8
    for (int k = 0; k < N - 1; ++k) {
        V s2 = qr_splat<V>(T(0));
#pragma GCC unroll 8
        for (int i = k; i < N; ++i) s2 = s2 + a[i][k] * a[i][k];
        if (qr_tiny(s2, eps)) return false;
        const V sigma = qr_sign_of(a[k][k], qr_sqrt(s2));
        const V r = qr_splat<V>(T(1)) / (a[k][k] + sigma);
        V v[N];
        V sum = qr_splat<V>(T(1));
#pragma GCC unroll 8
        for (int i = k + 1; i < N; ++i) v[i] = a[i][k] * r;
#pragma GCC unroll 8
        for (int i = k + 1; i < N; ++i) sum = sum + v[i] * v[i];
        const V beta = qr_splat<V>(T(-2)) / sum;
#pragma GCC unroll 8
        for (int j = k; j < N; ++j) {
            V t = a[k][j];
#pragma GCC unroll 8
            for (int i = k + 1; i < N; ++i) t = t + a[i][j] * v[i];
            t = t * beta;
            a[k][j] = a[k][j] + t;
#pragma GCC unroll 8
            for (int i = k + 1; i < N; ++i) a[i][j] = a[i][j] + v[i] * t;
        }
#pragma GCC unroll 8
        for (int i = k + 1; i < N; ++i) a[i][k] = v[i];
    }
    return true;
}

// c <- Q^T c, then R x = c upward; x overwrites c.
template <int N, class V, class T>
KELM_QR_INLINE void qr_solve_NxN(const V (&a)[N][N], V (&c)[N])
{
#pragma GCC unroll 8
    for (int k = 0; k < N - 1; ++k) {
        V sum = qr_splat<V>(T(1));
#pragma GCC unroll 8
        for (int i = k + 1; i < N; ++i) sum = sum + a[i][k] * a[i][k];
        const V beta = qr_splat<V>(T(-2)) / sum;
        V t = c[k];
#pragma GCC unroll 8
        for (int i = k + 1; i < N; ++i) t = t + a[i][k] * c[i];
        t = t * beta;
        c[k] = c[k] + t;
#pragma GCC unroll 8
        for (int i = k + 1; i < N; ++i) c[i] = c[i] + a[i][k] * t;
    }
#pragma GCC unroll 8
    for (int i = N - 1; i >= 0; --i) {
        V sum = qr_splat<V>(T(0));
#pragma GCC unroll 8
        for (int j = i + 1; j < N; ++j) sum = sum + a[i][j] * c[j];
        c[i] = (c[i] - sum) / a[i][i];
    }
}

// --- one object ---------------------------------------------------------------------

// Any sizes.  Copies the source into the destination first (so both may be one
// matrix with equal strides), then reduces the destination in place; the
// current vector lives in buf (h elements).
template <class SV, class DV>
kelStatus ownkelmQRDecomp_m_com(const SV& s, QrElemOf<DV>* buf, const DV& d, int w, int h)
{
    using T = QrElemOf<DV>;
    for (int i = 0; i < h; ++i)
        for (int j = 0; j < w; ++j) d(i, j) = s(i, j);
    const int K = w == h ? w - 1 : w;
    for (int k = 0; k < K; ++k) {
        T s2 = 0;
        for (int i = k; i < h; ++i) s2 = s2 + d(i, k) * d(i, k);
        if (qr_tiny(s2, QrEps<T>::v)) return kelErrTinyDivisor;
        const T a = d(k, k);
        const T sigma = qr_sign_of(a, qr_sqrt(s2));
        buf[k] = 1;
        const T r = T(1) / (a + sigma);
        for (int i = k + 1; i < h; ++i) buf[i] = d(i, k) * r;
        T sum = 1;
        for (int i = k + 1; i < h; ++i) sum = sum + buf[i] * buf[i];
        const T beta = T(-2) / sum;
        for (int j = k; j < w; ++j) {
            T t = d(k, j);
            for (int i = k + 1; i < h; ++i) t = t + d(i, j) * buf[i];
            t = t * beta;
            d(k, j) = d(k, j) + t;
            for (int i = k + 1; i < h; ++i) d(i, j) = d(i, j) + buf[i] * t;
        }
        for (int i = k + 1; i < h; ++i) d(i, k) = buf[i];
    }
    return kelOk;
}

template <int N, class V, class SV>
KELM_QR_INLINE void qr_load(const SV& s, V (&a)[N][N])
{
#pragma GCC unroll 8
    for (int i = 0; i < N; ++i)
#pragma GCC unroll 8
        for (int j = 0; j < N; ++j) a[i][j] = s(i, j);
}

template <int N, class V, class DV>
KELM_QR_INLINE void qr_store(const V (&a)[N][N], const DV& d)
{
#pragma GCC unroll 8
    for (int i = 0; i < N; ++i)
#pragma GCC unroll 8
        for (int j = 0; j < N; ++j) d(i, j) = a[i][j];
}

// Square orders 3 to 6.  On a tiny column the local state is stored, as the
// general worker would have left it.
template <int N, class SV, class DV>
kelStatus ownkelmQRDecomp_m_NxN(const SV& s, const DV& d)
{
    using T = QrElemOf<DV>;
    T a[N][N];
    qr_load<N>(s, a);
    const bool ok = qr_decomp_NxN<N, T, T>(a);
    qr_store<N>(a, d);
    return ok ? kelOk : kelErrTinyDivisor;
}

template <class SV, class DV>
kelStatus ownkelmQRDecomp_m(const SV& s, QrElemOf<DV>* buf, const DV& d, int w, int h)
{
    if (w == h) switch (w) {
        case 3: return ownkelmQRDecomp_m_NxN<3>(s, d);
        case 4: return ownkelmQRDecomp_m_NxN<4>(s, d);
        case 5: return ownkelmQRDecomp_m_NxN<5>(s, d);
        case 6: return ownkelmQRDecomp_m_NxN<6>(s, d);
        default: break;
        }
    return ownkelmQRDecomp_m_com(s, buf, d, w, h);
}

// Any sizes: b is copied into buf (h elements) and never written; x (w
// elements) is formed in buf and copied out last, so x may be b itself.
// The triangular sums start from 0 and run over increasing columns.
template <class SV, class BV, class XV>
void ownkelmQRBackSubst_mv_com(const SV& s, QrElemOf<XV>* c, const BV& b, const XV& x, int w, int h)
{
    using T = QrElemOf<XV>;
    for (int i = 0; i < h; ++i) c[i] = b[i];
    const int K = w == h ? w - 1 : w;
    for (int k = 0; k < K; ++k) {
        T sum = 1;
        for (int i = k + 1; i < h; ++i) sum = sum + s(i, k) * s(i, k);
        const T beta = T(-2) / sum;
        T t = c[k];
        for (int i = k + 1; i < h; ++i) t = t + s(i, k) * c[i];
        t = t * beta;
        c[k] = c[k] + t;
        for (int i = k + 1; i < h; ++i) c[i] = c[i] + s(i, k) * t;
    }
    for (int i = w - 1; i >= 0; --i) {
        T sum = 0;
        for (int j = i + 1; j < w; ++j) sum = sum + s(i, j) * c[j];
        c[i] = (c[i] - sum) / s(i, i);
    }
    for (int i = 0; i < w; ++i) x[i] = c[i];
}

template <int N, class SV, class BV, class XV>
void ownkelmQRBackSubst_mv_NxN(const SV& s, const BV& b, const XV& x)
{
    using T = QrElemOf<XV>;
    T a[N][N], c[N];
    qr_load<N>(s, a);
#pragma GCC unroll 8
    for (int i = 0; i < N; ++i) c[i] = b[i];
    qr_solve_NxN<N, T, T>(a, c);
#pragma GCC unroll 8
    for (int i = 0; i < N; ++i) x[i] = c[i];
}

template <class SV, class BV, class XV>
kelStatus ownkelmQRBackSubst_mv(const SV& s, QrElemOf<XV>* buf, const BV& b, const XV& x, int w, int h)
{
    if (w == h) switch (w) {
        case 3: ownkelmQRBackSubst_mv_NxN<3>(s, b, x); return kelOk;
        case 4: ownkelmQRBackSubst_mv_NxN<4>(s, b, x); return kelOk;
        case 5: ownkelmQRBackSubst_mv_NxN<5>(s, b, x); return kelOk;
        case 6: ownkelmQRBackSubst_mv_NxN<6>(s, b, x); return kelOk;
        default: break;
        }
    ownkelmQRBackSubst_mv_com(s, buf, b, x, w, h);
    return kelOk;
}

// --- several objects per vector --------------------------------------------------------

// Objects k .. k+L-1 of an array (the spare lanes of a short block repeat the
// last live object).
template <int L, class A>
struct QrBlock {
    using View = std::remove_cv_t<decltype(std::declval<const A&>()[0])>;
    View o[L];
    QrBlock(const A& arr, ptrdiff_t k, int live)
    {
#pragma GCC unroll 8
        for (int l = 0; l < L; ++l) o[l] = arr[k + (l < live ? l : live - 1)];
    }
};

// One vector from lane values f(0) .. f(L-1).
template <class V, class F, std::size_t... I>
KELM_QR_INLINE V qr_lanes(F&& f, std::index_sequence<I...>)
{
    return V{f(int(I))...};
}

template <int N, int L, class V, class View>
KELM_QR_INLINE void qr_gather(const View (&o)[L], V (&a)[N][N])
{
#pragma GCC unroll 8
    for (int i = 0; i < N; ++i)
#pragma GCC unroll 8
        for (int j = 0; j < N; ++j) a[i][j] = qr_lanes<V>([&](int l) { return o[l](i, j); }, std::make_index_sequence<L>());
}

template <int N, int L, class V, class View>
KELM_QR_INLINE void qr_gather_vec(const View (&o)[L], V (&c)[N])
{
#pragma GCC unroll 8
    for (int i = 0; i < N; ++i) c[i] = qr_lanes<V>([&](int l) { return o[l][i]; }, std::make_index_sequence<L>());
}

template <int N, int L, class V, class View>
KELM_QR_INLINE void qr_scatter(const V (&a)[N][N], const View (&o)[L], int live)
{
    for (int l = 0; l < live; ++l)
#pragma GCC unroll 8
        for (int i = 0; i < N; ++i)
#pragma GCC unroll 8
            for (int j = 0; j < N; ++j) o[l](i, j) = a[i][j][l];
}

template <int N, int L, class V, class View>
KELM_QR_INLINE void qr_scatter_vec(const V (&c)[N], const View (&o)[L], int live)
{
    for (int l = 0; l < live; ++l)
#pragma GCC unroll 8
        for (int i = 0; i < N; ++i) o[l][i] = c[i][l];
}

template <int N, class S, class D>
KELM_QR_INLINE kelStatus qr_decomp_block(const S& s, const D& d, ptrdiff_t k, int live)
{
    using T = typename D::Elem;
    using V = typename QrLanes<T>::V;
    constexpr int L = QrLanes<T>::n;
    V a[N][N];
    const QrBlock<L, S> so(s, k, live);
    qr_gather<N>(so.o, a);
    if (qr_decomp_NxN<N, V, T>(a)) {
        const QrBlock<L, D> dob(d, k, live);
        qr_scatter<N>(a, dob.o, live);
        return kelOk;
    }
    // Some object of the block is tiny: again one by one, stopping at it.
    for (int l = 0; l < live; ++l)
        if (kelStatus st = ownkelmQRDecomp_m_NxN<N>(s[k + l], d[k + l])) return st;
    return kelOk;
}

template <int N, class S, class D>
static KELM_WIDE kelStatus qr_decomp_lanes(int count, const S& s, const D& d)
{
    constexpr int L = QrLanes<typename D::Elem>::n;
    int k = 0;
    for (; k + L <= count; k += L)
        if (kelStatus st = qr_decomp_block<N>(s, d, k, L)) return st;
    if (k < count) return qr_decomp_block<N>(s, d, k, count - k);
    return kelOk;
}

// Factor k for vector k (Paired) or one factor, in every lane, for all.
template <int N, bool Paired, class S, class B, class X>
KELM_QR_INLINE void qr_solve_block(const S& s, const B& b, const X& x, ptrdiff_t k, int live)
{
    using T = typename X::Elem;
    using V = typename QrLanes<T>::V;
    constexpr int L = QrLanes<T>::n;
    V a[N][N], c[N];
    if constexpr (Paired) {
        const QrBlock<L, S> so(s, k, live);
        qr_gather<N>(so.o, a);
    } else {
        const auto f = s[0];
#pragma GCC unroll 8
        for (int i = 0; i < N; ++i)
#pragma GCC unroll 8
            for (int j = 0; j < N; ++j) a[i][j] = qr_splat<V>(T(f(i, j)));
    }
    const QrBlock<L, B> bo(b, k, live);
    qr_gather_vec<N>(bo.o, c);
    qr_solve_NxN<N, V, T>(a, c);
    const QrBlock<L, X> xo(x, k, live);
    qr_scatter_vec<N>(c, xo.o, live);
}

template <int N, bool Paired, class S, class B, class X>
static KELM_WIDE void qr_solve_lanes(int count, const S& s, const B& b, const X& x)
{
    constexpr int L = QrLanes<typename X::Elem>::n;
    int k = 0;
    for (; k + L <= count; k += L) qr_solve_block<N, Paired>(s, b, x, k, L);
    if (k < count) qr_solve_block<N, Paired>(s, b, x, k, count - k);
}

// --- arrays ------------------------------------------------------------------------------

// Objects in order; the first tiny column stops the array (the objects before
// it are complete, the ones after it untouched).
template <class S, class D>
kelStatus ownkelmQRDecomp_ma(int count, const S& s, typename D::Elem* buf, const D& d, int w, int h)
{
    if (w == h) switch (w) {
        case 3: return qr_decomp_lanes<3>(count, s, d);
        case 4: return qr_decomp_lanes<4>(count, s, d);
        case 5: return qr_decomp_lanes<5>(count, s, d);
        case 6: return qr_decomp_lanes<6>(count, s, d);
        default: break;
        }
    for (int k = 0; k < count; ++k)
        if (kelStatus st = ownkelmQRDecomp_m_com(s[k], buf, d[k], w, h)) return st;
    return kelOk;
}

// One factor for every vector.
template <class S, class B, class X>
kelStatus ownkelmQRBackSubst_mva(int count, const S& s, typename X::Elem* buf, const B& b, const X& x, int w, int h)
{
    if (w == h) switch (w) {
        case 3: qr_solve_lanes<3, false>(count, s, b, x); return kelOk;
        case 4: qr_solve_lanes<4, false>(count, s, b, x); return kelOk;
        case 5: qr_solve_lanes<5, false>(count, s, b, x); return kelOk;
        case 6: qr_solve_lanes<6, false>(count, s, b, x); return kelOk;
        default: break;
        }
    for (int k = 0; k < count; ++k) ownkelmQRBackSubst_mv_com(s[0], buf, b[k], x[k], w, h);
    return kelOk;
}

// Factor k for vector k.
template <class S, class B, class X>
kelStatus ownkelmQRBackSubst_mava(int count, const S& s, typename X::Elem* buf, const B& b, const X& x, int w, int h)
{
    if (w == h) switch (w) {
        case 3: qr_solve_lanes<3, true>(count, s, b, x); return kelOk;
        case 4: qr_solve_lanes<4, true>(count, s, b, x); return kelOk;
        case 5: qr_solve_lanes<5, true>(count, s, b, x); return kelOk;
        case 6: qr_solve_lanes<6, true>(count, s, b, x); return kelOk;
        default: break;
        }
    for (int k = 0; k < count; ++k) ownkelmQRBackSubst_mv_com(s[k], buf, b[k], x[k], w, h);
    return kelOk;
}

// --- going parallel --------------------------------------------------------------------

// Signed 32-bit work measures, parallel strictly above 1800.
inline bool qr_decomp_parallel(int w, int h, int count) { return I32(w) * h * 2 * count > 1800; }
inline bool qr_mva_parallel(int w, int h, int count) { return I32(w) * h + (I32(w) + h) * count > 1800; }
inline bool qr_mava_parallel(int w, int h, int count) { return (I32(w) * (I32(h) + 1) + h) * count > 1800; }

// The drivers never touch the caller's buffer in a parallel region: every
// thread gets an h-element slice of a block of their own.
template <class S, class D>
kelStatus ownOMP_kelmQRDecomp_ma(int count, const S& s, typename D::Elem* buf, const D& d, int w, int h)
{
    using T = typename D::Elem;
    return with_unit_strides(
        [&](const auto& su, const auto& du) {
            return split_with_workspace(count, std::size_t(h) * sizeof(T), buf, [&](int first, int mine, void* ws) {
                return ownkelmQRDecomp_ma(mine, su.from(first), static_cast<T*>(ws), du.from(first), w, h);
            });
        },
        s, d);
}

template <class S, class B, class X>
kelStatus ownOMP_kelmQRBackSubst_mva(int count, const S& s, typename X::Elem* buf, const B& b, const X& x, int w, int h)
{
    using T = typename X::Elem;
    return with_unit_strides(
        [&](const auto& su, const auto& bu, const auto& xu) {
            return split_with_workspace(count, std::size_t(h) * sizeof(T), buf, [&](int first, int mine, void* ws) {
                return ownkelmQRBackSubst_mva(mine, su, static_cast<T*>(ws), bu.from(first), xu.from(first), w, h);
            });
        },
        s, b, x);
}

template <class S, class B, class X>
kelStatus ownOMP_kelmQRBackSubst_mava(int count, const S& s, typename X::Elem* buf, const B& b, const X& x, int w, int h)
{
    using T = typename X::Elem;
    return with_unit_strides(
        [&](const auto& su, const auto& bu, const auto& xu) {
            return split_with_workspace(count, std::size_t(h) * sizeof(T), buf, [&](int first, int mine, void* ws) {
                return ownkelmQRBackSubst_mava(mine, su.from(first), static_cast<T*>(ws), bu.from(first), xu.from(first),
                                                w, h);
            });
        },
        s, b, x);
}

template <class S, class D>
kelStatus qr_decomp_array(int count, const S& s, typename D::Elem* buf, const D& d, int w, int h)
{
    if (qr_decomp_parallel(w, h, count)) return ownOMP_kelmQRDecomp_ma(count, s, buf, d, w, h);
    return with_unit_strides(
        [&](const auto& su, const auto& du) { return ownkelmQRDecomp_ma(count, su, buf, du, w, h); }, s, d);
}

template <class S, class B, class X>
kelStatus qr_mva_array(int count, const S& s, typename X::Elem* buf, const B& b, const X& x, int w, int h)
{
    if (qr_mva_parallel(w, h, count)) return ownOMP_kelmQRBackSubst_mva(count, s, buf, b, x, w, h);
    return with_unit_strides(
        [&](const auto& su, const auto& bu, const auto& xu) {
            return ownkelmQRBackSubst_mva(count, su, buf, bu, xu, w, h);
        },
        s, b, x);
}

template <class S, class B, class X>
kelStatus qr_mava_array(int count, const S& s, typename X::Elem* buf, const B& b, const X& x, int w, int h)
{
    if (qr_mava_parallel(w, h, count)) return ownOMP_kelmQRBackSubst_mava(count, s, buf, b, x, w, h);
    return with_unit_strides(
        [&](const auto& su, const auto& bu, const auto& xu) {
            return ownkelmQRBackSubst_mava(count, su, buf, bu, xu, w, h);
        },
        s, b, x);
}

}  // namespace kelm
