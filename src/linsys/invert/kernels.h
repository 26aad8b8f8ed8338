// Matrix inversion.
//
//   order 1        the reciprocal, in the entries (inv_order1), never parallel
//   orders 3..6    closed-form adjugate times one reciprocal of the determinant
//                  (ownkelmInvert_m_NxN for one matrix, inv_closed_forms_ma for
//                  arrays, several matrices per vector)
//   order 2, 7 up  the adjugate from the (n-1)-order minors, each by Gaussian
//                  elimination with partial pivoting in the caller's buffer
//                  (ownkelmInvert_m_com)
//
// The view or description type picks the variant: contiguous (DenseView<T,
// true>, Strided<T, true>, List<T, true>), general element stride (_S2,
// _LS2), per-element pointers (_P).  Every variant gives the same bits; they
// differ only in the singularity bound: tau(n) = 2*n^3 * (smallest normal),
// except the contiguous 64f kernels of orders 3 and 4, which use 4*n^3.
// Callers see that difference (a 64f 3x3 with determinant 2e-306 is inverted
// with an element stride of 16 and refused with 8), so it stays.
//
// The three failure tests differ at equality on purpose: the closed forms and
// the elimination's pivots pass at |x| == tau, order 1 and the elimination's
// final determinant fail there.  NaN fails all three.
#pragma once

#include <cmath>
#include <cstddef>
#include <limits>
#include <type_traits>
#include <utility>

#include "common/check.h"
#include "common/desc.h"
#include "common/dispatch.h"
#include "common/parallel.h"
#include "common/pivot.h"
#include "common/vectors.h"
#include "kelm.h"

