// Kernels of Mul with a vector or a constant operand.
//
// Matrix-vector: y(i) = sum over k of op(A)(i, k) * x(k), op the identity
// (m) or the transpose of the stored matrix (t).  The sum starts at zero and
// takes the products in ascending k, in the element type: callers rely on
// those bits, including 0 + (-0) = +0 for a row of negative zero products, so
// every path (general loop, written-out orders, SSE) starts from zero.
//
// The matrix-vector walkers are compiled for the baseline and for AVX2 (no
// fused multiply-add), the clone picked at load; both do the same IEEE
// operations in the same order.
//
// By-constant: every result element is one product, source element times
// the constant, so any order of work gives the same bits.
#pragma once

#include <emmintrin.h>

#include <cstdint>
#include <type_traits>

#include "common/types.h"
#include "common/dispatch.h"
#include "common/stream.h"
#include "elementwise/addsub/kernels.h"
#include "common/vectors.h"

namespace kelm {

// A single matrix given in a strided or pointer form has object stride 0.
template <class A>
bool single_object(const A& a)
{
    if constexpr (std::is_same_v<A, Strided<typename A::Elem, true>> ||
                  std::is_same_v<A, Strided<typename A::Elem, false>> ||
                  std::is_same_v<A, Pointers<typename A::Elem>>)
        return a.obj == 0;
    else
        return false;
}

template <class V>
constexpr bool unit_dense_view = false;
template <class T>
constexpr bool unit_dense_view<DenseView<T, true>> = true;

// --- matrix-vector --------------------------------------------------------------

// The general loop: each result element is cleared, then the running sum is
// stored into it after every product.
template <bool Tr, class A, class X, class Y>
static KELM_WIDE __attribute__((flatten)) void mv_general(int count, const A& a, const X& x, const Y& y, int rows, int inner)
{
    using T = typename Y::Elem;
    for (int k = 0; k < count; ++k) {
        const auto av = a[k];
        const auto xv = x[k];
        const auto yv = y[k];
        for (int i = 0; i < rows; ++i) {
            T& s = yv[i];
            s = T(0);
            for (int j = 0; j < inner; ++j) s = s + (Tr ? av(j, i) : av(i, j)) * xv[j];
        }
    }
}

// Written-out square order N: the used matrix is held in registers (loaded
// once for a single matrix), the vector is read before the result is written.
template <int N, bool Tr, class T>
struct MvFixed {
    T m[N][N];  // m[i][k] = op(A)(i, k)

    template <class V>
    void load(const V& a)
    {
#pragma GCC unroll 8
        for (int i = 0; i < N; ++i)
#pragma GCC unroll 8
            for (int k = 0; k < N; ++k) m[i][k] = Tr ? a(k, i) : a(i, k);
    }

    // y = op(A) x with op(A)(i, k) = at(i, k): the vector is copied first, the
    // products of a row added in ascending k from zero, the result stored last.
    template <class At, class XV, class YV>
    static void product(const At& at, const XV& x, const YV& y)
    {
        T xs[N];
#pragma GCC unroll 8
        for (int k = 0; k < N; ++k) xs[k] = x[k];
        T ys[N];
#pragma GCC unroll 8
        for (int i = 0; i < N; ++i) {
            T s = T(0);
#pragma GCC unroll 8
            for (int k = 0; k < N; ++k) s = s + at(i, k) * xs[k];
            ys[i] = s;
        }
#pragma GCC unroll 8
        for (int i = 0; i < N; ++i) y[i] = ys[i];
    }

    template <class XV, class YV>
    void apply(const XV& x, const YV& y) const
    {
        product([&](int i, int k) { return m[i][k]; }, x, y);
    }

    // One matrix read straight from memory (no copy), for arrays of matrices.
    template <class V, class XV, class YV>
    static void direct(const V& a, const XV& x, const YV& y)
    {
        if constexpr (N == 4 && !Tr && std::is_same_v<T, double> && unit_dense_view<V> && unit_dense_view<XV> &&
                      unit_dense_view<YV>) {
            // Two result rows at a time: the products of a row pair, paired
            // by column, are added in ascending column order.
            const __m128d xa = _mm_loadu_pd(&x[0]), xb = _mm_loadu_pd(&x[2]);
            for (int i = 0; i < 4; i += 2) {
                const __m128d pa = _mm_mul_pd(_mm_loadu_pd(&a(i, 0)), xa), qa = _mm_mul_pd(_mm_loadu_pd(&a(i + 1, 0)), xa);
                const __m128d pb = _mm_mul_pd(_mm_loadu_pd(&a(i, 2)), xb), qb = _mm_mul_pd(_mm_loadu_pd(&a(i + 1, 2)), xb);
                __m128d t = _mm_add_pd(_mm_setzero_pd(), _mm_unpacklo_pd(pa, qa));
                t = _mm_add_pd(t, _mm_unpackhi_pd(pa, qa));
                t = _mm_add_pd(t, _mm_unpacklo_pd(pb, qb));
                _mm_storeu_pd(&y[i], _mm_add_pd(t, _mm_unpackhi_pd(pb, qb)));
            }
            return;
        }
        product([&](int i, int k) { return Tr ? a(k, i) : a(i, k); }, x, y);
    }
};

// 32f order 4: four result rows at a time, one column of op(A) per product,
// in the same ascending order as the scalar sum.
template <bool Tr>
struct MvFixed<4, Tr, float> {
    __m128 c[4];  // lane i of c[k] = op(A)(i, k)

