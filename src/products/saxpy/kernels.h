// Kernels of Saxpy, LComb and Gaxpy.
//
// Saxpy:  d(i) = x(i) a + y(i)          (x is always the scaled operand)
// LComb:  d(i) = x(i) a + y(i) b        (both products rounded, then added)
// Gaxpy:  d(i) = (sum over k of A(i, k) x(k)) + z(i)
//
// Saxpy and LComb are one expression per element, so any order of work gives
// the same bits; each destination element is written after its two sources
// are read.  Gaxpy forms the sum of products exactly as Mul mv does (from
// zero, ascending k, in the element type: the matrix-vector kernels are the
// very same) into the destination, then adds z(i) last.  So the destination
// must never be z.
#pragma once

#include <type_traits>

#include "common/check.h"
#include "common/desc.h"
#include "common/dispatch.h"
#include "common/parallel.h"
#include "common/stream.h"
#include "products/mul_mv/kernels.h"  // the matrix-vector kernels, thresholds, serial run and driver

namespace kelm {

// The operations take elements or vectors of elements (lane by lane, the
// same IEEE operations).
template <class T>
struct SaxpyOp {
    T a;
    template <class V>
    V operator()(V x, V y) const { return x * a + y; }
};

template <class T>
struct LCombOp {
    T a, b;
    template <class V>
    V operator()(V x, V y) const { return x * a + y * b; }
};

// Vectors back to back in a contiguous array: the objects form one run.
template <class T>
bool packed_vectors(const Strided<T, true>& s, int count, int n)
{
    return count == 1 || s.obj == ptrdiff_t(n) * ptrdiff_t(sizeof(T));
}

// n elements in blocks of 64 bytes: a block's sources are all read before its
// destinations are written, so the destination may be either source.  A run
// larger than the cache is streamed to memory.
template <class T, class Op>
static KELM_WIDE void scaled_run(ptrdiff_t n, const Op& op, const T* x, const T* y, T* d)
{
    constexpr int B = 64 / int(sizeof(T));
    ptrdiff_t e = 0;
    if (beyond_cache(3 * std::size_t(n) * sizeof(T)) && aligned_to_elements(d)) {
        using V = Quad<T>;
        for (; !aligned16(d + e); ++e) d[e] = op(x[e], y[e]);
        e = stream_blocks(d, e, n, [&](ptrdiff_t i) {
            return op(vx::load<V, B / 4>(x + i), vx::load<V, B / 4>(y + i));
        });
    }
    for (; e + B <= n; e += B) {
        T r[B];
        for (int j = 0; j < B; ++j) r[j] = op(x[e + j], y[e + j]);
        for (int j = 0; j < B; ++j) d[e + j] = r[j];
    }
    for (; e < n; ++e) d[e] = op(x[e], y[e]);
}

// Object by object; N above 0 is the length written out.
template <int N, class Op, class X, class Y, class D>
static KELM_WIDE __attribute__((flatten)) void scaled_objects(int count, const Op& op, const X& x, const Y& y,
                                                              const D& d, int n)
{
    using T = typename D::Elem;
    for (int k = 0; k < count; ++k) {
        const auto xv = x[k];
        const auto yv = y[k];
        const auto dv = d[k];
        if constexpr (N > 0) {
            T r[N];
#pragma GCC unroll 8
            for (int j = 0; j < N; ++j) r[j] = op(xv[j], yv[j]);
#pragma GCC unroll 8
            for (int j = 0; j < N; ++j) dv[j] = r[j];
        } else {
            for (int j = 0; j < n; ++j) dv[j] = op(xv[j], yv[j]);
        }
    }
}

// The kernel of every Saxpy and LComb member and description: the operation
// (with its scale factors) and the length; a single x or y of an array member
// is an array of object stride 0.
template <class Op, class X, class Y, class D>
kelStatus scaled_sum_of(int count, const Op& op, int n, const X& x, const Y& y, const D& d)
{
    using T = typename D::Elem;
    if constexpr (std::is_same_v<X, Strided<T, true>> && std::is_same_v<Y, Strided<T, true>> &&
                  std::is_same_v<D, Strided<T, true>>) {
        if (packed_vectors(x, count, n) && packed_vectors(y, count, n) && packed_vectors(d, count, n)) {
            scaled_run<T>(ptrdiff_t(count) * n, op, &elem_at<T>(x.base), &elem_at<T>(y.base), &elem_at<T>(d.base));
            return kelOk;
        }
    }
    switch (n) {
    case 3: scaled_objects<3>(count, op, x, y, d, n); break;
    case 4: scaled_objects<4>(count, op, x, y, d, n); break;
    case 5: scaled_objects<5>(count, op, x, y, d, n); break;
    case 6: scaled_objects<6>(count, op, x, y, d, n); break;
    default: scaled_objects<0>(count, op, x, y, d, n); break;
    }
    return kelOk;
}

template <class T>
struct ownkelmSaxpy_vava {  // also vv, vav and vva
    int n;
    T a;
    template <class X, class Y, class D>
    kelStatus operator()(int count, const X& x, const Y& y, const D& d) const
    {
        return scaled_sum_of(count, SaxpyOp<T>{a}, n, x, y, d);
    }
};

template <class T>
struct ownkelmLComb_vava {  // also vv and vav
    int n;
    T a, b;
    template <class X, class Y, class D>
    kelStatus operator()(int count, const X& x, const Y& y, const D& d) const
    {
        return scaled_sum_of(count, LCombOp<T>{a, b}, n, x, y, d);
    }
};

// --- Gaxpy ------------------------------------------------------------------------

// d(i) = d(i) + z(i) for h elements of each object.
template <class Z, class D>
static KELM_WIDE __attribute__((flatten)) void add_last(int count, const Z& z, const D& d, int h)
{
    for (int k = 0; k < count; ++k) {
        const auto zv = z[k];
        const auto dv = d[k];
        for (int i = 0; i < h; ++i) dv[i] = dv[i] + zv[i];
    }
}

// Order 4, packed x, z and d, one matrix: each step is a vector of lanes
// holding one 4-vector (64f) or two (32f, one per half).  Lane i sums
// a(i, j) x(j) from zero in ascending j, then adds z(i): the order of the
// product-then-z path.  Arrays larger than the cache stream d to memory, 64
// bytes a step pair.
template <class T>
static KELM_WIDE void gaxpy4_packed(int count, const T* a, ptrdiff_t aRow, const T* x, const T* z, T* d)
{
    using namespace vx;
    using V = std::conditional_t<std::is_same_v<T, float>, f8, d4>;
    constexpr int per = int(sizeof(V) / (4 * sizeof(T)));  // vectors per step
    const auto row = [&](int i) { return reinterpret_cast<const T*>(reinterpret_cast<const char*>(a) + i * aRow); };
    V c[4];
    for (int j = 0; j < 4; ++j) {
        if constexpr (per == 2)
            c[j] = twice(f4{row(0)[j], row(1)[j], row(2)[j], row(3)[j]});
        else
            c[j] = d4{row(0)[j], row(1)[j], row(2)[j], row(3)[j]};
    }
    const auto step = [&](int k) {
        const T* xk = x + 4 * k;
        V xs[4];
        if constexpr (per == 2) {
            const f8 both = load<f8, 8>(xk);
            xs[0] = splat_halves<0>(both), xs[1] = splat_halves<1>(both);
            xs[2] = splat_halves<2>(both), xs[3] = splat_halves<3>(both);
        } else {
            for (int j = 0; j < 4; ++j) xs[j] = d4{xk[j], xk[j], xk[j], xk[j]};
        }
        V s = V{} + c[0] * xs[0];
        s = s + c[1] * xs[1];
        s = s + c[2] * xs[2];
        s = s + c[3] * xs[3];
        return s + load<V, 4 * per>(z + 4 * k);
    };
    int k = 0;
    if (beyond_cache(std::size_t(count) * 12 * sizeof(T)) && aligned16(d)) {
        for (; k + 2 * per <= count; k += 2 * per) {
            const V r[2] = {step(k), step(k + per)};
            stream64(d + 4 * k, reinterpret_cast<const T*>(r));
        }
        stream_fence();
    }
    for (; k + per <= count; k += per) store<4 * per>(d + 4 * k, step(k));
    if constexpr (per == 2) {
        if (k < count) {
            const f4 xs = load<f4, 4>(x + 4 * k);
            f4 s = f4{} + lo(c[0]) * splat<0>(xs);
            s = s + lo(c[1]) * splat<1>(xs);
            s = s + lo(c[2]) * splat<2>(xs);
            s = s + lo(c[3]) * splat<3>(xs);
            store<4>(d + 4 * k, s + load<f4, 4>(z + 4 * k));
        }
    }
}

// The kernel of every Gaxpy member and description (the matrix is always a
// single one; in mvav z is an array of object stride 0).  Runs of objects
// small enough to stay in the cache take the matrix-vector products, then z.
struct ownkelmGaxpy_mva {  // also mv and mvav
    int w, h;
    template <class A, class X, class Z, class D>
    kelStatus operator()(int count, const A& a, const X& x, const Z& z, const D& d) const
    {
        using T = typename D::Elem;
        if constexpr (std::is_same_v<A, Strided<T, true>> &&
                      std::is_same_v<X, Strided<T, true>> && std::is_same_v<Z, Strided<T, true>> &&
                      std::is_same_v<D, Strided<T, true>>) {
            if (w == 4 && h == 4 && packed_vectors(x, count, 4) && packed_vectors(z, count, 4) &&
                packed_vectors(d, count, 4)) {
                gaxpy4_packed<T>(count, &elem_at<T>(a.base), a.row, &elem_at<T>(x.base), &elem_at<T>(z.base),
                                &elem_at<T>(d.base));
                return kelOk;
            }
        }
        constexpr int kRun = 256;
        const ownkelmMul_mv<false> mv{w, h};
        for (int first = 0; first < count; first += kRun) {
            const int mine = count - first < kRun ? count - first : kRun;
            mv(mine, a, x.from(first), d.from(first));
            add_last(mine, z.from(first), d.from(first), h);
        }
        return kelOk;
    }
};

// --- when an array goes parallel -----------------------------------------------

template <class T>
constexpr bool is32 = sizeof(T) == 4;

// Saxpy's list path with general strides is 1000 for vav and 1500 for vva in
// 32f: the members' settled values.
template <class T>
constexpr Limits kSaxpyVavLimits = {3000, is32<T> ? 2000 : 1200, is32<T> ? 1500 : 1000, 1000, 1200};
template <class T>
constexpr Limits kSaxpyVvaLimits = {3000, is32<T> ? 2000 : 1200, is32<T> ? 1500 : 1000, is32<T> ? 1500 : 1000, 1200};
template <class T>
constexpr Limits kSaxpyVavaLimits = kSaxpyVavLimits<T>;
template <class T>
constexpr Limits kLCombLimits = {4500, 4500, 4500, is32<T> ? 3750 : 4500, 4500};
// The 500 of the 32f list path with general strides and the pointer values
// that rise for 64f are the members' settled values.
template <class T>
constexpr Limits kGaxpyLimits = {is32<T> ? 7000 : 5000, 5000, is32<T> ? 7000 : 6000, is32<T> ? 500 : 5000,
                                 is32<T> ? 4500 : 7000};

// Work measures count vector elements read and written (a shared matrix is
// not counted), in wrapping signed 32-bit.
inline I32 work_array_single(int len, int count) { return I32(len) * (I32(2) * count + 1); }  // vav, vva
inline I32 work_two_arrays(int len, int count) { return I32(3) * len * count; }              // vava
inline I32 work_gaxpy_mva(int w, int h, int count) { return (I32(w) + I32(2) * h) * count; }
inline I32 work_gaxpy_mvav(int w, int h, int count) { return I32(w) * count + h + I32(h) * count; }

}  // namespace kelm