namespace kelm {

#define KELM_INV_INLINE inline __attribute__((always_inline))

template <class V>
using InvElem = std::remove_cv_t<std::remove_reference_t<decltype(std::declval<const V&>()(0, 0))>>;

template <class V>
constexpr bool kInvContiguous = false;
template <class T>
constexpr bool kInvContiguous<DenseView<T, true>> = true;

// The singularity bound of order n for a kernel over views of type V.
template <class T, class V>
inline T inv_tau(int n)
{
    const long long c = (std::is_same_v<T, double> && kInvContiguous<V> && (n == 3 || n == 4)) ? 4 : 2;
    return T(c * n * n * n) * std::numeric_limits<T>::min();
}

// --- closed forms, orders 3 to 6 -----------------------------------------------------
//
// Every minor is formed once, in the element type, from three families:
//   top(S)    rows 0..k-1 on the column set S (k = |S|), expanded along its
//             last row, from the last column of S back: +, -, +, ...
//   bottom(S) rows n-k..n-1 on S, expanded along its first row, from the
//             first column of S on: +, -, +, ...
//   M(i, j)   the minor without row i and column j: bottom(all but j) for
//             i = 0, top(all but j) for i = n-1, and in between the sum over
//             the i-column subsets S of the remaining columns, in
//             lexicographic order, of +-top(S) * bottom(rest) (Laplace by
//             complementary minors; the first term is always +).
// So every 2x2 minor is a[r0][c0]*a[r1][c1] - a[r0][c1]*a[r1][c0].  The
// determinant expands down column 0 from the last row up:
// det = +-a[n-1][0]*M(n-1, 0) ... - a[1][0]*M(1, 0) + a[0][0]*M(0, 0), a
// negative first term being 0 - x.  For n = 3 that is a20*t - a10*u + a00*c00.
// Inverse entry (j, i) is the cofactor of (i, j) times r = 1/det, the
// chessboard sign applied by subtracting the minor from 0.

constexpr int inv_popcount(int s) { return s ? (s & 1) + inv_popcount(s >> 1) : 0; }
constexpr int inv_lowbit(int s) { return (s & 1) ? 0 : 1 + inv_lowbit(s >> 1); }

// Value slots: the n*n elements, top minors, bottom minors, the middle M(i, j).
template <int N>
struct InvSlots {
    static constexpr int full = (1 << N) - 1;
    static constexpr int size = 2 * N * N + 2 * (1 << N);
    static constexpr int elem(int i, int j) { return i * N + j; }
    static constexpr int top(int s) { return inv_popcount(s) == 1 ? elem(0, inv_lowbit(s)) : N * N + s; }
    static constexpr int bottom(int s)
    {
        return inv_popcount(s) == 1 ? elem(N - 1, inv_lowbit(s)) : N * N + (1 << N) + s;
    }
    static constexpr int minor(int i, int j)
    {
        const int rest = full & ~(1 << j);
        return i == 0 ? bottom(rest) : i == N - 1 ? top(rest) : N * N + 2 * (1 << N) + i * N + j;
    }
};

// One step: slot dst = x*y (Set), dst + x*y (Add) or dst - x*y (Sub).
enum InvMode : signed char { InvSet, InvAdd, InvSub };
struct InvStep {
    short dst, x, y;
    InvMode mode;
};

template <int N>
struct InvPlan {
    InvStep step[640];
    int count;
};

template <int N>
constexpr InvPlan<N> make_inv_plan()
{
    using I = InvSlots<N>;
    InvPlan<N> p{};
    int n = 0;
    for (int k = 2; k <= N - 1; ++k)
        for (int s = 0; s <= I::full; ++s) {
            if (inv_popcount(s) != k) continue;
            int t = 0;
            for (int c = N - 1; c >= 0; --c)
                if (s & (1 << c)) {
                    p.step[n++] = {short(I::top(s)), short(I::elem(k - 1, c)), short(I::top(s & ~(1 << c))),
                                   t == 0 ? InvSet : (t & 1) ? InvSub : InvAdd};
                    ++t;
                }
        }
    for (int k = 2; k <= N - 1; ++k)
        for (int s = 0; s <= I::full; ++s) {
            if (inv_popcount(s) != k) continue;
            int t = 0;
            for (int c = 0; c < N; ++c)
                if (s & (1 << c)) {
                    p.step[n++] = {short(I::bottom(s)), short(I::elem(N - k, c)), short(I::bottom(s & ~(1 << c))),
                                   t == 0 ? InvSet : (t & 1) ? InvSub : InvAdd};
                    ++t;
                }
        }
    for (int i = 1; i <= N - 2; ++i)
        for (int j = 0; j < N; ++j) {
            const int rest = I::full & ~(1 << j);
            int cols[N] = {}, pos[N] = {};
            for (int c = 0, q = 0; c < N; ++c)
                if (rest & (1 << c)) cols[q++] = c;
            for (int q = 0; q < i; ++q) pos[q] = q;
            for (bool first = true;; first = false) {
                int s = 0, parity = -i * (i - 1) / 2;
                for (int q = 0; q < i; ++q) s |= 1 << cols[pos[q]], parity += pos[q];
                p.step[n++] = {short(I::minor(i, j)), short(I::top(s)), short(I::bottom(rest & ~s)),
                               first ? InvSet : (parity & 1) ? InvSub : InvAdd};
                int q = i - 1;
                while (q >= 0 && pos[q] == (N - 1) - i + q) --q;
                if (q < 0) break;
                ++pos[q];
                for (int r = q + 1; r < i; ++r) pos[r] = pos[r - 1] + 1;
            }
        }
    p.count = n;
    return p;
}

template <int N>
inline constexpr InvPlan<N> kInvPlan = make_inv_plan<N>();

template <int N, std::size_t K, class S>
KELM_INV_INLINE void inv_step(S* v)
{
    constexpr InvStep s = kInvPlan<N>.step[K];
    const S t = v[s.x] * v[s.y];
    if constexpr (s.mode == InvSet) v[s.dst] = t;
    else if constexpr (s.mode == InvAdd) v[s.dst] = v[s.dst] + t;
    else v[s.dst] = v[s.dst] - t;
}

template <int N, class S, std::size_t... K>
KELM_INV_INLINE void inv_minors(S* v, std::index_sequence<K...>)
{
    (inv_step<N, K>(v), ...);
}

// v holds the elements in slots 0..N*N-1 (row-major); out receives the
// inverse (row-major) and det the determinant.  S is T for one matrix or a
// vector of T for several side by side: each lane sees exactly the
// operations of the one-matrix code.
template <int N, class T, class S>
KELM_INV_INLINE void inv_adjugate(S* v, S* out, S& det)
{
    using I = InvSlots<N>;
    inv_minors<N>(v, std::make_index_sequence<std::size_t(kInvPlan<N>.count)>());
    S d = v[I::elem(N - 1, 0)] * v[I::minor(N - 1, 0)];
    if constexpr ((N - 1) & 1) d = T(0) - d;
    vx::unrolled<1, N>([&](auto u) {
        constexpr int i = N - 1 - decltype(u)::value;
        const S t = v[I::elem(i, 0)] * v[I::minor(i, 0)];
        if constexpr (i & 1) d = d - t;
        else d = d + t;
    });
    const S r = T(1) / d;
    vx::unrolled<0, N>([&](auto ii) {
        constexpr int i = decltype(ii)::value;
        vx::unrolled<0, N>([&](auto jj) {
            constexpr int j = decltype(jj)::value;
            if constexpr ((i + j) & 1) out[j * N + i] = (T(0) - v[I::minor(i, j)]) * r;
            else out[j * N + i] = v[I::minor(i, j)] * r;
        });
    });
    det = d;
}

// One matrix.  Nothing is written when |det| >= tau fails.
template <int N, class SV, class DV>
kelStatus ownkelmInvert_m_NxN(const SV& s, const DV& d, InvElem<SV> tau)
{
    using T = InvElem<SV>;
    T v[InvSlots<N>::size], out[N * N], det;
#pragma GCC unroll 8
    for (int i = 0; i < N; ++i)
#pragma GCC unroll 8
        for (int j = 0; j < N; ++j) v[i * N + j] = s(i, j);
    inv_adjugate<N, T>(v, out, det);
    if (!(std::fabs(det) >= tau)) return kelErrSingular;
#pragma GCC unroll 8
    for (int i = 0; i < N; ++i)
#pragma GCC unroll 8
        for (int j = 0; j < N; ++j) d(i, j) = out[i * N + j];
    return kelOk;
}

// Arrays: a vector of lanes holds one quantity of several matrices.
template <class T>
struct InvLanes;
template <>
struct InvLanes<float> {
    using type = vx::f8;
};
template <>
struct InvLanes<double> {
    using type = vx::d4;
};

// Element (i, j) of each of the views o[0..L-1], one per lane.
template <class V, class O, std::size_t... l>
KELM_INV_INLINE V inv_lanes(const O* o, int i, int j, std::index_sequence<l...>)
{
    return V{o[l](i, j)...};
}

// 4x4 blocks of rows with unit element strides, transposed by shuffles
// instead of element by element.  The transposition is its own inverse, so
// the same code turns rows into lanes and lanes back into rows.
//   float: eight matrices; the vectors hold matrix l in the low half and
//          matrix l + 4 in the high half, each half transposed on its own.
//   double: four matrices, one 4x4 transposition.

// Row i of the matrices o[0..L-1] as the four vectors r[0..3].
KELM_INV_INLINE void inv_load_row4(const DenseView<float, true>* o, int i, vx::f8* r)
{
    for (int l = 0; l < 4; ++l)
        r[l] = vx::join(vx::load<vx::f4, 4>(&o[l](i, 0)), vx::load<vx::f4, 4>(&o[l + 4](i, 0)));
}
KELM_INV_INLINE void inv_load_row4(const DenseView<double, true>* o, int i, vx::d4* r)
{
    for (int l = 0; l < 4; ++l) r[l] = vx::load<vx::d4, 4>(&o[l](i, 0));
}
KELM_INV_INLINE void inv_store_row4(const DenseView<float, true>* o, int i, const vx::f8* r)
{
    for (int l = 0; l < 4; ++l) {
        vx::store<4>(&o[l](i, 0), vx::lo(r[l]));
        vx::store<4>(&o[l + 4](i, 0), vx::hi(r[l]));
    }
}
KELM_INV_INLINE void inv_store_row4(const DenseView<double, true>* o, int i, const vx::d4* r)
{
    for (int l = 0; l < 4; ++l) vx::store<4>(&o[l](i, 0), r[l]);
}

template <int N, class O>
constexpr bool kInvRows4 = N == 4 && (std::is_same_v<O, DenseView<float, true>> || std::is_same_v<O, DenseView<double, true>>);

// Matrices k .. k+live-1 (a short last block repeats its last matrix in the
// spare lanes); stores the leading matrices that pass and returns how many.
template <int N, class Sd, class Dd>
KELM_INV_INLINE int inv_block(const Sd& s, const Dd& d, ptrdiff_t k, int live, typename Sd::Elem tau)
{
    using T = typename Sd::Elem;
    using V = typename InvLanes<T>::type;
    constexpr int L = int(sizeof(V) / sizeof(T));
    using O = decltype(s[0]);
    O o[L];
#pragma GCC unroll 8
    for (int l = 0; l < L; ++l) o[l] = s[k + (l < live ? l : live - 1)];
    V v[InvSlots<N>::size], out[N * N], det;
    if constexpr (kInvRows4<N, O>) {
        for (int i = 0; i < 4; ++i) {
            inv_load_row4(o, i, v + 4 * i);
            vx::transpose4(v[4 * i], v[4 * i + 1], v[4 * i + 2], v[4 * i + 3]);
        }
    } else {
#pragma GCC unroll 8
        for (int i = 0; i < N; ++i)
#pragma GCC unroll 8
            for (int j = 0; j < N; ++j) v[i * N + j] = inv_lanes<V>(o, i, j, std::make_index_sequence<L>());
    }
    inv_adjugate<N, T>(v, out, det);
    int ok = 0;
    while (ok < live && std::fabs(det[ok]) >= tau) ++ok;
    if constexpr (kInvRows4<N, O> && std::is_same_v<O, decltype(d[0])>) {
        if (ok == L) {
            O r[L];
            for (int l = 0; l < L; ++l) r[l] = d[k + l];
            for (int i = 0; i < 4; ++i) {
                vx::transpose4(out[4 * i], out[4 * i + 1], out[4 * i + 2], out[4 * i + 3]);
                inv_store_row4(r, i, out + 4 * i);
            }
            return ok;
        }
    }
    for (int l = 0; l < ok; ++l) {
        const auto o = d[k + l];
#pragma GCC unroll 8
        for (int i = 0; i < N; ++i)
#pragma GCC unroll 8
            for (int j = 0; j < N; ++j) o(i, j) = out[i * N + j][l];
    }
    return ok;
}

// The closed forms over an array, order fixed at compile time: the function
// compiled for both vector widths.
template <int N, class Sd, class Dd>
static KELM_WIDE_V4 kelStatus inv_closed_forms_ma(const Sd& s, const Dd& d, int count, typename Sd::Elem tau)
{
    using T = typename Sd::Elem;
    constexpr int L = int(sizeof(typename InvLanes<T>::type) / sizeof(T));
    for (int k = 0; k < count; k += L) {
        const int live = count - k < L ? count - k : L;
        if (inv_block<N>(s, d, k, live, tau) < live) return kelErrSingular;
    }
    return kelOk;
}

// --- the elimination path: order 2 and orders 7 and up --------------------------------

// Eliminates the order-ord matrix held in w (row length rowLen) through the
// row index idx: partial pivoting (a later row wins only when strictly
// larger), one reciprocal per pivot.  prod receives the product of the
// pivots and sign the parity of the exchanges.  Returns false at the first
// pivot with |pivot| < tau, the exchange of that step already made.
template <class T>
inline bool inv_eliminate(T* w, int* idx, int ord, int rowLen, T tau, T& prod, T& sign)
{
    prod = 1;
    sign = 1;
    for (int k = 0; k < ord - 1; ++k) {
        choose_pivot(w, idx, k, ord, rowLen, sign);
        const T* pr = w + idx[k] * rowLen;
        const T pivot = pr[k];
        if (!(std::fabs(pivot) >= tau)) return false;
        const T r = T(1) / pivot;
        for (int i = k + 1; i < ord; ++i) {
            T* ri = w + idx[i] * rowLen;
            const T f = ri[k] * r;
            for (int j = k + 1; j < ord; ++j) ri[j] = ri[j] - pr[j] * f;
        }
        prod = prod * pivot;
    }
    return true;
}

// The buffer holds a row-major copy (row length n) followed by n row
// indices.  The determinant comes first; a singular matrix fails before
// anything is written.  Then each minor is copied into the buffer and
// eliminated with the bound of the full order.  A minor whose elimination
// stops counts as tau, and every minor then goes through its last diagonal
// entry u: m*u*sign when |u| > tau, else tau.  So a singular minor gives
// +-tau/det, never 0; callers see those entries (the 2x2 identity's inverse
// has -tau(2) off the diagonal).  The work grows as n^5: the library is for
// small matrices.
template <class SV, class DV>
kelStatus ownkelmInvert_m_com(const SV& s, const DV& d, int n, InvElem<SV>* buf, InvElem<SV> tau)
{
    using T = InvElem<SV>;
    T* w = buf;
    int* idx = reinterpret_cast<int*>(buf + std::ptrdiff_t(n) * n);
    for (int i = 0; i < n; ++i) {
        for (int j = 0; j < n; ++j) w[i * n + j] = s(i, j);
        idx[i] = i;
    }
    T det, sign;
    if (!inv_eliminate(w, idx, n, n, tau, det, sign)) return kelErrSingular;
    det = det * (sign * w[idx[n - 1] * n + n - 1]);
    if (!(std::fabs(det) > tau)) return kelErrSingular;
    const T q = T(1) / det;
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) {
            for (int r = 0; r < n - 1; ++r)
                for (int c = 0; c < n - 1; ++c) w[r * n + c] = s(r + (r >= i), c + (c >= j));
            for (int r = 0; r < n; ++r) idx[r] = r;
            T m, sg;
            if (!inv_eliminate(w, idx, n - 1, n, tau, m, sg)) m = tau;
            const T u = w[idx[n - 2] * n + n - 2];
            m = std::fabs(u) > tau ? m * u * sg : tau;
            d(j, i) = m * q * T(((i + j) & 1) ? -1 : 1);
        }
    return kelOk;
}

