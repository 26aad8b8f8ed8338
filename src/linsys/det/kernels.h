// Determinants: closed-form cofactor expansions for orders 3 to 6, Gaussian
// elimination with partial pivoting in the caller's buffer for every other
// order.  A singular matrix gives 0; the kernels never fail.
//
// Closed forms expand along the first row; the minors of the lower rows are
// formed once each, from the bottom up (2x2 minors of the last two rows, then
// 3x3 minors of the last three, ...).  The sums of the expansion run in a
// precision wider than the element type and the result is rounded to the
// element type once, on storing:
//   32f  everything in double.  Double is the wider type for floats (the 2x2
//        minors' products are exact in it), so the whole expansion runs in
//        SSE registers, without the x87 unit, and vectorises across objects.
//        Callers compare the last bits of these results, so the order of
//        every term is fixed.
//   64f  every product and sum in double-double: a value is an unevaluated
//        sum hi + lo of two doubles, products are split exactly (no fused
//        multiply-add: the halves of a 26-bit split multiply exactly), sums
//        carry their rounding error.  The result is the expansion's value
//        rounded once, so a minor that cancels keeps its low bits.  Elements
//        outside [2^-100, 2^100] (or not finite) take a guarded path: the
//        rows are scaled by powers of two, which is exact, and the scale is
//        put back on the result.
//
// Arrays run four objects at a time: lane l of a Lanes value holds a quantity
// of object k + l, computed by exactly the operations the single object
// would see.  A last block of fewer than four objects fills the spare lanes
// with copies of its last object and stores only the live lanes, so every
// object, single or in an array, takes the same path and gets the same bits.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstring>
#include <limits>
#include <type_traits>
#include <utility>

#include <xmmintrin.h>

#include "common/check.h"
#include "common/desc.h"
#include "common/dispatch.h"
#include "common/parallel.h"
#include "common/pivot.h"
#include "kelm.h"

