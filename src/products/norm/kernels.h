// Norms and trace: one scalar per object.
//
// L2Norm and FrobNorm square the elements in the element type and add the
// squares in ascending order (FrobNorm row by row), then take the correctly
// rounded square root.  One kernel deviates, on purpose, and callers depend
// on its last bits: the 32f L2Norm of contiguous strided vectors
//   lengths 3..6   adds the squares in pairs, ((x0² + x1²) + (x2² + x3²)) +
//                  x4² for length 5, and takes the root as s·r' from the
//                  processor's reciprocal-square-root estimate r refined by
//                  one Newton step, r' = r·0.5·(3 − s·r·r).  The estimate is
//                  the processor's own, so these bits are reproducible on one
//                  machine only.  Sums the step cannot handle (0, subnormal,
//                  infinite) get their correctly rounded root instead: a
//                  zero vector has norm 0 and an overflowing one infinity.
//   lengths 11 up  four running sums, lane l taking the squares of elements
//                  l, l+4, l+8, ..., added as (p0 + p1) + (p2 + p3).
// Lengths 7 to 10 and every other kernel use the ascending order.
//
// Trace: d0 + d1 + d2 (+ d3) for sizes 3 and 4; d4 + d0 + d1 + d2 + d3 for
// size 5 (the last diagonal element first: that decides the last bit of 32f
// results); every other size sets the destination to 0 and adds d0, d1, ...
// into it, storing the running sum in the destination after each addition.
//
// The norms run four objects side by side: lane l of a vector holds a
// quantity of object k + l and sees exactly the operations a lone object
// would.  A last block of fewer than four fills its spare lanes with copies
// of its last object and stores only the live lanes, so single objects,
// arrays, every block position and every thread split give the same bits.
// Objects stored as one run of elements go eight at a time first (see "flat
// objects" below), with the same operations per lane.
#pragma once

#include <xmmintrin.h>
#include <emmintrin.h>

#include <cfloat>
#include <cstddef>
#include <type_traits>

#include "common/check.h"
#include "common/desc.h"
#include "common/dispatch.h"
#include "common/parallel.h"
#include "common/vectors.h"
#include "kelm.h"