// --- one matrix, arrays, parallel runs -------------------------------------------------

// Order 1: the reciprocal, objects in order, stopping at the first with
// |a| <= tau(1) (or NaN).
template <class Sd, class Dd>
inline kelStatus inv_order1(const Sd& s, const Dd& d, int count)
{
    using T = typename Sd::Elem;
    const T tau = T(2) * std::numeric_limits<T>::min();
    for (int k = 0; k < count; ++k) {
        const T a = s[k](0, 0);
        if (!(std::fabs(a) > tau)) return kelErrSingular;
        d[k](0, 0) = T(1) / a;
    }
    return kelOk;
}

// One matrix of order 2 or more, any view (contiguous, _S2 or _P).
template <class SV, class DV>
kelStatus ownkelmInvert_m(const SV& s, const DV& d, int n, InvElem<SV>* buf)
{
    using T = InvElem<SV>;
    const T tau = inv_tau<T, SV>(n);
    switch (n) {
    case 3: return ownkelmInvert_m_NxN<3>(s, d, tau);
    case 4: return ownkelmInvert_m_NxN<4>(s, d, tau);
    case 5: return ownkelmInvert_m_NxN<5>(s, d, tau);
    case 6: return ownkelmInvert_m_NxN<6>(s, d, tau);
    default: return ownkelmInvert_m_com(s, d, n, buf, tau);
    }
}