    template <class V>
    void load(const V& a)
    {
        if constexpr (unit_dense_view<V>) {
            __m128 r0 = _mm_loadu_ps(&a(0, 0)), r1 = _mm_loadu_ps(&a(1, 0));
            __m128 r2 = _mm_loadu_ps(&a(2, 0)), r3 = _mm_loadu_ps(&a(3, 0));
            if (!Tr) _MM_TRANSPOSE4_PS(r0, r1, r2, r3);
            c[0] = r0, c[1] = r1, c[2] = r2, c[3] = r3;
        } else {
            for (int k = 0; k < 4; ++k)
                c[k] = Tr ? _mm_setr_ps(a(k, 0), a(k, 1), a(k, 2), a(k, 3))
                          : _mm_setr_ps(a(0, k), a(1, k), a(2, k), a(3, k));
        }
    }

    template <class XV, class YV>
    void apply(const XV& x, const YV& y) const
    {
        const __m128 xs = unit_dense_view<XV> ? _mm_loadu_ps(&x[0]) : _mm_setr_ps(x[0], x[1], x[2], x[3]);
        __m128 s = _mm_add_ps(_mm_setzero_ps(), _mm_mul_ps(c[0], _mm_shuffle_ps(xs, xs, 0x00)));
        s = _mm_add_ps(s, _mm_mul_ps(c[1], _mm_shuffle_ps(xs, xs, 0x55)));
        s = _mm_add_ps(s, _mm_mul_ps(c[2], _mm_shuffle_ps(xs, xs, 0xAA)));
        s = _mm_add_ps(s, _mm_mul_ps(c[3], _mm_shuffle_ps(xs, xs, 0xFF)));
        if constexpr (unit_dense_view<YV>) {
            _mm_storeu_ps(&y[0], s);
        } else {
            alignas(16) float ys[4];
            _mm_store_ps(ys, s);
            y[0] = ys[0], y[1] = ys[1], y[2] = ys[2], y[3] = ys[3];
        }
    }

    template <class V, class XV, class YV>
    static void direct(const V& a, const XV& x, const YV& y)
    {
        if constexpr (!Tr && unit_dense_view<V> && unit_dense_view<XV> && unit_dense_view<YV>) {
            // The products of each row, turned so that lane i holds row i.
            const __m128 xs = _mm_loadu_ps(&x[0]);
            __m128 p0 = _mm_mul_ps(_mm_loadu_ps(&a(0, 0)), xs), p1 = _mm_mul_ps(_mm_loadu_ps(&a(1, 0)), xs);
            __m128 p2 = _mm_mul_ps(_mm_loadu_ps(&a(2, 0)), xs), p3 = _mm_mul_ps(_mm_loadu_ps(&a(3, 0)), xs);
            _MM_TRANSPOSE4_PS(p0, p1, p2, p3);
            __m128 s = _mm_add_ps(_mm_setzero_ps(), p0);
            s = _mm_add_ps(s, p1);
            s = _mm_add_ps(s, p2);
            _mm_storeu_ps(&y[0], _mm_add_ps(s, p3));
        } else {
            MvFixed m;
            m.load(a);
            m.apply(x, y);
        }
    }
};

// 32f order 3: as order 4 with three lanes in use; the fourth lane is zero
// and never stored.
template <bool Tr>
struct MvFixed<3, Tr, float> {
    __m128 c[3];  // lane i of c[k] = op(A)(i, k)

    template <class V>
    static __m128 row(const V& a, int i)
    {
        if constexpr (unit_dense_view<V>) {
            const float* p = &a(i, 0);
            return _mm_movelh_ps(_mm_loadl_pi(_mm_setzero_ps(), reinterpret_cast<const __m64*>(p)), _mm_load_ss(p + 2));
        } else {
            return _mm_setr_ps(a(i, 0), a(i, 1), a(i, 2), 0.0f);
        }
    }