namespace kelm {

#define KELM_NORM_INLINE inline __attribute__((always_inline))

constexpr int kNormLanes = 4;

template <class T>
struct NormLanes;
template <>
struct NormLanes<float> {
    using type = vx::f4;
};
template <>
struct NormLanes<double> {
    using type = vx::d4;
};

KELM_NORM_INLINE vx::f4 lane_sqrt(vx::f4 s) { return vx::f4(_mm_sqrt_ps(__m128(s))); }
KELM_NORM_INLINE vx::d4 lane_sqrt(vx::d4 s)
{
    const vx::d2 lo = vx::d2(_mm_sqrt_pd(__m128d(__builtin_shufflevector(s, s, 0, 1))));
    const vx::d2 hi = vx::d2(_mm_sqrt_pd(__m128d(__builtin_shufflevector(s, s, 2, 3))));
    return __builtin_shufflevector(lo, hi, 0, 1, 2, 3);
}

// s·r' with r the reciprocal-square-root estimate of s after one Newton step.
KELM_NORM_INLINE vx::f4 refined_root(vx::f4 s)
{
    const vx::f4 half = {0.5f, 0.5f, 0.5f, 0.5f}, three = {3.0f, 3.0f, 3.0f, 3.0f};
    const vx::f4 r = vx::f4(_mm_rsqrt_ps(__m128(s)));
    const vx::f4 refined = r * half * (three - s * r * r);
    vx::f4 root = s * refined;
    // The step turns 0 and infinity into NaN, and the estimate of a subnormal
    // sum is infinite: those sums take the exact root.
    const auto usable = (s >= FLT_MIN) & (s <= FLT_MAX);
    if (_mm_movemask_ps(__m128(usable)) != 0xF) root = usable ? root : lane_sqrt(s);
    return root;
}

// Objects k .. k+live-1 of a description as lanes; the spare lanes repeat the
// last live object.
template <class D>
struct FourObjects {
    using T = typename D::Elem;
    using V = typename NormLanes<T>::type;
    using View = std::remove_const_t<decltype(std::declval<const D&>()[0])>;
    View o0, o1, o2, o3;
    KELM_NORM_INLINE FourObjects(const D& d, ptrdiff_t k, int live)
        : o0(d[k]), o1(d[k + (live > 1 ? 1 : 0)]), o2(d[k + (live > 2 ? 2 : live - 1)]),
          o3(d[k + (live > 3 ? 3 : live - 1)])
    {
    }
    KELM_NORM_INLINE V operator()(int i, int j) const { return V{o0(i, j), o1(i, j), o2(i, j), o3(i, j)}; }
    KELM_NORM_INLINE V square(int i, int j) const
    {
        const V x = (*this)(i, j);
        return x * x;
    }
};

template <class V, class T>
KELM_NORM_INLINE void store_live(const V& v, T* dst, int live)
{
    if (live == kNormLanes) __builtin_memcpy(dst, &v, sizeof v);
    else
        for (int l = 0; l < live; ++l) dst[l] = v[l];
}

// Rows of four contiguous elements: row i of the four objects is loaded as
// four vectors and transposed, so that lane l of column j holds element
// (i, j) of object k + l.
template <class V>
constexpr bool kUnitRowView = false;
template <class T>
constexpr bool kUnitRowView<DenseView<T, true>> = true;

template <class V, class T>
KELM_NORM_INLINE V load_row(const T* p)
{
    V v;
    __builtin_memcpy(&v, p, sizeof v);
    return v;
}

template <class Q>
KELM_NORM_INLINE void columns4(const Q& q, int i, typename Q::V* col)
{
    using V = typename Q::V;
    using T = typename Q::T;
    const V a = load_row<V, T>(&q.o0(i, 0)), b = load_row<V, T>(&q.o1(i, 0));
    const V c = load_row<V, T>(&q.o2(i, 0)), e = load_row<V, T>(&q.o3(i, 0));
    const V ab0 = __builtin_shufflevector(a, b, 0, 4, 1, 5), ab1 = __builtin_shufflevector(a, b, 2, 6, 3, 7);
    const V ce0 = __builtin_shufflevector(c, e, 0, 4, 1, 5), ce1 = __builtin_shufflevector(c, e, 2, 6, 3, 7);
    col[0] = __builtin_shufflevector(ab0, ce0, 0, 1, 4, 5);
    col[1] = __builtin_shufflevector(ab0, ce0, 2, 3, 6, 7);
    col[2] = __builtin_shufflevector(ab1, ce1, 0, 1, 4, 5);
    col[3] = __builtin_shufflevector(ab1, ce1, 2, 3, 6, 7);
}

// The squares of an H x W object (shape fixed at compile time), row-major.
template <int H, int W, class Q>
KELM_NORM_INLINE void squares(const Q& q, typename Q::V* sq)
{
    if constexpr (W == 4 && kUnitRowView<typename Q::View>) {
        for (int i = 0; i < H; ++i) {
            columns4(q, i, sq + 4 * i);
            for (int j = 0; j < 4; ++j) sq[4 * i + j] = sq[4 * i + j] * sq[4 * i + j];
        }
    } else {
#pragma GCC unroll 36
        for (int e = 0; e < H * W; ++e) sq[e] = q.square(e / W, e % W);
    }
}

// x(0,0)² + x(0,1)² + ... in ascending order, row by row.  H and W fix the
// shape at compile time (0: read h and w).
template <int H, int W, class Q>
KELM_NORM_INLINE typename Q::V squares_ascending(const Q& q, int h, int w)
{
    if constexpr (H > 0 && W > 0) {
        typename Q::V sq[H * W];
        squares<H, W>(q, sq);
        typename Q::V s = sq[0];
#pragma GCC unroll 36
        for (int e = 1; e < H * W; ++e) s = s + sq[e];
        return s;
    } else {
        const int hh = H ? H : h, ww = W ? W : w;
        typename Q::V s = q.square(0, 0);
        for (int j = 1; j < ww; ++j) s = s + q.square(0, j);
        for (int i = 1; i < hh; ++i)
            for (int j = 0; j < ww; ++j) s = s + q.square(i, j);
        return s;
    }
}

// The paired sums of the refined 32f kernel.
template <int N, class Q>
KELM_NORM_INLINE typename Q::V squares_paired(const Q& q)
{
    typename Q::V x[N];
    squares<1, N>(q, x);
    const auto p01 = x[0] + x[1];
    if constexpr (N == 3) return p01 + x[2];
    const auto p0123 = p01 + (x[2] + x[3]);
    if constexpr (N == 4) return p0123;
    if constexpr (N == 5) return p0123 + x[4];
    if constexpr (N == 6) return p0123 + (x[4] + x[5]);
}

// Refined: the estimate path of contiguous 32f vectors of length 3..6.
template <class D>
constexpr bool kRefinedL2 = std::is_same_v<D, Strided<float, true>>;

template <int H, int W, bool Refined, class D>
KELM_NORM_INLINE void sumsq_root_block(const D& d, ptrdiff_t k, int live, int h, int w, typename D::Elem* dst)
{
    const FourObjects<D> q(d, k, live);
    if constexpr (Refined) store_live(refined_root(squares_paired<W>(q)), dst, live);
    else store_live(lane_sqrt(squares_ascending<H, W>(q, h, w)), dst, live);
}

// --- flat objects, eight at a time -------------------------------------------
//
// An object whose elements follow each other without gaps (unit element
// stride, row stride = width) is one run of H·W elements.  Eight such
// objects are read as runs of S = 4 elements (16 bytes of floats, 32 of
// doubles) and transposed in registers, so that lane l of column j holds
// element c + j of object l; the squares are then added in ascending order
// exactly as above.  A last run that would pass the end of an object starts
// S elements before the end instead and only its new columns are used, so
// nothing outside the objects is read.

typedef float NormF8 __attribute__((vector_size(32)));

// Eight doubles as two four-lane halves (one register each under AVX2).
struct NormD8 {
    vx::d4 lo, hi;
};
KELM_NORM_INLINE NormD8 operator*(NormD8 a, NormD8 b) { return {a.lo * b.lo, a.hi * b.hi}; }
KELM_NORM_INLINE NormD8 operator+(NormD8 a, NormD8 b) { return {a.lo + b.lo, a.hi + b.hi}; }

template <class T>
struct Flat8;
template <>
struct Flat8<float> {
    using V = NormF8;
    using Part = vx::f4;
    static constexpr int S = 4;
};
template <>
struct Flat8<double> {
    using V = NormD8;
    using Part = vx::d4;
    static constexpr int S = 4;
};

// f(integral_constant<I>) for I = Begin .. End - 1, written out and inlined
// (the eight-lane values must never cross a call).
template <int Begin, int End, class F>
KELM_NORM_INLINE void norm_unrolled(F&& f)
{
    if constexpr (Begin < End) {
        f(std::integral_constant<int, Begin>{});
        norm_unrolled<Begin + 1, End>(f);
    }
}

template <class T>
KELM_NORM_INLINE typename Flat8<T>::Part load_part(const char* p)
{
    typename Flat8<T>::Part v;
    __builtin_memcpy(&v, p, sizeof v);
    return v;
}

// Columns c .. c+3 of eight float objects; at(l) is the address of object l
// and c a byte offset.
template <class At>
KELM_NORM_INLINE void flat_columns(const At& at, ptrdiff_t c, NormF8* col)
{
    auto part = [&](int l) __attribute__((always_inline)) { return load_part<float>(at(l) + c); };
    const NormF8 r0 = __builtin_shufflevector(part(0), part(4), 0, 1, 2, 3, 4, 5, 6, 7);
    const NormF8 r1 = __builtin_shufflevector(part(1), part(5), 0, 1, 2, 3, 4, 5, 6, 7);
    const NormF8 r2 = __builtin_shufflevector(part(2), part(6), 0, 1, 2, 3, 4, 5, 6, 7);
    const NormF8 r3 = __builtin_shufflevector(part(3), part(7), 0, 1, 2, 3, 4, 5, 6, 7);
    const NormF8 t0 = __builtin_shufflevector(r0, r1, 0, 8, 1, 9, 4, 12, 5, 13);
    const NormF8 t1 = __builtin_shufflevector(r0, r1, 2, 10, 3, 11, 6, 14, 7, 15);
    const NormF8 t2 = __builtin_shufflevector(r2, r3, 0, 8, 1, 9, 4, 12, 5, 13);
    const NormF8 t3 = __builtin_shufflevector(r2, r3, 2, 10, 3, 11, 6, 14, 7, 15);
    col[0] = __builtin_shufflevector(t0, t2, 0, 1, 8, 9, 4, 5, 12, 13);
    col[1] = __builtin_shufflevector(t0, t2, 2, 3, 10, 11, 6, 7, 14, 15);
    col[2] = __builtin_shufflevector(t1, t3, 0, 1, 8, 9, 4, 5, 12, 13);
    col[3] = __builtin_shufflevector(t1, t3, 2, 3, 10, 11, 6, 7, 14, 15);
}

// Columns c .. c+3 of eight double objects: two 4 x 4 transposes.
template <class At>
KELM_NORM_INLINE void flat_columns(const At& at, ptrdiff_t c, NormD8* col)
{
    auto row = [&](int l) __attribute__((always_inline)) { return load_part<double>(at(l) + c); };
    auto half = [&](int l0, vx::d4* out) __attribute__((always_inline)) {
        const vx::d4 a0 = row(l0), a1 = row(l0 + 1), a2 = row(l0 + 2), a3 = row(l0 + 3);
        const vx::d4 t0 = __builtin_shufflevector(a0, a1, 0, 4, 2, 6), t1 = __builtin_shufflevector(a0, a1, 1, 5, 3, 7);
        const vx::d4 t2 = __builtin_shufflevector(a2, a3, 0, 4, 2, 6), t3 = __builtin_shufflevector(a2, a3, 1, 5, 3, 7);
        out[0] = __builtin_shufflevector(t0, t2, 0, 1, 4, 5);
        out[1] = __builtin_shufflevector(t1, t3, 0, 1, 4, 5);
        out[2] = __builtin_shufflevector(t0, t2, 2, 3, 6, 7);
        out[3] = __builtin_shufflevector(t1, t3, 2, 3, 6, 7);
    };
    vx::d4 lo[4], hi[4];
    half(0, lo);
    half(4, hi);
    for (int j = 0; j < 4; ++j) col[j] = {lo[j], hi[j]};
}

// The ascending sums of squares of B blocks of eight flat objects of NN
// elements, the blocks' chains interleaved; at(b, l) addresses object l of
// block b.
template <class T, int NN, int B, class At>
KELM_NORM_INLINE void flat_sumsq(const At& at, typename Flat8<T>::V* s)
{
    using V = typename Flat8<T>::V;
    constexpr int S = Flat8<T>::S;
    norm_unrolled<0, (NN + S - 1) / S>([&](auto g) __attribute__((always_inline)) {
        constexpr int first = S * g, c = first + S <= NN ? first : NN - S;
        norm_unrolled<0, B>([&](auto b) __attribute__((always_inline)) {
            V col[S];
            flat_columns([&](int l) __attribute__((always_inline)) { return at(b, l); },
                         ptrdiff_t(c) * ptrdiff_t(sizeof(T)), col);
            norm_unrolled<first, (first + S < NN ? first + S : NN)>([&](auto e) __attribute__((always_inline)) {
                const V x = col[e - c];
                if constexpr (e == 0) s[b] = x * x;
                else s[b] = s[b] + x * x;
            });
        });
    });
}

KELM_NORM_INLINE void store_roots(NormF8 s, float* dst)
{
    const vx::f4 lo = lane_sqrt(vx::f4(__builtin_shufflevector(s, s, 0, 1, 2, 3)));
    const vx::f4 hi = lane_sqrt(vx::f4(__builtin_shufflevector(s, s, 4, 5, 6, 7)));
    __builtin_memcpy(dst, &lo, sizeof lo);
    __builtin_memcpy(dst + 4, &hi, sizeof hi);
}
KELM_NORM_INLINE void store_roots(NormD8 s, double* dst)
{
    const vx::d4 lo = lane_sqrt(s.lo), hi = lane_sqrt(s.hi);
    __builtin_memcpy(dst, &lo, sizeof lo);
    __builtin_memcpy(dst + 4, &hi, sizeof hi);
}

// B blocks of eight objects at a time, then single blocks, while whole
// blocks remain; returns the first object left.  object(k) is the address
// of object k.
template <class T, int NN, int B, class Obj>
KELM_NORM_INLINE int flat_blocks(const Obj& object, T* dst, int count, ptrdiff_t ahead = 0)
{
    typename Flat8<T>::V s[B];
    int k = 0;
    for (; k + 8 * B <= count; k += 8 * B) {
        if (ahead) {
            const char* f = object(k) + ahead;
            for (ptrdiff_t i = 0; i < ptrdiff_t(8 * B * NN * sizeof(T)); i += 64) __builtin_prefetch(f + i, 0, 2);  // prefetcht1
        }
        flat_sumsq<T, NN, B>([&](int b, int l) __attribute__((always_inline)) { return object(k + 8 * b + l); }, s);
        norm_unrolled<0, B>([&](auto b) __attribute__((always_inline)) { store_roots(s[b], dst + k + 8 * b); });
    }
    for (; k + 8 <= count; k += 8) {
        flat_sumsq<T, NN, 1>([&](int, int l) __attribute__((always_inline)) { return object(k + l); }, s);
        store_roots(s[0], dst + k);
    }
    return k;
}

// Blocks interleaved: two chains of additions cover more of their latency
// but hold twice the columns; measured, two pay for the 5 x 5 floats and
// the 6 x 6 doubles from memory, one for the others (the 6 x 6 floats gain
// from two in cache and lose from memory).
template <class T, int NN>
constexpr int kFlatInterleave = (std::is_same_v<T, double> ? NN >= 36 : NN == 25) ? 2 : 1;

// Shapes with at least one run of four elements take the flat walker.
template <class T, int NN>
constexpr bool kFlatShape = NN >= Flat8<T>::S;

// Objects back to back are requested this many bytes ahead (measured: 8 KB
// and less leave the 5 x 5 shapes waiting), into the second-level cache
// (into the first, the requests conflict with the lines of the eight
// objects being read column by column; measured).
constexpr ptrdiff_t kFlatAhead = 16384;

template <class D>
constexpr bool kFlatDesc = false;
template <class T>
constexpr bool kFlatDesc<Strided<T, true>> = true;
template <class T>
constexpr bool kFlatDesc<List<T, true>> = true;

template <int H, int W, class D>
KELM_NORM_INLINE int flat_prefix(const D& d, typename D::Elem* dst, int count)
{
    using T = typename D::Elem;
    constexpr int NN = H * W;
    if constexpr (kFlatDesc<D> && kFlatShape<T, NN>) {
        if (H > 1 && d.row != ptrdiff_t(W * sizeof(T))) return 0;
        constexpr int B = kFlatInterleave<T, NN>;
        if constexpr (std::is_same_v<D, Strided<T, true>>) {
            const char* p = d.base;
            const ptrdiff_t obj = d.obj;
            return flat_blocks<T, NN, B>([p, obj](int k) __attribute__((always_inline)) { return p + k * obj; }, dst,
                                         count, obj == ptrdiff_t(NN * sizeof(T)) ? kFlatAhead : 0);
        } else {
            return flat_blocks<T, NN, B>(
                [&d](int k) __attribute__((always_inline)) { return static_cast<const char*>(d.list[k] + d.shift); },
                dst, count);
        }
    }
    return 0;
}

// The array walker, compiled for the baseline and for AVX2 (where the four
// 64f lanes are one register).
template <int H, int W, bool Refined, class D>
static KELM_WIDE void sumsq_root(const D& d, int h, int w, typename D::Elem* dst, int count)
{
    int k = 0;
    if constexpr (!Refined && H > 0 && W > 0) k = flat_prefix<H, W>(d, dst, count);
    for (; k + kNormLanes <= count; k += kNormLanes) sumsq_root_block<H, W, Refined>(d, k, kNormLanes, h, w, dst + k);
    if (k < count) sumsq_root_block<H, W, Refined>(d, k, count - k, h, w, dst + k);
}

// Long contiguous 32f vectors: four running sums per vector.
inline float l2_four_sums(const float* x, int len)
{
    vx::f4 p = vx::load<vx::f4, 4>(x);
    p = p * p;
    int j = 4;
    for (; j + 4 <= len; j += 4) {
        const vx::f4 v = vx::load<vx::f4, 4>(x + j);
        p = p + v * v;
    }
    vx::f4 t = {0, 0, 0, 0};  // the tail into the first lanes; +0 leaves a lane's sum as it is
    switch (len - j) {
    case 1: t = vx::load<vx::f4, 1>(x + j); break;
    case 2: t = vx::load<vx::f4, 2>(x + j); break;
    case 3: t = vx::load<vx::f4, 3>(x + j); break;
    default: break;
    }
    p = p + t * t;
    const vx::f4 s = {(p[0] + p[1]) + (p[2] + p[3]), 0, 0, 0};
    return lane_sqrt(s)[0];
}

// The L2Norm kernel of every description: ownkelmL2Norm_va (contiguous),
// _S2, _P, _L and _LS2 are its instantiations; a single vector is an array
// of one.
template <class D>
inline kelStatus ownkelmL2Norm_va(const D& d, int len, typename D::Elem* dst, int count)
{
    constexpr bool refined = kRefinedL2<D>;
    switch (len) {
    case 3: sumsq_root<1, 3, refined>(d, 1, len, dst, count); break;
    case 4: sumsq_root<1, 4, refined>(d, 1, len, dst, count); break;
    case 5: sumsq_root<1, 5, refined>(d, 1, len, dst, count); break;
    case 6: sumsq_root<1, 6, refined>(d, 1, len, dst, count); break;
    default:
        if constexpr (refined) {
            if (len >= 11) {
                for (int k = 0; k < count; ++k) dst[k] = l2_four_sums(&d[k][0], len);
                break;
            }
        }
        sumsq_root<1, 0, false>(d, 1, len, dst, count);
    }
    return kelOk;
}

template <class D>
inline kelStatus ownkelmL2Norm_v(const D& d, int len, typename D::Elem* dst)
{
    return ownkelmL2Norm_va(d, len, dst, 1);
}

// FrobNorm: the ascending order on every path.
template <class D>
inline kelStatus ownkelmFrobNorm_ma(const D& d, int width, int height, typename D::Elem* dst, int count)
{
    if (width == height) {
        switch (width) {
        case 3: sumsq_root<3, 3, false>(d, 3, 3, dst, count); return kelOk;
        case 4: sumsq_root<4, 4, false>(d, 4, 4, dst, count); return kelOk;
        case 5: sumsq_root<5, 5, false>(d, 5, 5, dst, count); return kelOk;
        case 6: sumsq_root<6, 6, false>(d, 6, 6, dst, count); return kelOk;
        default: break;
        }
    }
    sumsq_root<0, 0, false>(d, height, width, dst, count);
    return kelOk;
}

template <class D>
inline kelStatus ownkelmFrobNorm_m(const D& d, int width, int height, typename D::Elem* dst)
{
    return ownkelmFrobNorm_ma(d, width, height, dst, 1);
}

// Trace.  The diagonal of small objects stored back to back touches every
// line of them; when the array is larger than the caches' share of one core,
// the lines kFlatAhead bytes ahead are requested as the walk goes, four
// objects at a time.
template <class D, class F>
__attribute__((noinline)) void trace_ahead(const D& d, ptrdiff_t obj, typename D::Elem* dst, int count, const F& diag_sum)
{
    const char* base = d.base;
    const char* next = base + kFlatAhead;  // the first line not yet requested
    for (int k = 0; k < count; k += 4) {
        const char* p = base + ptrdiff_t(k) * obj + kFlatAhead;
        for (; next < p + 4 * obj; next += 64) __builtin_prefetch(next, 0, 2);
        const int m = count - k < 4 ? count - k : 4;
        for (int l = 0; l < m; ++l) dst[k + l] = diag_sum(d[k + l]);
    }
}

template <class D, class F>
KELM_NORM_INLINE void trace_walk(const D& d, int n, typename D::Elem* dst, int count, const F& diag_sum)
{
    using T = typename D::Elem;
    if constexpr (std::is_same_v<D, Strided<T, true>>) {
        const ptrdiff_t obj = ptrdiff_t(n) * n * ptrdiff_t(sizeof(T));
        if (d.obj == obj && d.row == ptrdiff_t(n) * ptrdiff_t(sizeof(T)) && obj <= 64 &&
            ptrdiff_t(count) * obj > (ptrdiff_t(1) << 22)) {
            trace_ahead(d, obj, dst, count, diag_sum);
            return;
        }
    }
    for (int k = 0; k < count; ++k) dst[k] = diag_sum(d[k]);
}

template <class D>
inline kelStatus ownkelmTrace_ma(const D& d, int n, typename D::Elem* dst, int count)
{
    switch (n) {
    case 3: trace_walk(d, n, dst, count, [](const auto& o) { return o(0, 0) + o(1, 1) + o(2, 2); }); break;
    case 4: trace_walk(d, n, dst, count, [](const auto& o) { return o(0, 0) + o(1, 1) + o(2, 2) + o(3, 3); }); break;
    case 5:
        trace_walk(d, n, dst, count, [](const auto& o) { return o(4, 4) + o(0, 0) + o(1, 1) + o(2, 2) + o(3, 3); });
        break;
    default:
        for (int k = 0; k < count; ++k) {
            const auto o = d[k];
            dst[k] = 0;
            for (int i = 0; i < n; ++i) dst[k] = dst[k] + o(i, i);
        }
    }
    return kelOk;
}

template <class D>
inline kelStatus ownkelmTrace_m(const D& d, int n, typename D::Elem* dst)
{
    return ownkelmTrace_ma(d, n, dst, 1);
}

// --- arrays: the parallel decision and the drivers -------------------------

#define KELM_NORM_DRIVER(NAME, KERNEL)                                                                         \
    template <class D, class... A>                                                                             \
    inline kelStatus NAME(const D& d, typename D::Elem* dst, int count, A... sizes)                            \
    {                                                                                                          \
        return with_unit_strides(                                                                              \
            [&](const auto& du) {                                                                              \
                return split(count, [&](int first, int mine) { return KERNEL(du.from(first), sizes..., dst + first, mine); }); \
            },                                                                                                 \
            d);                                                                                                \
    }

KELM_NORM_DRIVER(ownOMP_kelmL2Norm_va, ownkelmL2Norm_va)
KELM_NORM_DRIVER(ownOMP_kelmFrobNorm_ma, ownkelmFrobNorm_ma)
KELM_NORM_DRIVER(ownOMP_kelmTrace_ma, ownkelmTrace_ma)

template <class D>
inline kelStatus l2norm_array(const D& d, int len, typename D::Elem* dst, int count)
{
    if (I32(len) * I32(count) > 1500) return ownOMP_kelmL2Norm_va(d, dst, count, len);
    return with_unit_strides([&](const auto& du) { return ownkelmL2Norm_va(du, len, dst, count); }, d);
}

// FrobNorm's thresholds differ by description and type.
template <class T>
inline int frob_threshold(const Strided<T>& d)
{
    constexpr bool f = std::is_same_v<T, float>;
    return d.unit() ? (f ? 2500 : 1800) : (f ? 1800 : 1500);
}
template <class T>
inline int frob_threshold(const List<T>&) { return 1600; }
template <class T>
inline int frob_threshold(const Pointers<T>&) { return std::is_same_v<T, float> ? 1500 : 2500; }

template <class D>
inline kelStatus frobnorm_array(const D& d, int width, int height, typename D::Elem* dst, int count)
{
    if (I32(width) * I32(height) * I32(count) > frob_threshold(d))
        return ownOMP_kelmFrobNorm_ma(d, dst, count, width, height);
    return with_unit_strides([&](const auto& du) { return ownkelmFrobNorm_ma(du, width, height, dst, count); }, d);
}

template <class D>
inline kelStatus trace_array(const D& d, int n, typename D::Elem* dst, int count)
{
    if (I32(n) * I32(count) > 3600) return ownOMP_kelmTrace_ma(d, dst, count, n);
    return with_unit_strides([&](const auto& du) { return ownkelmTrace_ma(du, n, dst, count); }, d);
}

}  // namespace kelm
