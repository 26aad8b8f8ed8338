// Cholesky decomposition A = L*L^T of symmetric positive definite matrices,
// and the back substitution that reads its factor.
//
// Factor layout, shared by the two operations: entry (i, j) below the
// diagonal holds l[i][j], the diagonal entry (i, i) holds the reciprocal
// 1/l[i][i], and nothing above the diagonal is ever written.  Only the lower
// triangle of the source (j <= i) is read.  The back substitution multiplies
// by the stored reciprocals and never divides.
//
// Decomposition, row by row: l[i][j] = (a[i][j] - l[i][0]*l[j][0] - ...
// - l[i][j-1]*l[j][j-1]) * (1/l[j][j]), one product subtracted at a time in
// increasing k; then the diagonal s = a[i][i] - l[i][0]^2 - ... fails unless
// s > 0 (so a NaN fails) and stores 1/sqrt(s) (a square root, then one
// division).  On failure the finished rows and the off-diagonal entries of
// the failing row stay written.
//
// The 32f array form with contiguous elements and orders 3 to 6 runs four
// matrices at a time in four-lane vectors (CholoDec_32f_V8): there the
// reciprocal square root is the processor's estimate refined by one Newton
// step, r = (0.5*r0) * (3 - s*(r0*r0)), and a row fails only when s <= 0 in a
// lane (a NaN passes).  The estimate comes from a table in the processor, so
// those results are reproducible on one machine, not across makers.  A group
// stores each row of its four matrices once the row has passed its test: on
// failure the group's finished rows are written, the failing row is not.
//
// Contiguous 64f arrays of orders 3 to 6 also run four matrices at a time
// (four doubles per vector), but with the exact root and test of the one-
// matrix kernel, so every lane gives that kernel's bits.  Such a group stores
// nothing until all its lanes have passed; a group with a failing lane is
// done again one matrix at a time, which writes and stops as the array
// kernel always does.
//
// Back substitution: forward y[i] = (b[i] - l[i][0]*y[0] - ...) * d[i][i] into
// the destination, then backward x[i] = (y[i] - l[n-1][i]*x[n-1] - ... -
// l[i+1][i]*x[i+1]) * d[i][i].  Every path (written out, looped, four vectors
// or four factor-vector pairs at a time) gives the same bits.
//
// Kernels are templates over the object views and descriptions of desc.h;
// the view or description type picks the variant: contiguous
// (DenseView<T, true>, Strided<T, true>), general element stride (_S2),
// per-element pointers (_P), lists (_L with unit element strides, _LS2
// otherwise).
//
//   ownkelmCholeskyDecomp_m_NxN<N>   orders 3 to 6, written out on locals
//   ownkelmCholeskyDecomp_m_com      every other order, in the destination
//   ownkelmCholeskyDecomp_m          one matrix: picks one of the two
//   ownkelmCholeskyDecomp_ma         an array, stops at the first failure
//   ownkelmCholeskyBackSubst_mv_NxN<N>, _mv_com, _mv
//   ownkelmCholeskyBackSubst_mva     one factor, an array of vectors
//   ownkelmCholeskyBackSubst_mava    arrays of factors and vectors, paired
//   chol4_*                          the group kernels, four objects per vector
#pragma once

#include <emmintrin.h>
#include <xmmintrin.h>

#include <cmath>
#include <cstddef>
#include <type_traits>

#include "common/check.h"
#include "common/desc.h"
#include "common/dispatch.h"
#include "common/parallel.h"
#include "common/vectors.h"
#include "kelm.h"

#define KELM_CHOL_INLINE inline __attribute__((always_inline))
// The group kernels' helpers must be inlined into each clone of the object
// loop: one left out of line runs the baseline instructions and passes the
// vectors through memory.  So the written-out loops below are unrolled by
// vx::unrolled, with always-inlined bodies (KELM_CHOL_BODY after a lambda's
// parameters).
#define KELM_CHOL_BODY __attribute__((always_inline))