    template <class V>
    void load(const V& a)
    {
        __m128 r0 = row(a, 0), r1 = row(a, 1), r2 = row(a, 2);
        if (!Tr) {
            __m128 r3 = _mm_setzero_ps();
            _MM_TRANSPOSE4_PS(r0, r1, r2, r3);
        }
        c[0] = r0, c[1] = r1, c[2] = r2;
    }

    template <class XV, class YV>
    void apply(const XV& x, const YV& y) const
    {
        const float x0 = x[0], x1 = x[1], x2 = x[2];
        __m128 s = _mm_add_ps(_mm_setzero_ps(), _mm_mul_ps(c[0], _mm_set1_ps(x0)));
        s = _mm_add_ps(s, _mm_mul_ps(c[1], _mm_set1_ps(x1)));
        s = _mm_add_ps(s, _mm_mul_ps(c[2], _mm_set1_ps(x2)));
        if constexpr (unit_dense_view<YV>) {
            _mm_storel_pi(reinterpret_cast<__m64*>(&y[0]), s);
            _mm_store_ss(&y[2], _mm_movehl_ps(s, s));
        } else {
            alignas(16) float ys[4];
            _mm_store_ps(ys, s);
            y[0] = ys[0], y[1] = ys[1], y[2] = ys[2];
        }
    }