namespace kelm {

// Four doubles, one per object: a pair of SSE2 registers on the baseline, one
// AVX register in the wide clone; lane-wise IEEE operations either way.
using Lanes = double __attribute__((vector_size(4 * sizeof(double))));
using LanesF = float __attribute__((vector_size(4 * sizeof(float))));
constexpr int kLanes = 4;

#define KELM_DET_INLINE inline __attribute__((always_inline))

template <class V>
constexpr bool kUnitRows = false;  // rows of contiguous elements: one load per row
template <class T>
constexpr bool kUnitRows<DenseView<T, true>> = true;

// A whole row of four doubles, at any element-aligned address (a copy of
// its bytes: one unaligned load, whatever alignment the compiler assumes
// for the vector type).
KELM_DET_INLINE Lanes load_row(const double* r)
{
    Lanes v;
    __builtin_memcpy(&v, r, sizeof v);
    return v;
}

using LaneIdx = long long __attribute__((vector_size(4 * sizeof(long long))));
using LaneIdxF = int __attribute__((vector_size(4 * sizeof(int))));

// Four rows of four elements, one row per object, turned into four columns of
// lanes: column j holds element j of every object.
KELM_DET_INLINE void transpose_rows(const double* r0, const double* r1, const double* r2, const double* r3,
                                    Lanes* col)
{
    const Lanes a = load_row(r0), b = load_row(r1), c = load_row(r2), e = load_row(r3);
    const Lanes ab0 = __builtin_shuffle(a, b, LaneIdx{0, 4, 2, 6}), ab1 = __builtin_shuffle(a, b, LaneIdx{1, 5, 3, 7});
    const Lanes ce0 = __builtin_shuffle(c, e, LaneIdx{0, 4, 2, 6}), ce1 = __builtin_shuffle(c, e, LaneIdx{1, 5, 3, 7});
    col[0] = __builtin_shuffle(ab0, ce0, LaneIdx{0, 1, 4, 5});
    col[1] = __builtin_shuffle(ab1, ce1, LaneIdx{0, 1, 4, 5});
    col[2] = __builtin_shuffle(ab0, ce0, LaneIdx{2, 3, 6, 7});
    col[3] = __builtin_shuffle(ab1, ce1, LaneIdx{2, 3, 6, 7});
}

// Lane by lane, so that the wide clone converts all four in one instruction.
KELM_DET_INLINE void widen(const LanesF& f, Lanes& d) { d = Lanes{double(f[0]), double(f[1]), double(f[2]), double(f[3])}; }

KELM_DET_INLINE void transpose_rows(const float* r0, const float* r1, const float* r2, const float* r3, Lanes* col)
{
    // SSE unpacks: left to generic shuffles, the compiler turns this into
    // sixteen single-element loads and inserts, several times slower.
    __m128 a = _mm_loadu_ps(r0), b = _mm_loadu_ps(r1), c = _mm_loadu_ps(r2), e = _mm_loadu_ps(r3);
    _MM_TRANSPOSE4_PS(a, b, c, e);
    widen(LanesF(a), col[0]);
    widen(LanesF(b), col[1]);
    widen(LanesF(c), col[2]);
    widen(LanesF(e), col[3]);
}

// Rows lo..N-1 of four objects as lanes, element by element.
template <int N, class V>
KELM_DET_INLINE void gather_elements(const V& o0, const V& o1, const V& o2, const V& o3, int lo, Lanes (&a)[N][N])
{
#pragma GCC unroll 6
    for (int i = lo; i < N; ++i)
#pragma GCC unroll 6
        for (int j = 0; j < N; ++j)
            a[i][j] = Lanes{double(o0(i, j)), double(o1(i, j)), double(o2(i, j)), double(o3(i, j))};
}

// Rows lo..N-1 of objects k .. k+live-1 as lanes (spare lanes repeat the
// last live object).
template <int N, class D>
KELM_DET_INLINE void gather(const D& d, ptrdiff_t k, int live, int lo, Lanes (&a)[N][N])
{
    const auto o0 = d[k];
    const auto o1 = d[k + (live > 1 ? 1 : 0)];
    const auto o2 = d[k + (live > 2 ? 2 : live - 1)];
    const auto o3 = d[k + (live > 3 ? 3 : live - 1)];
    using View = std::remove_const_t<decltype(o0)>;
    if constexpr (N == 4 && kUnitRows<View>) {
        for (int i = lo; i < N; ++i) transpose_rows(&o0(i, 0), &o1(i, 0), &o2(i, 0), &o3(i, 0), a[i]);
    } else if constexpr (N == 3 && kUnitRows<View> && std::is_same_v<typename D::Elem, float>) {
        if (lo == 0 && o0.row == 3 * ptrdiff_t(sizeof(float))) {
            // Nine floats back to back per object: elements 0-3 and 4-7 of
            // the four objects turned by two 4x4 transposes, element 8 alone.
            Lanes c[8];
            transpose_rows(&o0(0, 0), &o1(0, 0), &o2(0, 0), &o3(0, 0), c);
            transpose_rows(&o0(0, 0) + 4, &o1(0, 0) + 4, &o2(0, 0) + 4, &o3(0, 0) + 4, c + 4);
            for (int e = 0; e < 8; ++e) a[e / 3][e % 3] = c[e];
            a[2][2] = Lanes{double(o0(2, 2)), double(o1(2, 2)), double(o2(2, 2)), double(o3(2, 2))};
            return;
        }
        gather_elements<N>(o0, o1, o2, o3, lo, a);
    } else {
        gather_elements<N>(o0, o1, o2, o3, lo, a);
    }
}

// Rounds the lanes to the element type and stores the live ones.
template <class T>
KELM_DET_INLINE void store(const Lanes& r, T* dst, int live)
{
    if constexpr (std::is_same_v<T, float>) {
        const LanesF f = __builtin_convertvector(r, LanesF);
        if (live == kLanes) std::memcpy(dst, &f, sizeof f);
        else
            for (int l = 0; l < live; ++l) dst[l] = f[l];
    } else {
        if (live == kLanes) std::memcpy(dst, &r, sizeof r);
        else
            for (int l = 0; l < live; ++l) dst[l] = r[l];
    }
}

// 32f order 3: the 2x2 minors of rows 1 and 2 and the sum of the three terms
// in double, in this order (callers compare the last bits).
template <class D>
KELM_DET_INLINE void a6_Det_ma_3x3(const D& d, ptrdiff_t k, int live, typename D::Elem* dst)
{
    Lanes a[3][3] = {};
    gather<3>(d, k, live, 0, a);
    const Lanes m1 = a[2][0] * a[1][2] - a[1][0] * a[2][2];
    const Lanes m2 = a[2][1] * a[1][0] - a[2][0] * a[1][1];
    const Lanes m0 = a[1][1] * a[2][2] - a[1][2] * a[2][1];
    store<typename D::Elem>(m1 * a[0][1] + m2 * a[0][2] + m0 * a[0][0], dst, live);
}

// 32f order 4: the six 2x2 minors of rows 2 and 3, their products with row 1,
// the 3x3 minors and the final sum, in double.
template <class D>
KELM_DET_INLINE void a6_Det_ma_4x4(const D& d, ptrdiff_t k, int live, typename D::Elem* dst)
{
    Lanes a[4][4] = {};
    gather<4>(d, k, live, 0, a);
    const Lanes m01 = a[2][0] * a[3][1] - a[2][1] * a[3][0], m02 = a[2][0] * a[3][2] - a[2][2] * a[3][0];
    const Lanes m03 = a[2][0] * a[3][3] - a[2][3] * a[3][0], m12 = a[2][1] * a[3][2] - a[2][2] * a[3][1];
    const Lanes m13 = a[2][1] * a[3][3] - a[2][3] * a[3][1], m23 = a[2][2] * a[3][3] - a[2][3] * a[3][2];
    const Lanes p[4][3] = {{a[1][1] * m23, a[1][2] * m13, a[1][3] * m12},
                           {a[1][0] * m23, a[1][2] * m03, a[1][3] * m02},
                           {a[1][0] * m13, a[1][1] * m03, a[1][3] * m01},
                           {a[1][0] * m12, a[1][1] * m02, a[1][2] * m01}};
    Lanes c[4];
    for (int j = 0; j < 4; ++j) c[j] = p[j][0] - p[j][1] + p[j][2];
    store<typename D::Elem>(a[0][0] * c[0] - a[0][1] * c[1] + a[0][2] * c[2] - a[0][3] * c[3], dst, live);
}

// Orders 5 and 6: the minor of rows r..N-1 on the column set S (a bit mask
// of N - r columns) is kept at m[S], the sum over the columns c of S in
// increasing order of +-a(r, c) * m[S without c], signs alternating from +.
// The steps are listed at compile time so that the expansion runs as
// straight-line code.
struct ExpandStep {
    int dst, src, row, col, term;  // term 0 starts the sum; odd terms subtract
};

constexpr int bit_count(int s) { return s ? (s & 1) + bit_count(s >> 1) : 0; }

template <int N>
constexpr int expand_step_count()
{
    int n = 0;
    for (int s = 0; s < (1 << N); ++s)
        if (bit_count(s) >= 2) n += bit_count(s);
    return n;
}

template <int N>
struct ExpandPlan {
    ExpandStep step[expand_step_count<N>()];
};

template <int N>
constexpr ExpandPlan<N> make_expand_plan()
{
    ExpandPlan<N> p{};
    int n = 0;
    for (int r = N - 2; r >= 0; --r)
        for (int s = 0; s < (1 << N); ++s) {
            if (bit_count(s) != N - r) continue;
            int t = 0;
            for (int c = 0; c < N; ++c)
                if (s & (1 << c)) p.step[n++] = {s, s & ~(1 << c), r, c, t++};
        }
    return p;
}

template <int N>
inline constexpr ExpandPlan<N> kExpandPlan = make_expand_plan<N>();

template <int N, std::size_t I, class Acc, class At>
KELM_DET_INLINE void expand_step(Acc* m, const At& at)
{
    constexpr ExpandStep s = kExpandPlan<N>.step[I];
    const Acc t = at(s.row, s.col) * m[s.src];
    if constexpr (s.term == 0) m[s.dst] = t;
    else if constexpr (s.term & 1) m[s.dst] = m[s.dst] - t;
    else m[s.dst] = m[s.dst] + t;
}

// The full minor goes to det (an out parameter: vector returns would change
// the calling convention between the two clones).
template <int N, class Acc, class At, std::size_t... I>
KELM_DET_INLINE void expand(const At& at, Acc& det, std::index_sequence<I...>)
{
    Acc m[1 << N];
    for (int c = 0; c < N; ++c) m[1 << c] = at(N - 1, c);
    (expand_step<N, I>(m, at), ...);
    det = m[(1 << N) - 1];
}

template <int N, class Acc, class At>
KELM_DET_INLINE void expand(const At& at, Acc& det)
{
    expand<N>(at, det, std::make_index_sequence<expand_step_count<N>()>());
}

template <int N, class D>
KELM_DET_INLINE void a6_Det_ma_NxN(const D& d, ptrdiff_t k, int live, typename D::Elem* dst)
{
    Lanes a[N][N] = {}, det;
    gather<N>(d, k, live, 0, a);
    expand<N>([&](int i, int j) -> const Lanes& { return a[i][j]; }, det);
    store<typename D::Elem>(det, dst, live);
}

// --- 64f: double-double lanes ------------------------------------------------

using Mask = long long __attribute__((vector_size(4 * sizeof(long long))));

// A double and its two halves of at most 26 significant bits each, so that
// products of halves are exact.  Dekker's split: valid while |v| < 2^996.
struct Split {
    Lanes v, h, l;
};

KELM_DET_INLINE Split split(const Lanes& v)
{
    const Lanes c = v * 134217729.0;  // 2^27 + 1
    const Lanes h = c - (c - v);
    return {v, h, v - h};
}

// hi + lo, |lo| at most half an ulp of hi (after renormalisation).
struct DD {
    Lanes hi, lo;
};

// The exact product of two split doubles.
KELM_DET_INLINE DD two_prod(const Split& a, const Split& b)
{
    const Lanes p = a.v * b.v;
    return {p, ((a.h * b.h - p) + a.h * b.l + a.l * b.h) + a.l * b.l};
}

// A double-double times a split double: the high part's product exactly, the
// low part's rounded.
KELM_DET_INLINE DD operator*(const Split& b, const DD& x)
{
    DD t = two_prod(split(x.hi), b);
    t.lo = t.lo + x.lo * b.v;
    return t;
}

// The sum of the high parts exactly (two-sum), the low parts added to its
// error, renormalised.
KELM_DET_INLINE DD operator+(const DD& x, const DD& y)
{
    const Lanes s = x.hi + y.hi, v = s - x.hi;
    const Lanes e = ((x.hi - (s - v)) + (y.hi - v)) + (x.lo + y.lo);
    const Lanes h = s + e;
    return {h, e - (h - s)};
}

KELM_DET_INLINE DD operator-(const DD& x, const DD& y) { return x + DD{-y.hi, -y.lo}; }

// Step I of the expansion plan on double-double minors; the entries of one
// column (the last row's elements) are never stored: a 2x2 minor's products
// come from both elements' splits.
template <int N, std::size_t I>
KELM_DET_INLINE void expand_dd_step(DD* m, const Split (&s)[N][N])
{
    constexpr ExpandStep st = kExpandPlan<N>.step[I];
    const Split& a = s[st.row][st.col];
    DD t;
    if constexpr (bit_count(st.src) == 1) {
        constexpr int c = __builtin_ctz(st.src);
        t = two_prod(a, s[N - 1][c]);
    } else {
        t = a * m[st.src];
    }
    if constexpr (st.term == 0) m[st.dst] = t;
    else if constexpr (st.term & 1) m[st.dst] = m[st.dst] - t;
    else m[st.dst] = m[st.dst] + t;
}

template <int N, std::size_t... I>
KELM_DET_INLINE DD expand_dd(const Split (&s)[N][N], std::index_sequence<I...>)
{
    DD m[1 << N];
    (expand_dd_step<N, I>(m, s), ...);
    return m[(1 << N) - 1];
}

template <int N>
KELM_DET_INLINE DD expand_dd(const Lanes (&a)[N][N])
{
    Split s[N][N];
    for (int i = 0; i < N; ++i)
        for (int j = 0; j < N; ++j) s[i][j] = split(a[i][j]);
    return expand_dd<N>(s, std::make_index_sequence<expand_step_count<N>()>());
}

// Lanes whose every element is 0 or of magnitude in [2^-100, 2^100]: there no
// split overflows and no product's error falls below the normal range.
template <int N>
KELM_DET_INLINE Mask in_range(const Lanes (&a)[N][N])
{
    Mask ok = Mask{} == Mask{};
    for (int i = 0; i < N; ++i)
        for (int j = 0; j < N; ++j) {
            const Lanes m = Lanes(Mask(a[i][j]) & 0x7fffffffffffffffLL);  // |a|, NaN kept
            ok &= (m <= 0x1p100) & ((m >= 0x1p-100) | (m == 0.0));
        }
    return ok;
}

// One 64f object outside that range: each row scaled by a power of two that
// brings its largest magnitude into [1, 2) (exact), the expansion run on the
// scaled rows, the scale put back on the result.  Rows with infinities or
// NaNs, or of zeros, are left as they are (the arithmetic carries them).
template <int N, class V>
inline double det_scaled(const V& o)
{
    Lanes a[N][N] = {};
    int e = 0;
    for (int i = 0; i < N; ++i) {
        double big = 0;
        for (int j = 0; j < N; ++j) big = std::fmax(big, std::fabs(o(i, j)));
        const int ei = std::isfinite(big) && big > 0 ? std::ilogb(big) : 0;
        e += ei;
        for (int j = 0; j < N; ++j) {
            const double x = std::ldexp(o(i, j), -ei);
            a[i][j] = Lanes{x, x, x, x};
        }
    }
    const DD r = expand_dd<N>(a);
    // Put the scale back in two steps so that neither overflows on its own.
    return std::ldexp(std::ldexp(r.hi[0], e / 2) + std::ldexp(r.lo[0], e / 2), e - e / 2);
}

template <int N, class D>
KELM_DET_INLINE void a6_Det_ma_dd(const D& d, ptrdiff_t k, int live, double* dst)
{
    Lanes a[N][N] = {};
    gather<N>(d, k, live, 0, a);
    const Mask ok = in_range<N>(a);
    store<double>(expand_dd<N>(a).hi, dst, live);
    for (int l = 0; l < live; ++l)
        if (!ok[l]) dst[l] = det_scaled<N>(d[k + l]);
}

// Elimination for orders 1, 2 and 7 up.  The buffer holds a row-major copy
// (n*n elements) followed by n row indices.  The tolerance grows with the
// cube of the order on purpose; the pivot test lets |pivot| == tol through,
// the last-pivot test does not.
template <class T, class V>
inline T det_eliminate(const V& a, int n, T* buf)
{
    T* w = buf;
    int* idx = reinterpret_cast<int*>(buf + std::ptrdiff_t(n) * n);
    T result = 1;
    for (int i = 0; i < n; ++i) {
        for (int j = 0; j < n; ++j) w[i * n + j] = a(i, j);
        idx[i] = i;
    }
    T sign = 1;
    const T tol = T(2LL * n * n * n) * std::numeric_limits<T>::min();
    for (int k = 0; k < n - 1; ++k) {
        choose_pivot(w, idx, k, n, n, sign);
        const T* pr = w + idx[k] * n;
        const T pivot = pr[k];
        if (std::fabs(pivot) < tol) return 0;
        for (int i = k + 1; i < n; ++i) {
            T* ri = w + idx[i] * n;
            const T f = ri[k] / pivot;
            for (int j = k + 1; j < n; ++j) ri[j] = ri[j] - pr[j] * f;
        }
        result = pivot * result;
    }
    const T u = w[idx[n - 1] * n + n - 1];
    return std::fabs(u) > tol ? result * (u * sign) : T(0);
}

template <int N, class D>
KELM_DET_INLINE void a6_Det_ma_block(const D& d, ptrdiff_t k, int live, typename D::Elem* dst)
{
    if constexpr (std::is_same_v<typename D::Elem, double>) a6_Det_ma_dd<N>(d, k, live, dst);
    else if constexpr (N == 3) a6_Det_ma_3x3(d, k, live, dst);
    else if constexpr (N == 4) a6_Det_ma_4x4(d, k, live, dst);
    else a6_Det_ma_NxN<N>(d, k, live, dst);
}

// Closed forms over an array: order fixed at compile time, objects in order,
// four at a time, then the last few.  This is the function compiled for both
// vector widths.
template <int N, class D>
static KELM_WIDE_V4 void a6_Det_ma(const D& d, typename D::Elem* dst, int count)
{
    int k = 0;
    for (; k + kLanes <= count; k += kLanes) a6_Det_ma_block<N>(d, k, kLanes, dst + k);
    if (k < count) a6_Det_ma_block<N>(d, k, count - k, dst + k);
}

// The array kernel of every description: ownkelmDet_ma (contiguous), _S2,
// _P, _L and _LS2 are its instantiations.  A single object is an array of one.
template <class D>
inline kelStatus ownkelmDet_ma(const D& d, int n, typename D::Elem* buf, typename D::Elem* dst, int count)
{
    switch (n) {
    case 3: a6_Det_ma<3>(d, dst, count); break;
    case 4: a6_Det_ma<4>(d, dst, count); break;
    case 5: a6_Det_ma<5>(d, dst, count); break;
    case 6: a6_Det_ma<6>(d, dst, count); break;
    default:
        for (int k = 0; k < count; ++k) dst[k] = det_eliminate<typename D::Elem>(d[k], n, buf);
    }
    return kelOk;
}

template <class D>
inline kelStatus ownkelmDet_m(const D& d, int n, typename D::Elem* buf, typename D::Elem* dst)
{
    return ownkelmDet_ma(d, n, buf, dst, 1);
}

// Parallel runs give each thread its own n*(n+1)-element slice.
template <class D>
inline kelStatus ownOMP_kelmDet_ma(const D& d, int n, typename D::Elem* buf, typename D::Elem* dst, int count)
{
    using T = typename D::Elem;
    const std::size_t slice = std::size_t(n) * std::size_t(n + 1) * sizeof(T);
    return with_unit_strides(
        [&](const auto& du) {
            return split_with_workspace(count, slice, buf, [&](int first, int mine, void* ws) {
                return ownkelmDet_ma(du.from(first), n, static_cast<T*>(ws), dst + first, mine);
            });
        },
        d);
}

template <class D>
inline kelStatus det_array(const D& d, int n, typename D::Elem* buf, typename D::Elem* dst, int count)
{
    if (I32(n) * I32(count) > 14400) return ownOMP_kelmDet_ma(d, n, buf, dst, count);
    return with_unit_strides([&](const auto& du) { return ownkelmDet_ma(du, n, buf, dst, count); }, d);
}

}  // namespace kelm