namespace kelm {

template <class V>
using CholElem = std::remove_reference_t<decltype(std::declval<const V&>()(0, 0))>;

using vx::d4;
using vx::f4;

// --- the diagonal step --------------------------------------------------------------

// Every path but the four-lane one: fails unless s > 0; 1/sqrt(s).
struct ExactRoot {
    template <class T>
    static KELM_CHOL_INLINE bool fails(T s) { return !(s > T(0)); }
    template <class T>
    static KELM_CHOL_INLINE T recip(T s) { return T(1) / std::sqrt(s); }
};

// Four lanes: fails when s <= 0 in any lane; the estimate plus one Newton step.
struct EstimatedRoot {
    static KELM_CHOL_INLINE bool fails(f4 s)
    {
        return _mm_movemask_ps(_mm_cmple_ps(__m128(s), _mm_setzero_ps())) != 0;
    }
    static KELM_CHOL_INLINE f4 recip(f4 s)
    {
        const f4 r0 = f4(_mm_rsqrt_ps(__m128(s)));
        return (0.5f * r0) * (3.0f - s * (r0 * r0));
    }
};

// Four lanes of doubles, the exact path: fails unless s > 0 in every lane
// (a NaN fails); a correctly rounded square root, then one division, per lane.
struct ExactRootLanes {
    static KELM_CHOL_INLINE bool fails(d4 s)
    {
        const __m128d zero = _mm_setzero_pd();
        return (_mm_movemask_pd(_mm_cmpngt_pd(__m128d(__builtin_shufflevector(s, s, 0, 1)), zero)) |
                _mm_movemask_pd(_mm_cmpngt_pd(__m128d(__builtin_shufflevector(s, s, 2, 3)), zero))) != 0;
    }
    static KELM_CHOL_INLINE d4 recip(d4 s)
    {
        const __m128d lo = _mm_sqrt_pd(__m128d(__builtin_shufflevector(s, s, 0, 1)));
        const __m128d hi = _mm_sqrt_pd(__m128d(__builtin_shufflevector(s, s, 2, 3)));
        return 1.0 / d4(__builtin_shufflevector(vx::d2(lo), vx::d2(hi), 0, 1, 2, 3));
    }
};

// --- the arithmetic of one factor of order N, on locals -------------------------------
// a[i][j] (j <= i) in, l[i][j] out.  row(i, passed) is called once the
// off-diagonal entries of row i and its diagonal test are done: passed, the
// row is complete; not passed, the factor stops there.  Returns kelOk or
// kelErrNotPosDef.  V is the element type or four lanes of floats.
template <int N, class Root, class V, class Row>
KELM_CHOL_INLINE kelStatus chol_factor(const V (&a)[N][N], V (&l)[N][N], Row&& row)
{
#pragma GCC unroll 8
    for (int i = 0; i < N; ++i) {
#pragma GCC unroll 8
        for (int j = 0; j < i; ++j) {
            V v = a[i][j];
#pragma GCC unroll 8
            for (int k = 0; k < j; ++k) v = v - l[i][k] * l[j][k];
            l[i][j] = v * l[j][j];
        }
        V v = a[i][i];
#pragma GCC unroll 8
        for (int k = 0; k < i; ++k) v = v - l[i][k] * l[i][k];
        if (Root::fails(v)) {
            row(i, false);
            return kelErrNotPosDef;
        }
        l[i][i] = Root::recip(v);
        row(i, true);
    }
    return kelOk;
}

// Solves with a factor held in locals: x holds b on entry and the solution on
// return.  F is the factor's element (a scalar, or lanes of four factors), V
// the vector's.  For the last row the forward and the first backward step
// meet: x[N-1] = (b[N-1] - l[N-1][0]*y[0] - ...) * d * d.
template <int N, class F, class V>
KELM_CHOL_INLINE void chol_solve(const F (&l)[N][N], V (&x)[N])
{
#pragma GCC unroll 8
    for (int i = 0; i < N; ++i) {
        V v = x[i];
#pragma GCC unroll 8
        for (int k = 0; k < i; ++k) v = v - l[i][k] * x[k];
        x[i] = v * l[i][i];
    }
#pragma GCC unroll 8
    for (int i = N - 1; i >= 0; --i) {
        V v = x[i];
#pragma GCC unroll 8
        for (int k = N - 1; k > i; --k) v = v - l[k][i] * x[k];
        x[i] = v * l[i][i];
    }
}

// --- decomposition, one matrix ---------------------------------------------------------

template <int N, class SV, class DV>
kelStatus ownkelmCholeskyDecomp_m_NxN(const SV& s, const DV& d)
{
    using T = CholElem<DV>;
    T a[N][N], l[N][N];
#pragma GCC unroll 8
    for (int i = 0; i < N; ++i)
#pragma GCC unroll 8
        for (int j = 0; j <= i; ++j) a[i][j] = s(i, j);
    return chol_factor<N, ExactRoot>(a, l, [&](int i, bool passed) KELM_CHOL_BODY {
#pragma GCC unroll 8
        for (int j = 0; j < i; ++j) d(i, j) = l[i][j];
        if (passed) d(i, i) = l[i][i];
    });
}

// Any order, working in the destination (which may be the source).
template <class SV, class DV>
kelStatus ownkelmCholeskyDecomp_m_com(const SV& s, const DV& d, int n)
{
    using T = CholElem<DV>;
    for (int i = 0; i < n; ++i) {
        for (int j = 0; j < i; ++j) {
            T v = s(i, j);
            for (int k = 0; k < j; ++k) v = v - d(i, k) * d(j, k);
            d(i, j) = v * d(j, j);
        }
        T v = s(i, i);
        for (int k = 0; k < i; ++k) v = v - d(i, k) * d(i, k);
        if (ExactRoot::fails(v)) return kelErrNotPosDef;
        d(i, i) = ExactRoot::recip(v);
    }
    return kelOk;
}

template <class SV, class DV>
kelStatus ownkelmCholeskyDecomp_m(const SV& s, const DV& d, int n)
{
    switch (n) {
    case 3: return ownkelmCholeskyDecomp_m_NxN<3>(s, d);
    case 4: return ownkelmCholeskyDecomp_m_NxN<4>(s, d);
    case 5: return ownkelmCholeskyDecomp_m_NxN<5>(s, d);
    case 6: return ownkelmCholeskyDecomp_m_NxN<6>(s, d);
    default: return ownkelmCholeskyDecomp_m_com(s, d, n);
    }
}

// --- back substitution, one vector ---------------------------------------------------------

template <int N, class SV, class BV, class DV>
void ownkelmCholeskyBackSubst_mv_NxN(const SV& s, const BV& b, const DV& x)
{
    using T = CholElem<DV>;
    T l[N][N], v[N];
#pragma GCC unroll 8
    for (int i = 0; i < N; ++i) {
#pragma GCC unroll 8
        for (int j = 0; j <= i; ++j) l[i][j] = s(i, j);
        v[i] = b[i];
    }
    chol_solve<N>(l, v);
#pragma GCC unroll 8
    for (int i = 0; i < N; ++i) x[i] = v[i];
}

// Any order: y is kept in the destination.
template <class SV, class BV, class DV>
void ownkelmCholeskyBackSubst_mv_com(const SV& s, const BV& b, const DV& x, int n)
{
    using T = CholElem<DV>;
    for (int i = 0; i < n; ++i) {
        T v = b[i];
        for (int k = 0; k < i; ++k) v = v - s(i, k) * x[k];
        x[i] = v * s(i, i);
    }
    for (int i = n - 1; i >= 0; --i) {
        T v = x[i];
        for (int k = n - 1; k > i; --k) v = v - s(k, i) * x[k];
        x[i] = v * s(i, i);
    }
}

template <class SV, class BV, class DV>
kelStatus ownkelmCholeskyBackSubst_mv(const SV& s, const BV& b, const DV& x, int n)
{
    switch (n) {
    case 3: ownkelmCholeskyBackSubst_mv_NxN<3>(s, b, x); break;
    case 4: ownkelmCholeskyBackSubst_mv_NxN<4>(s, b, x); break;
    case 5: ownkelmCholeskyBackSubst_mv_NxN<5>(s, b, x); break;
    case 6: ownkelmCholeskyBackSubst_mv_NxN<6>(s, b, x); break;
    default: ownkelmCholeskyBackSubst_mv_com(s, b, x, n); break;
    }
    return kelOk;
}

// --- four lanes: groups of objects ----------------------------------------------------------------
// Lane q of a group holds object k + q: four floats (f4) or four doubles (d4)
// per vector.  A short group (the last count mod 4 objects of a 64f array,
// or one 32f object on its own) repeats its last object in the spare lanes
// and stores only its live lanes, so it runs the very same instructions.

template <class T>
struct Lanes4;
template <>
struct Lanes4<float> {
    using type = f4;
};
template <>
struct Lanes4<double> {
    using type = d4;
};

template <class O>
struct Group {
    using Obj = O;
    using Elem = std::remove_reference_t<decltype(std::declval<const O&>()(0, 0))>;
    using V = typename Lanes4<Elem>::type;
    O o[4];
    int live;
};

// Rows of contiguous elements: whole runs are loaded and stored and turned
// between objects and lanes by four-by-four transposes.
template <class G>
constexpr bool kDenseRows = std::is_same_v<typename G::Obj, DenseView<typename G::Elem, true>>;

template <class D>
KELM_CHOL_INLINE auto group_of(const D& d, ptrdiff_t k, int live)
{
    auto at = [&](int q) { return d[k + (q < live ? q : live - 1)]; };
    return Group<std::remove_const_t<decltype(d[k])>>{{at(0), at(1), at(2), at(3)}, live};
}

// Element (i, j) of the four objects as lanes.
template <class G>
KELM_CHOL_INLINE auto lanes_at(const G& g, int i, int j)
{
    return typename G::V{g.o[0](i, j), g.o[1](i, j), g.o[2](i, j), g.o[3](i, j)};
}

template <class G, class V>
KELM_CHOL_INLINE void store_lanes(const G& g, int i, int j, V v)
{
    g.o[0](i, j) = v[0];
    if (g.live > 1) g.o[1](i, j) = v[1];
    if (g.live > 2) g.o[2](i, j) = v[2];
    if (g.live > 3) g.o[3](i, j) = v[3];
}

// Elements 0..W-1 of row i of the four objects, as lanes (only those are read).
template <int W, class G>
KELM_CHOL_INLINE void load_row(const G& g, int i, typename G::V* out)
{
    using V = typename G::V;
    if constexpr (kDenseRows<G>) {
        vx::unrolled<0, (W + 3) / 4>([&](auto c) KELM_CHOL_BODY {
            constexpr int j0 = 4 * int(c), w = W - j0 < 4 ? W - j0 : 4;
            V r0 = vx::load<V, w>(&g.o[0](i, j0)), r1 = vx::load<V, w>(&g.o[1](i, j0));
            V r2 = vx::load<V, w>(&g.o[2](i, j0)), r3 = vx::load<V, w>(&g.o[3](i, j0));
            vx::transpose4(r0, r1, r2, r3);
            const V r[4] = {r0, r1, r2, r3};
#pragma GCC unroll 4
            for (int j = 0; j < w; ++j) out[j0 + j] = r[j];
        });
    } else {
#pragma GCC unroll 8
        for (int j = 0; j < W; ++j) out[j] = lanes_at(g, i, j);
    }
}

// Stores elements 0..W-1 of row i of the live objects (only those are written).
template <int W, class G>
KELM_CHOL_INLINE void store_row(const G& g, int i, const typename G::V* in)
{
    using V = typename G::V;
    if constexpr (kDenseRows<G>) {
        vx::unrolled<0, (W + 3) / 4>([&](auto c) KELM_CHOL_BODY {
            constexpr int j0 = 4 * int(c), w = W - j0 < 4 ? W - j0 : 4;
            V r0 = in[j0], r1 = in[j0 + (w > 1)], r2 = in[j0 + (w > 2 ? 2 : 0)], r3 = in[j0 + (w > 3 ? 3 : 0)];
            vx::transpose4(r0, r1, r2, r3);
            vx::store<w>(&g.o[0](i, j0), r0);
            if (g.live > 1) vx::store<w>(&g.o[1](i, j0), r1);
            if (g.live > 2) vx::store<w>(&g.o[2](i, j0), r2);
            if (g.live > 3) vx::store<w>(&g.o[3](i, j0), r3);
        });
    } else {
#pragma GCC unroll 8
        for (int j = 0; j < W; ++j) store_lanes(g, i, j, in[j]);
    }
}

// Decomposition of one group of order N: the source's lower triangle as
// lanes, the rows stored as they pass.
template <int N, class GS, class GD>
KELM_CHOL_INLINE kelStatus chol4_decomp_group(const GS& s, const GD& d)
{
    f4 a[N][N], l[N][N];
    vx::unrolled<0, N>([&](auto i) KELM_CHOL_BODY { load_row<i + 1>(s, i, a[i]); });
    return chol_factor<N, EstimatedRoot>(a, l, [&](int i, bool passed) KELM_CHOL_BODY {
        if (!passed) return;
        vx::unrolled<0, N>([&](auto r) KELM_CHOL_BODY {
            if (r == i) store_row<r + 1>(d, r, l[r]);
        });
    });
}

// The same on four 64f matrices with the exact root: nothing is stored
// unless every lane passes every row.  Returns whether they all passed.
template <int N, class GS, class GD>
KELM_CHOL_INLINE bool chol4_decomp_exact_group(const GS& s, const GD& d)
{
    d4 a[N][N], l[N][N];
    vx::unrolled<0, N>([&](auto i) KELM_CHOL_BODY { load_row<i + 1>(s, i, a[i]); });
    if (chol_factor<N, ExactRootLanes>(a, l, [](int, bool) KELM_CHOL_BODY {}) != kelOk) return false;
    vx::unrolled<0, N>([&](auto i) KELM_CHOL_BODY { store_row<i + 1>(d, i, l[i]); });
    return true;
}

// 64f matrices four at a time (a short last group repeats its last matrix).
// A group with a failing lane is done again one matrix at a time, which
// writes and stops exactly as the one-matrix kernel does.
template <int N, class S, class D>
static KELM_WIDE kelStatus chol4_decomp_exact(const S& s, const D& d, int count)
{
    for (int k = 0; k < count; k += 4) {
        const int live = count - k < 4 ? count - k : 4;
        if (chol4_decomp_exact_group<N>(group_of(s, k, live), group_of(d, k, live))) continue;
        for (int q = k; q < k + live; ++q)
            if (kelStatus st = ownkelmCholeskyDecomp_m_NxN<N>(s[q], d[q])) return st;
    }
    return kelOk;
}

// Back substitution of one group of vectors with one factor held in locals
// (F = T) or of a group of factor-vector pairs (F = the lanes).
template <int N, class F, class GB, class GX>
KELM_CHOL_INLINE void chol4_solve_group(const F (&l)[N][N], const GB& b, const GX& x)
{
    typename GX::V v[N];
    load_row<N>(b, 0, v);
    chol_solve<N>(l, v);
    store_row<N>(x, 0, v);
}

// Factor-vector pairs four at a time (factor q with vector q in lane q; a
// short last group repeats its last pair): the same operations per lane as
// one pair alone.
template <int N, class S, class B>
static KELM_WIDE void chol4_mava(const S& s, const B& b, const B& x, int count)
{
    for (int k = 0; k < count; k += 4) {
        const int live = count - k < 4 ? count - k : 4;
        const auto f = group_of(s, k, live);
        typename decltype(f)::V l[N][N];
        vx::unrolled<0, N>([&](auto i) KELM_CHOL_BODY { load_row<i + 1>(f, i, l[i]); });
        chol4_solve_group<N>(l, group_of(b, k, live), group_of(x, k, live));
    }
}

// One factor, vectors four at a time for any order: y lives in the
// destination as in the looped kernel, the same operations per lane.
template <class SV, class GB, class GX>
KELM_CHOL_INLINE void chol4_solve_group_com(const SV& s, const GB& b, const GX& x, int n)
{
    for (int i = 0; i < n; ++i) {
        auto v = lanes_at(b, 0, i);
        for (int k = 0; k < i; ++k) v = v - s(i, k) * lanes_at(x, 0, k);
        store_lanes(x, 0, i, v * s(i, i));
    }
    for (int i = n - 1; i >= 0; --i) {
        auto v = lanes_at(x, 0, i);
        for (int k = n - 1; k > i; --k) v = v - s(k, i) * lanes_at(x, 0, k);
        store_lanes(x, 0, i, v * s(i, i));
    }
}

// --- arrays ---------------------------------------------------------------------------------

template <class S, class D>
constexpr bool kFourLaneDecomp = std::is_same_v<S, Strided<float, true>> && std::is_same_v<D, Strided<float, true>>;
// Arrays whose objects are rows of contiguous elements (strided or listed).
template <class A>
constexpr bool kDenseObjects = std::is_same_v<decltype(std::declval<const A&>()[0]), DenseView<typename A::Elem, true>>;
template <class S, class D>
constexpr bool kExactLaneDecomp = std::is_same_v<typename D::Elem, double> && kDenseObjects<S> && kDenseObjects<D>;
template <class B, class D>
constexpr bool kFourLaneSolve = (std::is_same_v<B, Strided<float, true>> && std::is_same_v<D, Strided<float, true>>) ||
                                (std::is_same_v<B, Strided<float, false>> && std::is_same_v<D, Strided<float, false>>);

// Objects in order; the first failure stops the array (earlier objects are
// complete, later ones untouched).  The contiguous 32f strided form of orders
// 3 to 6 is the four-lane kernel; contiguous 64f objects of those orders go
// four at a time with the exact root (the same bits as one at a time).
template <class S, class D>
kelStatus ownkelmCholeskyDecomp_ma(int count, const S& s, const D& d, int n)
{
    if constexpr (kFourLaneDecomp<S, D>) {
        if (n >= 3 && n <= 6)
            return CholoDec_32f_V8(reinterpret_cast<const float*>(s.base), int(s.obj), int(s.row),
                                   reinterpret_cast<float*>(d.base), int(d.obj), int(d.row), n, count);
    }
    if constexpr (kExactLaneDecomp<S, D>) {
        switch (n) {
        case 3: return chol4_decomp_exact<3>(s, d, count);
        case 4: return chol4_decomp_exact<4>(s, d, count);
        case 5: return chol4_decomp_exact<5>(s, d, count);
        case 6: return chol4_decomp_exact<6>(s, d, count);
        default: break;
        }
    }
    for (int k = 0; k < count; ++k)
        if (kelStatus st = ownkelmCholeskyDecomp_m(s[k], d[k], n)) return st;
    return kelOk;
}

// One factor for every vector; the 32f strided forms go four vectors at a time.
template <class S, class B, class D>
kelStatus ownkelmCholeskyBackSubst_mva(int count, const S& s, const B& b, const D& x, int n)
{
    if constexpr (kFourLaneSolve<B, D> && std::is_same_v<B, Strided<float, true>>) {
        return CholBackSubst_32f_V8(reinterpret_cast<const float*>(s.base), int(s.row),
                                    reinterpret_cast<const float*>(b.base), int(b.obj),
                                    reinterpret_cast<float*>(x.base), int(x.obj), n, count);
    } else if constexpr (kFourLaneSolve<B, D>) {
        return CholBackSubst_32f_S2_V8(reinterpret_cast<const float*>(s.base), int(s.row), int(s.elem),
                                       reinterpret_cast<const float*>(b.base), int(b.obj), int(b.elem),
                                       reinterpret_cast<float*>(x.base), int(x.obj), int(x.elem), n, count);
    } else {
        for (int k = 0; k < count; ++k) ownkelmCholeskyBackSubst_mv(s[0], b[k], x[k], n);
        return kelOk;
    }
}

// Factor k for vector k; contiguous objects of orders 3 to 6 go four pairs
// at a time (the same bits).
template <class S, class B, class D>
kelStatus ownkelmCholeskyBackSubst_mava(int count, const S& s, const B& b, const D& x, int n)
{
    if constexpr (kDenseObjects<S> && kDenseObjects<D> && std::is_same_v<B, D>) {
        switch (n) {
        case 3: chol4_mava<3>(s, b, x, count); return kelOk;
        case 4: chol4_mava<4>(s, b, x, count); return kelOk;
        case 5: chol4_mava<5>(s, b, x, count); return kelOk;
        case 6: chol4_mava<6>(s, b, x, count); return kelOk;
        default: break;
        }
    }
    for (int k = 0; k < count; ++k) ownkelmCholeskyBackSubst_mv(s[k], b[k], x[k], n);
    return kelOk;
}

// --- going parallel ------------------------------------------------------------------------------
// An array goes parallel when its measure (signed 32-bit, wrapping) exceeds
// the bound of its member and path.  The bounds differ from member to member
// on purpose: each was tuned by itself.  Pointer forms have one path.

struct CholBound {
    int contig, general;
};
template <class T>
struct CholBounds;
template <>
struct CholBounds<float> {
    static constexpr CholBound decomp{7500, 7500}, decomp_L{2000, 2000}, decomp_P{2000, 2000};
    static constexpr CholBound mva{1200, 1200}, mva_L{720, 720}, mva_P{720, 720};
    static constexpr CholBound mava{2050, 1700}, mava_L{1700, 1700}, mava_P{1700, 1700};
};
template <>
struct CholBounds<double> {
    static constexpr CholBound decomp{2000, 2000}, decomp_L{720, 2000}, decomp_P{2000, 2000};
    static constexpr CholBound mva{720, 720}, mva_L{720, 720}, mva_P{720, 720};
    static constexpr CholBound mava{1700, 1700}, mava_L{1700, 1700}, mava_P{2050, 2050};
};

// Measures: n*n*count, n*(n + 2*count) (one factor), n*(n + 2)*count (pairs).
inline I32 chol_decomp_measure(int n, int count) { return I32(n) * n * count; }
inline I32 chol_mva_measure(int n, int count) { return I32(n) * (I32(n) + I32(2) * count); }
inline I32 chol_mava_measure(int n, int count) { return I32(n) * (I32(n) + 2) * count; }

template <class... D>
inline bool chol_parallel(I32 measure, CholBound bound, const D&... d)
{
    return measure > ((d.unit() && ...) ? bound.contig : bound.general);
}

// Parallel drivers: each thread runs the serial kernel of the same form on its
// run of objects (the one factor of mva has object stride 0 and stays put).
template <class S, class D>
kelStatus ownOMP_kelmCholeskyDecomp_ma(int count, const S& s, const D& d, int n)
{
    return with_unit_strides(
        [&](const auto& su, const auto& du) {
            return split_over(
                count, [&](int mine, const auto& sf, const auto& df) { return ownkelmCholeskyDecomp_ma(mine, sf, df, n); },
                su, du);
        },
        s, d);
}

template <class S, class B, class D>
kelStatus ownOMP_kelmCholeskyBackSubst_mva(int count, const S& s, const B& b, const D& x, int n)
{
    return with_unit_strides(
        [&](const auto& su, const auto& bu, const auto& xu) {
            return split_over(
                count,
                [&](int mine, const auto& sf, const auto& bf, const auto& xf) {
                    return ownkelmCholeskyBackSubst_mva(mine, sf, bf, xf, n);
                },
                su, bu, xu);
        },
        s, b, x);
}

template <class S, class B, class D>
kelStatus ownOMP_kelmCholeskyBackSubst_mava(int count, const S& s, const B& b, const D& x, int n)
{
    return with_unit_strides(
        [&](const auto& su, const auto& bu, const auto& xu) {
            return split_over(
                count,
                [&](int mine, const auto& sf, const auto& bf, const auto& xf) {
                    return ownkelmCholeskyBackSubst_mava(mine, sf, bf, xf, n);
                },
                su, bu, xu);
        },
        s, b, x);
}

// The entries' last step: serial or parallel, then the contiguous or
// general-stride kernel.
template <class S, class D>
kelStatus chol_decomp_array(CholBound bound, int count, const S& s, const D& d, int n)
{
    if (chol_parallel(chol_decomp_measure(n, count), bound, s, d)) return ownOMP_kelmCholeskyDecomp_ma(count, s, d, n);
    return with_unit_strides([&](const auto& su, const auto& du) { return ownkelmCholeskyDecomp_ma(count, su, du, n); },
                             s, d);
}

template <class S, class B, class D>
kelStatus chol_mva_array(CholBound bound, int count, const S& s, const B& b, const D& x, int n)
{
    if (chol_parallel(chol_mva_measure(n, count), bound, s, b, x))
        return ownOMP_kelmCholeskyBackSubst_mva(count, s, b, x, n);
    return with_unit_strides(
        [&](const auto& su, const auto& bu, const auto& xu) { return ownkelmCholeskyBackSubst_mva(count, su, bu, xu, n); },
        s, b, x);
}

template <class S, class B, class D>
kelStatus chol_mava_array(CholBound bound, int count, const S& s, const B& b, const D& x, int n)
{
    if (chol_parallel(chol_mava_measure(n, count), bound, s, b, x))
        return ownOMP_kelmCholeskyBackSubst_mava(count, s, b, x, n);
    return with_unit_strides(
        [&](const auto& su, const auto& bu, const auto& xu) { return ownkelmCholeskyBackSubst_mava(count, su, bu, xu, n); },
        s, b, x);
}

}  // namespace kelm