// An array of matrices of order 2 or more (ownkelmInvert_ma, _S2, _P, _L,
// _LS2 by description); stops at the first singular matrix.
template <class Sd, class Dd>
kelStatus ownkelmInvert_ma(const Sd& s, const Dd& d, int n, typename Sd::Elem* buf, int count)
{
    using T = typename Sd::Elem;
    const T tau = inv_tau<T, decltype(s[0])>(n);
    switch (n) {
    case 3: return inv_closed_forms_ma<3>(s, d, count, tau);
    case 4: return inv_closed_forms_ma<4>(s, d, count, tau);
    case 5: return inv_closed_forms_ma<5>(s, d, count, tau);
    case 6: return inv_closed_forms_ma<6>(s, d, count, tau);
    default:
        for (int k = 0; k < count; ++k)
            if (kelStatus st = ownkelmInvert_m_com(s[k], d[k], n, buf, tau)) return st;
        return kelOk;
    }
}

// Each thread inverts its run with its own n*(n+1)-element slice; the
// caller's buffer is left alone.
template <class Sd, class Dd>
kelStatus ownOMP_kelmInvert_ma(const Sd& s, const Dd& d, int n, typename Sd::Elem* buf, int count)
{
    using T = typename Sd::Elem;
    const std::size_t slice = std::size_t(n) * std::size_t(n + 1) * sizeof(T);
    return with_unit_strides(
        [&](const auto& su, const auto& du) {
            return split_with_workspace(count, slice, buf, [&](int first, int mine, void* ws) {
                return ownkelmInvert_ma(su.from(first), du.from(first), n, static_cast<T*>(ws), mine);
            });
        },
        s, d);
}

template <class Sd, class Dd>
kelStatus invert_one(const Sd& s, const Dd& d, int n, typename Sd::Elem* buf)
{
    if (n == 1) return inv_order1(s, d, 1);
    return with_unit_strides([&](const auto& su, const auto& du) { return ownkelmInvert_m(su[0], du[0], n, buf); },
                             s, d);
}

// bound: the member's parallel threshold on 2*n*count (signed 32-bit).
template <class Sd, class Dd>
kelStatus invert_array(const Sd& s, const Dd& d, int n, typename Sd::Elem* buf, int count, int bound)
{
    if (n == 1) return inv_order1(s, d, count);
    if (I32(2) * n * count > bound) return ownOMP_kelmInvert_ma(s, d, n, buf, count);
    return with_unit_strides([&](const auto& su, const auto& du) { return ownkelmInvert_ma(su, du, n, buf, count); },
                             s, d);
}

}  // namespace kelm