    template <class V, class XV, class YV>
    static void direct(const V& a, const XV& x, const YV& y)
    {
        MvFixed m;
        m.load(a);
        m.apply(x, y);
    }
};

// 32f order 3 on densely packed arrays of matrices and vectors, four objects
// at a time: the objects are turned into lanes (lane t holds object t), each
// result element keeps its own sum from zero in ascending k.
template <int I0, int I1, int I2, int I3>
inline __m128 lanes(__m128 a, __m128 b)
{
    return _mm_shuffle_ps(a, b, I0 | (I1 << 2) | (I2 << 4) | (I3 << 6));
}

template <bool Tr>
void mv3_dense32(int count, const float* a, const float* x, float* y)
{
    constexpr int aStep = 9;
    __m128 m[9];  // m[i*3+j]: element (i, j) of the stored matrix of each lane's object
    const auto load_matrices = [&](const float* p) {
        __m128 q0 = _mm_loadu_ps(p), q1 = _mm_loadu_ps(p + aStep), q2 = _mm_loadu_ps(p + 2 * aStep),
               q3 = _mm_loadu_ps(p + 3 * aStep);
        _MM_TRANSPOSE4_PS(q0, q1, q2, q3);
        m[0] = q0, m[1] = q1, m[2] = q2, m[3] = q3;
        q0 = _mm_loadu_ps(p + 4), q1 = _mm_loadu_ps(p + aStep + 4), q2 = _mm_loadu_ps(p + 2 * aStep + 4),
        q3 = _mm_loadu_ps(p + 3 * aStep + 4);
        _MM_TRANSPOSE4_PS(q0, q1, q2, q3);
        m[4] = q0, m[5] = q1, m[6] = q2, m[7] = q3;
        m[8] = _mm_setr_ps(p[8], p[aStep + 8], p[2 * aStep + 8], p[3 * aStep + 8]);
    };
    int k = 0;
    for (; k + 4 <= count; k += 4, x += 12, y += 12) {
        load_matrices(a);
        a += 4 * aStep;
        const __m128 v0 = _mm_loadu_ps(x), v1 = _mm_loadu_ps(x + 4), v2 = _mm_loadu_ps(x + 8);
        const __m128 x0 = lanes<0, 3, 0, 2>(v0, lanes<2, 0, 1, 0>(v1, v2));
        const __m128 x1 = lanes<0, 2, 0, 2>(lanes<1, 0, 0, 0>(v0, v1), lanes<3, 0, 2, 0>(v1, v2));
        const __m128 x2 = lanes<0, 2, 0, 3>(lanes<2, 0, 1, 0>(v0, v1), v2);
        __m128 r[3];
        for (int i = 0; i < 3; ++i) {
            const __m128 c0 = m[Tr ? i : 3 * i], c1 = m[Tr ? 3 + i : 3 * i + 1], c2 = m[Tr ? 6 + i : 3 * i + 2];
            __m128 t = _mm_add_ps(_mm_setzero_ps(), _mm_mul_ps(c0, x0));
            t = _mm_add_ps(t, _mm_mul_ps(c1, x1));
            r[i] = _mm_add_ps(t, _mm_mul_ps(c2, x2));
        }
        _mm_storeu_ps(y, lanes<0, 2, 0, 2>(lanes<0, 0, 0, 0>(r[0], r[1]), lanes<0, 0, 1, 0>(r[2], r[0])));
        _mm_storeu_ps(y + 4, lanes<0, 2, 0, 2>(lanes<1, 0, 1, 0>(r[1], r[2]), lanes<2, 0, 2, 0>(r[0], r[1])));
        _mm_storeu_ps(y + 8, lanes<0, 2, 0, 2>(lanes<2, 0, 3, 0>(r[2], r[0]), lanes<3, 0, 3, 0>(r[1], r[2])));
    }
    for (; k < count; ++k, a += aStep, x += 3, y += 3)
        MvFixed<3, Tr, float>::direct(DenseView<float, true>{bytes(a), 12, 4}, DenseView<float, true>{bytes(x), 0, 4},
                                      DenseView<float, true>{bytes(y), 0, 4});
}

// One 32f 3x3 matrix times densely packed 3-vectors, four at a time, the
// results formed directly in memory order: lane l of output block b is
// result element (object, row) = ((4b + l) / 3, (4b + l) % 3), so each
// block multiplies fixed coefficient vectors with lanes picked from x.
template <bool Tr>
void mv3_single_dense32(int count, const float* a, const float* x, float* y)
{
    const auto at = [&](int i, int j) { return Tr ? a[j * 3 + i] : a[i * 3 + j]; };  // op(A)(i, j)
    __m128 c[3][3];  // c[b][j]: coefficients of term j in output block b
    for (int b = 0; b < 3; ++b)
        for (int j = 0; j < 3; ++j)
            c[b][j] = _mm_setr_ps(at((4 * b) % 3, j), at((4 * b + 1) % 3, j), at((4 * b + 2) % 3, j),
                                  at((4 * b + 3) % 3, j));
    const auto sum = [](const __m128* cb, __m128 t0, __m128 t1, __m128 t2) {
        __m128 s = _mm_add_ps(_mm_setzero_ps(), _mm_mul_ps(cb[0], t0));
        s = _mm_add_ps(s, _mm_mul_ps(cb[1], t1));
        return _mm_add_ps(s, _mm_mul_ps(cb[2], t2));
    };
    int k = 0;
    for (; k + 4 <= count; k += 4, x += 12, y += 12) {
        const __m128 v0 = _mm_loadu_ps(x), v1 = _mm_loadu_ps(x + 4), v2 = _mm_loadu_ps(x + 8);
        const __m128 a1 = lanes<1, 1, 0, 0>(v0, v1), a2 = lanes<2, 2, 1, 1>(v0, v1);
        const __m128 b0 = lanes<2, 2, 1, 1>(v1, v2), b1 = lanes<3, 3, 2, 2>(v1, v2);
        _mm_storeu_ps(y, sum(c[0], lanes<0, 0, 0, 3>(v0, v0), lanes<0, 1, 1, 2>(a1, a1), lanes<0, 1, 1, 2>(a2, a2)));
        _mm_storeu_ps(y + 4, sum(c[1], lanes<3, 3, 2, 2>(v0, v1), lanes<0, 0, 3, 3>(v1, v1), lanes<1, 1, 0, 0>(v1, v2)));
        _mm_storeu_ps(y + 8, sum(c[2], lanes<0, 2, 2, 2>(b0, b0), lanes<0, 2, 2, 2>(b1, b1), lanes<0, 3, 3, 3>(v2, v2)));
    }
    MvFixed<3, Tr, float> rest;
    rest.load(DenseView<float, true>{bytes(a), 12, 4});
    for (; k < count; ++k, x += 3, y += 3)
        rest.apply(DenseView<float, true>{bytes(x), 0, 4}, DenseView<float, true>{bytes(y), 0, 4});
}


// 32f order 4, op(A) = A, two objects at a time (object k in the low half,
// k + 1 in the high half): the row products are turned so that lane i of
// column vector j holds a(i, j) x(j), then added from zero in ascending j.
template <class V, class XV>
inline vx::f8 mv4_pair32(const V& a0, const V& a1, const XV& x0, const XV& x1)
{
    using namespace vx;
    const f8 xs = join(load<f4, 4>(&x0[0]), load<f4, 4>(&x1[0]));
    f8 p[4];
    for (int i = 0; i < 4; ++i) p[i] = join(load<f4, 4>(&a0(i, 0)), load<f4, 4>(&a1(i, 0))) * xs;
    transpose4(p);
    f8 s = f8{} + p[0];
    s = s + p[1];
    s = s + p[2];
    return s + p[3];
}

// 64f order 4, op(A) = A, one object: four row products in four-lane
// vectors, turned so that lane i of column vector j holds a(i, j) x(j).
template <class V, class XV>
inline vx::d4 mv4_dense64(const V& a, const XV& x)
{
    using namespace vx;
    const d4 xs = load<d4, 4>(&x[0]);
    d4 p[4];
    for (int i = 0; i < 4; ++i) p[i] = load<d4, 4>(&a(i, 0)) * xs;
    transpose4(p);
    d4 s = d4{} + p[0];
    s = s + p[1];
    s = s + p[2];
    return s + p[3];
}

// Four floats at byte offset off of the eight objects o[0..7], as four lane
// vectors: lane l of the low half of c[m] holds element m of object l, lane
// l of the high half that of object l + 4.
inline void quad_lanes32(const Bytes (&o)[8], ptrdiff_t off, vx::f8 (&c)[4])
{
    using namespace vx;
    for (int l = 0; l < 4; ++l)
        c[l] = join(load<f4, 4>(reinterpret_cast<const float*>(o[l] + off)),
                    load<f4, 4>(reinterpret_cast<const float*>(o[l + 4] + off)));
    transpose4(c);
}

// Elements 0..5 of a row of six at byte offset off, as six lane vectors
// (elements 4 and 5 from the four that end the row).
inline void row6_lanes32(const Bytes (&o)[8], ptrdiff_t off, vx::f8 (&c)[6])
{
    vx::f8 q[4];
    quad_lanes32(o, off, q);
    c[0] = q[0], c[1] = q[1], c[2] = q[2], c[3] = q[3];
    quad_lanes32(o, off + 8, q);
    c[4] = q[2], c[5] = q[3];
}

// 32f order 6, op(A) = A, contiguous elements: eight objects a block (lanes as
// quad_lanes32).  Each lane sums a(i, j) x(j) from zero in ascending j, as
// MvFixed does; every read of the block precedes its writes, so y may be x.
inline void mv6_block32(const Bytes (&a)[8], ptrdiff_t aRow, const Bytes (&x)[8], const Bytes (&y)[8])
{
    using namespace vx;
    f8 xs[6], ys[6];
    row6_lanes32(x, 0, xs);
    for (int i = 0; i < 6; ++i) {
        f8 r[6];
        row6_lanes32(a, i * aRow, r);
        f8 s = f8{} + r[0] * xs[0];
        for (int j = 1; j < 6; ++j) s = s + r[j] * xs[j];
        ys[i] = s;
    }
    // Back to rows: the same in-lane transposition for elements 0..3, pairs
    // for elements 4 and 5.
    f8 rows[4] = {ys[0], ys[1], ys[2], ys[3]};
    transpose4(rows);
    const f8 pairs[2] = {__builtin_shufflevector(ys[4], ys[5], 0, 8, 1, 9, 4, 12, 5, 13),
                         __builtin_shufflevector(ys[4], ys[5], 2, 10, 3, 11, 6, 14, 7, 15)};
    for (int l = 0; l < 4; ++l) {
        float* lo4 = reinterpret_cast<float*>(y[l]);
        float* hi4 = reinterpret_cast<float*>(y[l + 4]);
        store<4>(lo4, lo(rows[l]));
        store<4>(hi4, hi(rows[l]));
        const f4 pl = lo(pairs[l / 2]), ph = hi(pairs[l / 2]);
        __builtin_memcpy(lo4 + 4, reinterpret_cast<const float*>(&pl) + 2 * (l % 2), 8);
        __builtin_memcpy(hi4 + 4, reinterpret_cast<const float*>(&ph) + 2 * (l % 2), 8);
    }
}

// Results n elements each, back to back from a 16-byte boundary.
template <class Y>
bool packed_results(const Y& y, int count, int n)
{
    using T = typename Y::Elem;
    if constexpr (std::is_same_v<Y, Strided<T, true>>)
        return (count == 1 || y.obj == ptrdiff_t(n) * ptrdiff_t(sizeof(T))) && aligned16(&elem_at<T>(y.base));
    else
        return false;
}

// The walker of the written-out orders (compiled for the baseline and for
// AVX2, chosen at load).
template <int N, bool Tr, class A, class X, class Y>
static KELM_WIDE __attribute__((flatten)) void mv_fixed(int count, const A& a, const X& x, const Y& y)
{
    using T = typename Y::Elem;
    if constexpr (N == 3 && std::is_same_v<T, float> && std::is_same_v<A, Strided<T, true>> &&
                  std::is_same_v<X, Strided<T, true>> && std::is_same_v<Y, Strided<T, true>>) {
        if (a.row == 12 && (a.obj == 0 || a.obj == 36) && x.obj == 12 && y.obj == 12) {
            if (a.obj == 0)
                mv3_single_dense32<Tr>(count, reinterpret_cast<const float*>(a.base),
                                       reinterpret_cast<const float*>(x.base), reinterpret_cast<float*>(y.base));
            else
                mv3_dense32<Tr>(count, reinterpret_cast<const float*>(a.base), reinterpret_cast<const float*>(x.base),
                                reinterpret_cast<float*>(y.base));
            return;
        }
    }
    MvFixed<N, Tr, T> m;
    if (single_object(a)) {
        m.load(a[0]);
        for (int k = 0; k < count; ++k) m.apply(x[k], y[k]);
    } else {
        int k = 0;
        constexpr bool dense = unit_dense_view<decltype(a[0])> && unit_dense_view<decltype(x[0])> &&
                               unit_dense_view<decltype(y[0])>;
        if constexpr (N == 4 && !Tr && dense) {
            if constexpr (std::is_same_v<T, float>) {
                // Packed results of an array larger than the cache are
                // streamed to memory, 64 bytes at a time.
                if (packed_results(y, count, 4) && beyond_cache(std::size_t(count) * 96)) {
                    for (; k + 4 <= count; k += 4) {
                        const vx::f8 r[2] = {mv4_pair32(a[k], a[k + 1], x[k], x[k + 1]),
                                             mv4_pair32(a[k + 2], a[k + 3], x[k + 2], x[k + 3])};
                        stream64(&y[k][0], reinterpret_cast<const float*>(r));
                    }
                    stream_fence();
                }
                for (; k + 2 <= count; k += 2) {
                    const vx::f8 r = mv4_pair32(a[k], a[k + 1], x[k], x[k + 1]);
                    vx::store<4>(&y[k][0], vx::lo(r));
                    vx::store<4>(&y[k + 1][0], vx::hi(r));
                }
            } else {
                if (packed_results(y, count, 4) && beyond_cache(std::size_t(count) * 192)) {
                    for (; k + 2 <= count; k += 2) {
                        const vx::d4 r[2] = {mv4_dense64(a[k], x[k]), mv4_dense64(a[k + 1], x[k + 1])};
                        stream64(&y[k][0], reinterpret_cast<const double*>(r));
                    }
                    stream_fence();
                }
                for (; k < count; ++k) vx::store<4>(&y[k][0], mv4_dense64(a[k], x[k]));
            }
        }
        if constexpr (N == 6 && !Tr && dense && std::is_same_v<T, float> && std::is_same_v<A, Strided<T, true>> &&
                      std::is_same_v<X, A> && std::is_same_v<Y, A>) {
            for (; k + 8 <= count; k += 8) {
                Bytes ao[8], xo[8], yo[8];
                for (int l = 0; l < 8; ++l) ao[l] = a[k + l].p, xo[l] = x[k + l].p, yo[l] = y[k + l].p;
                mv6_block32(ao, a.row, xo, yo);
            }
        }
        for (; k < count; ++k) MvFixed<N, Tr, T>::direct(a[k], x[k], y[k]);
    }
}

// The matrix-vector kernel of every mv/tv member and description (the
// description types pick contiguous, general-stride, pointer or list code).
// w, h: the stored matrix.
template <bool Tr>
struct ownkelmMul_mv {
    int w, h;
    template <class A, class X, class Y>
    kelStatus operator()(int count, const A& a, const X& x, const Y& y) const
    {
        if (w == h) switch (w) {
            case 3: mv_fixed<3, Tr>(count, a, x, y); return kelOk;
            case 4: mv_fixed<4, Tr>(count, a, x, y); return kelOk;
            case 5: mv_fixed<5, Tr>(count, a, x, y); return kelOk;
            case 6: mv_fixed<6, Tr>(count, a, x, y); return kelOk;
            default: break;
            }
        mv_general<Tr>(count, a, x, y, Tr ? w : h, Tr ? h : w);
        return kelOk;
    }
};

// --- by constant ----------------------------------------------------------------

struct MulOp {
    template <class T>
    static T apply(T a, T b) { return a * b; }
};

// 32f rows of order N: full vectors of four, then a pair, then a single.
template <int N, bool Aligned>
inline void scale_row32(const float* s, float* d, __m128 c)
{
    int j = 0;
#pragma GCC unroll 2
    for (; j + 4 <= N; j += 4) {
        if (Aligned)
            _mm_store_ps(d + j, _mm_mul_ps(_mm_load_ps(s + j), c));
        else
            _mm_storeu_ps(d + j, _mm_mul_ps(_mm_loadu_ps(s + j), c));
    }
    if constexpr (N % 4 >= 2) {
        const __m128 v = _mm_loadl_pi(_mm_setzero_ps(), reinterpret_cast<const __m64*>(s + j));
        _mm_storel_pi(reinterpret_cast<__m64*>(d + j), _mm_mul_ps(v, c));
        j += 2;
    }
    if constexpr (N % 2) _mm_store_ss(d + j, _mm_mul_ss(_mm_load_ss(s + j), c));
}

// A densely packed run of products: single products up to a 16-byte aligned
// destination, then two 16-byte vectors at a time (streamed past the cache
// when the run is larger than it), single products for the rest.  Every product is the same IEEE multiply whichever part does it.
template <class T>
inline void scale_span(const T* s, T* d, ptrdiff_t n, T val)
{
    using V = std::conditional_t<std::is_same_v<T, float>, vx::f4, vx::d2>;
    constexpr int L = int(sizeof(V) / sizeof(T));
    ptrdiff_t e = 0;
    for (; e < n && (reinterpret_cast<std::uintptr_t>(d + e) & 15) != 0; ++e) d[e] = s[e] * val;
    if (beyond_cache(2 * std::size_t(n) * sizeof(T)) && aligned16(d + e)) {
        e = stream_blocks(d, e, n, [&](ptrdiff_t i) { return vx::load<V, L>(s + i) * val; });
    }
    for (; e + 2 * L <= n; e += 2 * L) {
        vx::store<L>(d + e, vx::load<V, L>(s + e) * val);
        vx::store<L>(d + e + L, vx::load<V, L>(s + e + L) * val);
    }
    for (; e < n; ++e) d[e] = s[e] * val;
}

// The contiguous 32f kernel for square order N (3 to 6).  Bases, row and
// object strides all multiples of 16 bytes take aligned loads and stores,
// anything else unaligned ones; densely packed arrays are one run either way
// (the run aligns itself to the destination).
template <int N>
kelStatus mac32_fixed(const float* src, ptrdiff_t srcObj, ptrdiff_t srcRow, float val, float* dst, ptrdiff_t dstObj,
                      ptrdiff_t dstRow, int count)
{
    const __m128 c = _mm_set1_ps(val);
    const char* s = reinterpret_cast<const char*>(src);
    char* d = reinterpret_cast<char*>(dst);
    const bool aligned = ((reinterpret_cast<std::uintptr_t>(s) | reinterpret_cast<std::uintptr_t>(d) |
                           std::uintptr_t(srcObj | srcRow | dstObj | dstRow)) & 15) == 0;
    constexpr ptrdiff_t row = N * 4, obj = N * N * 4;
    if (srcRow == row && dstRow == row && ((srcObj == obj && dstObj == obj) || count == 1)) {
        scale_span(src, dst, ptrdiff_t(count) * N * N, val);
        return kelOk;
    }
    for (int k = 0; k < count; ++k, s += srcObj, d += dstObj)
#pragma GCC unroll 6
        for (int i = 0; i < N; ++i) {
            const float* from = reinterpret_cast<const float*>(s + i * srcRow);
            float* to = reinterpret_cast<float*>(d + i * dstRow);
            if (aligned)
                scale_row32<N, true>(from, to, c);
            else
                scale_row32<N, false>(from, to, c);
        }
    return kelOk;
}

inline kelStatus mac32_square(int n, int count, const Strided<float, true>& s, float val, const Strided<float, true>& d)
{
    const float* src = reinterpret_cast<const float*>(s.base);
    float* dst = reinterpret_cast<float*>(d.base);
    switch (n) {
    case 3: return mac32_fixed<3>(src, s.obj, s.row, val, dst, d.obj, d.row, count);
    case 4: return mac32_fixed<4>(src, s.obj, s.row, val, dst, d.obj, d.row, count);
    case 5: return mac32_fixed<5>(src, s.obj, s.row, val, dst, d.obj, d.row, count);
    default: return mac32_fixed<6>(src, s.obj, s.row, val, dst, d.obj, d.row, count);
    }
}

// The by-constant kernel of every mc, tc, vc member and description: h rows of
// w elements of the result; the constant description is a Value, Values or
// ValueList.
struct ownkelmMul_mc {
    int h, w;
    template <class S, class C, class D>
    kelStatus operator()(int count, const S& s, const C& c, const D& d) const
    {
        using T = typename D::Elem;
        if constexpr (std::is_same_v<S, Strided<T, true>> && std::is_same_v<D, Strided<T, true>> &&
                      std::is_same_v<C, Value<T>>) {
            if constexpr (std::is_same_v<T, float>)
                if (h == w && w >= 3 && w <= 6) return mac32_square(w, count, s, c.v, d);
            // Densely packed objects: one run of count*h*w products.
            const ptrdiff_t row = ptrdiff_t(w) * ptrdiff_t(sizeof(T)), obj = h * row;
            const bool rowsDense = h == 1 || (s.row == row && d.row == row);
            const bool objsDense = count == 1 || (s.obj == obj && d.obj == obj);
            if (rowsDense && objsDense) {
                scale_span(reinterpret_cast<const T*>(s.base), reinterpret_cast<T*>(d.base), ptrdiff_t(count) * h * w,
                           c.v);
                return kelOk;
            }
        }
        return ownkelm_elementwise<MulOp>(count, s, c, d, h, w);
    }
};

// --- when an array goes parallel ------------------------------------------------

// Thresholds by description and path: strided with unit element strides,
// strided with general ones, list with unit / general, pointer.  Serial when
// the work measure is at most the threshold.  The values differ between
// members and paths on purpose (mac: 3500 on both strided paths, 1500 on the
// general 32f list path).
struct Limits {
    int strided, stridedS2, list, listS2, pointer;
};

template <Form F>
bool above(I32 work, const Limits& l, bool unitElems)
{
    if (F == Form::Strided) return work > (unitElems ? l.strided : l.stridedS2);
    if (F == Form::List) return work > (unitElems ? l.list : l.listS2);
    return work > l.pointer;
}

template <class T>
constexpr Limits kMatVecLimits = {sizeof(T) == 4 ? 2500 : 3600, 1440, 3600, 1440, 1440};  // also vac
template <class T>
constexpr Limits kMacLimits = {3500, 3500, 3500, sizeof(T) == 4 ? 1500 : 3500, 1700};

// vca and vaca make one test before the kernel choice: the same threshold
// whatever the element strides.
template <Form F>
bool above_single_test(I32 work)
{
    return work > (F == Form::Strided ? 2100 : F == Form::List ? 1200 : 650);
}

// Work measures: elements read and written (a single constant not counted,
// each constant of an array counted once), in wrapping signed 32-bit.
inline I32 work_mva(int w, int h, int n) { return I32(w) * h + (I32(w) + h) * n; }
template <bool Tr>
I32 work_mav(int w, int h, int n)
{
    return Tr ? I32(w) * (I32(h) + 1) * n + h : I32(h) * (I32(w) + 1) * n + w;
}
inline I32 work_mava(int w, int h, int n) { return (I32(w) * (I32(h) + 1) + h) * n; }
inline I32 work_vac(int len, int n) { return I32(2) * len * n; }
inline I32 work_mac(int w, int h, int n) { return I32(2) * w * h * n; }
inline I32 work_vca(int len, int n) { return I32(len) * n + len + n; }
inline I32 work_vaca(int len, int n) { return I32(2) * len * n + n; }

// --- serial run and parallel driver -----------------------------------------------

// Runs the kernel on the calling thread: contiguous form when every element
// stride of the call is the element size, else the general-stride form.
template <class Kernel, class... D>
kelStatus mul_serial(int count, const Kernel& kernel, const D&... d)
{
    return with_unit_strides([&](const auto&... x) { return kernel(count, x...); }, d...);
}

template <class Kernel, class... D>
kelStatus mul_parallel(int count, const Kernel& kernel, const D&... d)
{
    return with_unit_strides([&](const auto&... x) { return split_over(count, kernel, x...); }, d...);
}

// Names a member's parallel driver: ownOMP_kelmMul_mva and the like.
#define KELM_MUL_DRIVER(NAME)                                          \
    template <class K, class... D>                                     \
    kelStatus ownOMP_##NAME(int count, const K& kernel, const D&... d) \
    {                                                                  \
        return ::kelm::mul_parallel(count, kernel, d...);              \
    }

// An array entry's tail: the driver above the threshold, else the kernel.
#define KELM_MUL_RUN(NAME, PARALLEL, KERNEL, ...)                                   \
    {                                                                               \
        const auto kernel_ = KERNEL;                                                \
        if (PARALLEL) return ownOMP_##NAME(count, kernel_, __VA_ARGS__);            \
        return ::kelm::mul_serial(count, kernel_, __VA_ARGS__);                     \
    }

}  // namespace kelm
