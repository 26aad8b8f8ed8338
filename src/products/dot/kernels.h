// Kernels of DotProduct and CrossProduct.
//
// Dot products are sums of products in the element type.  The order of the
// additions decides the last bits, and callers rely on them, so every path
// keeps the order of its kernel:
//
//   single pair, contiguous   n = 3..6: left to right, ((p0 + p1) + p2) + ...;
//                             n up to 10, or a second vector whose address is
//                             not a multiple of the element size: one running
//                             sum from zero;
//                             longer 32f: products up to a 16-byte aligned
//                             second vector summed into lane 0, then blocks of
//                             eight into two four-lane sums P (elements 0-3)
//                             and Q (4-7), S = P + Q, (S0 + S1) + (S2 + S3),
//                             then the tail in order;
//                             longer 64f: blocks of four into two two-lane sums
//                             P (elements 0-1) and Q (2-3), S = P + Q, S0 + S1,
//                             then the tail in order;
//   single pair, general strides and pointer tables: one running sum from zero;
//   arrays (every description and both types): length 4 as
//                             (p0 + p1) + (p2 + p3), other lengths one running
//                             sum from zero.
//
// So a 32f single-pair result and an array result of the same data may differ
// in the last bit.  Scalar results go to a plain contiguous array, one per
// object; they are described as vectors of one element, object stride the
// element size.
//
// Cross products of 3-vectors: r0 = a1 b2 - a2 b1, r1 = a2 b0 - a0 b2,
// r2 = a0 b1 - a1 b0, each one difference of two rounded products.  All six
// sources are read before the first result element is written, so the
// destination may be either source.
#pragma once

#include <cstdint>
#include <type_traits>

#include "common/check.h"
#include "common/desc.h"
#include "common/dispatch.h"
#include "common/parallel.h"
#include "common/stream.h"
#include "common/vectors.h"
#include "products/mul_mv/kernels.h"  // thresholds by description, serial run and driver

namespace kelm {

// The destination of the dot products: count scalars back to back.
template <class T>
Strided<T> scalars(T* p)
{
    return {bytes(p), ptrdiff_t(sizeof(T)), 0, ptrdiff_t(sizeof(T))};
}

// --- sums of products -----------------------------------------------------------

template <class T, class X, class Y>
inline T dot_from_zero(const X& x, const Y& y, int n)
{
    T s = T(0);
    for (int j = 0; j < n; ++j) s = s + x[j] * y[j];
    return s;
}

template <int N, class T, class X, class Y>
inline T dot_from_zero_fixed(const X& x, const Y& y)
{
    T s = T(0);
#pragma GCC unroll 8
    for (int j = 0; j < N; ++j) s = s + x[j] * y[j];
    return s;
}

template <int N, class T, class X, class Y>
inline T dot_left_to_right(const X& x, const Y& y)
{
    T s = x[0] * y[0];
#pragma GCC unroll 8
    for (int j = 1; j < N; ++j) s = s + x[j] * y[j];
    return s;
}

template <class T, class X, class Y>
inline T dot_pairs4(const X& x, const Y& y)
{
    return (x[0] * y[0] + x[1] * y[1]) + (x[2] * y[2] + x[3] * y[3]);
}

// 32f, n of 11 or more, y at a multiple of 4 bytes.
inline float dot_blocked32(const float* x, const float* y, int n)
{
    using vx::f4;
    int j = 0;
    float peel = 0.0f;
    if (const int mis = int(reinterpret_cast<std::uintptr_t>(y) & 15)) {
        for (const int p = (16 - mis) / 4; j < p; ++j) peel = peel + x[j] * y[j];
    }
    f4 P = {peel, 0.0f, 0.0f, 0.0f}, Q = {0.0f, 0.0f, 0.0f, 0.0f};
    for (; j + 8 <= n; j += 8) {
        P = P + vx::load<f4, 4>(x + j) * vx::load<f4, 4>(y + j);
        Q = Q + vx::load<f4, 4>(x + j + 4) * vx::load<f4, 4>(y + j + 4);
    }
    const f4 S = P + Q;
    float s = (S[0] + S[1]) + (S[2] + S[3]);
    for (; j < n; ++j) s = s + x[j] * y[j];
    return s;
}

// 64f, n of 11 or more.
inline double dot_blocked64(const double* x, const double* y, int n)
{
    using vx::d2;
    int j = 0;
    d2 P = {0.0, 0.0}, Q = {0.0, 0.0};
    for (; j + 4 <= n; j += 4) {
        P = P + vx::load<d2, 2>(x + j) * vx::load<d2, 2>(y + j);
        Q = Q + vx::load<d2, 2>(x + j + 2) * vx::load<d2, 2>(y + j + 2);
    }
    const d2 S = P + Q;
    double s = S[0] + S[1];
    for (; j < n; ++j) s = s + x[j] * y[j];
    return s;
}

// The single-pair kernel of every vv member and description.
struct ownkelmDotProduct_vv {
    int n;
    template <class X, class Y, class D>
    kelStatus operator()(int, const X& x, const Y& y, const D& d) const
    {
        using T = typename D::Elem;
        const auto a = x[0];
        const auto b = y[0];
        T& r = d[0][0];
        if constexpr (std::is_same_v<X, Strided<T, true>> && std::is_same_v<Y, Strided<T, true>>) {
            switch (n) {
            case 3: r = dot_left_to_right<3, T>(a, b); return kelOk;
            case 4: r = dot_left_to_right<4, T>(a, b); return kelOk;
            case 5: r = dot_left_to_right<5, T>(a, b); return kelOk;
            case 6: r = dot_left_to_right<6, T>(a, b); return kelOk;
            default: break;
            }
            const T* yp = &b[0];
            if (n >= 11 && (reinterpret_cast<std::uintptr_t>(yp) & (sizeof(T) - 1)) == 0) {
                if constexpr (std::is_same_v<T, float>)
                    r = dot_blocked32(&a[0], yp, n);
                else
                    r = dot_blocked64(&a[0], yp, n);
                return kelOk;
            }
        }
        r = dot_from_zero<T>(a, b, n);
        return kelOk;
    }
};

// --- arrays of dot products -----------------------------------------------------

// Length 4 on contiguous vectors, several objects per vector register: the
// products of each object are turned into lanes so that one add forms every
// object's p0 + p1 (and p2 + p3), and a last add their sum.
template <class X, class Y>
inline void dot4_block32(const X& x, const Y& y, int k, float* d)
{
    using vx::f4;
    f4 p[4];
#pragma GCC unroll 4
    for (int i = 0; i < 4; ++i) p[i] = vx::load<f4, 4>(&x[k + i][0]) * vx::load<f4, 4>(&y[k + i][0]);
    // lane pairs (a + b, c + d) of objects 0, 1 and of 2, 3
    const f4 s01 = __builtin_shufflevector(p[0], p[1], 0, 2, 4, 6) + __builtin_shufflevector(p[0], p[1], 1, 3, 5, 7);
    const f4 s23 = __builtin_shufflevector(p[2], p[3], 0, 2, 4, 6) + __builtin_shufflevector(p[2], p[3], 1, 3, 5, 7);
    vx::store<4>(d, __builtin_shufflevector(s01, s23, 0, 2, 4, 6) + __builtin_shufflevector(s01, s23, 1, 3, 5, 7));
}

template <class X, class Y>
inline void dot4_block64(const X& x, const Y& y, int k, double* d)
{
    using vx::d4;
    const d4 p0 = vx::load<d4, 4>(&x[k][0]) * vx::load<d4, 4>(&y[k][0]);
    const d4 p1 = vx::load<d4, 4>(&x[k + 1][0]) * vx::load<d4, 4>(&y[k + 1][0]);
    // (a0 + b0, a1 + b1, c0 + d0, c1 + d1)
    const d4 s = __builtin_shufflevector(p0, p1, 0, 4, 2, 6) + __builtin_shufflevector(p0, p1, 1, 5, 3, 7);
    vx::store<2>(d, vx::d2(__builtin_shufflevector(s, s, 0, 1)) + vx::d2(__builtin_shufflevector(s, s, 2, 3)));
}

template <int N, class X, class Y, class D>
static KELM_WIDE __attribute__((flatten)) void dot_objects(int count, const X& x, const Y& y, const D& d, int n)
{
    using T = typename D::Elem;
    T* out = &d[0][0];
    int k = 0;
    if constexpr (N == 4) {
        if constexpr (unit_dense_view<decltype(x[0])> && unit_dense_view<decltype(y[0])>) {
            if constexpr (std::is_same_v<T, float>)
                for (; k + 4 <= count; k += 4) dot4_block32(x, y, k, out + k);
            else
                for (; k + 2 <= count; k += 2) dot4_block64(x, y, k, out + k);
        }
        for (; k < count; ++k) out[k] = dot_pairs4<T>(x[k], y[k]);
    } else if constexpr (N > 0) {
        for (; k < count; ++k) out[k] = dot_from_zero_fixed<N, T>(x[k], y[k]);
    } else {
        for (; k < count; ++k) out[k] = dot_from_zero<T>(x[k], y[k], n);
    }
}

// The array kernel of every vav and vava member and description (in vav the
// single second vector is an array of object stride 0).
struct ownkelmDotProduct_vava {
    int n;
    template <class X, class Y, class D>
    kelStatus operator()(int count, const X& x, const Y& y, const D& d) const
    {
        switch (n) {
        case 3: dot_objects<3>(count, x, y, d, n); break;
        case 4: dot_objects<4>(count, x, y, d, n); break;
        case 5: dot_objects<5>(count, x, y, d, n); break;
        case 6: dot_objects<6>(count, x, y, d, n); break;
        default: dot_objects<0>(count, x, y, d, n); break;
        }
        return kelOk;
    }
};

// --- cross products ---------------------------------------------------------------

template <class T, class A, class B, class R>
inline void cross_one(const A& a, const B& b, const R& r)
{
    const T a0 = a[0], a1 = a[1], a2 = a[2];
    const T b0 = b[0], b1 = b[1], b2 = b[2];
    const T r0 = a1 * b2 - a2 * b1;
    const T r1 = a2 * b0 - a0 * b2;
    const T r2 = a0 * b1 - a1 * b0;
    r[0] = r0;
    r[1] = r1;
    r[2] = r2;
}

// Arrays of contiguous vectors, several objects at a time, each lane doing
// cross_one's six products and three differences.  Every object is loaded
// as four elements: the fourth belongs to the gap before the next object (or
// to the next object when they are packed), so these blocks never reach the
// last object of an array, nor an operand of object stride 0.  The writes
// are exactly the three elements, after all reads of the block.
template <class T>
inline bool cross_blocks_fit(const Strided<T, true>& s)
{
    return s.obj >= ptrdiff_t(3 * sizeof(T));
}

// cross_one's arithmetic on lanes: a[i], b[i] hold element i of every object.
template <class V>
inline void cross_lanes(const V (&a)[3], const V (&b)[3], V (&r)[3])
{
    r[0] = a[1] * b[2] - a[2] * b[1];
    r[1] = a[2] * b[0] - a[0] * b[2];
    r[2] = a[0] * b[1] - a[1] * b[0];
}

inline void cross_store(Bytes p, vx::f4 o)  // o = (r0, -, r1, r2)
{
    __builtin_memcpy(p, &o, 4);
    __builtin_memcpy(p + 4, reinterpret_cast<const char*>(&o) + 8, 8);
}

// Eight objects from p, q (sources) and r (destination), object strides ps,
// qs and rs bytes: the vector pairs (0, 1), (2, 3), ... fill the two halves
// of four rows, transposed within each half by shuffles, so that lane j of
// the low (high) half holds object 2j (2j + 1).
inline void cross8_block32(Bytes p, ptrdiff_t ps, Bytes q, ptrdiff_t qs, Bytes r, ptrdiff_t rs)
{
    using vx::f4;
    using vx::f8;
    const auto columns = [](Bytes s, ptrdiff_t ss, f8 (&c)[3]) {
        f8 row[4];
        for (int j = 0; j < 4; ++j, s += 2 * ss)
            row[j] = vx::join(vx::load<f4, 4>(reinterpret_cast<const float*>(s)),
                              vx::load<f4, 4>(reinterpret_cast<const float*>(s + ss)));
        vx::transpose4(row);
        c[0] = row[0], c[1] = row[1], c[2] = row[2];
    };
    f8 a[3], b[3], c[3];
    columns(p, ps, a);
    columns(q, qs, b);
    cross_lanes(a, b, c);
    const f8 v0 = __builtin_shufflevector(c[1], c[2], 0, 8, 1, 9, 4, 12, 5, 13);
    const f8 v1 = __builtin_shufflevector(c[1], c[2], 2, 10, 3, 11, 6, 14, 7, 15);
    const f8 o[4] = {__builtin_shufflevector(c[0], v0, 0, 0, 8, 9, 4, 4, 12, 13),
                     __builtin_shufflevector(c[0], v0, 1, 1, 10, 11, 5, 5, 14, 15),
                     __builtin_shufflevector(c[0], v1, 2, 2, 8, 9, 6, 6, 12, 13),
                     __builtin_shufflevector(c[0], v1, 3, 3, 10, 11, 7, 7, 14, 15)};
    for (int j = 0; j < 4; ++j, r += 2 * rs) {
        cross_store(r, vx::lo(o[j]));
        cross_store(r + rs, vx::hi(o[j]));
    }
}

// Eight packed 32f 3-vectors (24 floats, no gaps) at p, q and r: floats 0-3,
// 4-7 and 8-11 fill the low halves of three rows, 12-15, 16-19 and 20-23 the
// high ones, so that each half holds four whole objects; shuffles within the
// halves sort them into x, y and z lanes (object l of a half in lane l) and
// back.  Every float read is the block's own.  Stream writes the block with
// stores that bypass the cache (r 16-byte aligned).
template <bool Stream>
inline void cross8_packed32(Bytes p, Bytes q, Bytes r)
{
    using vx::f4;
    using vx::f8;
    const auto at = [](Bytes s, int e) { return vx::load<f4, 4>(reinterpret_cast<const float*>(s) + e); };
    const auto columns = [&at](Bytes s, f8 (&c)[3]) {
        const f8 a = vx::join(at(s, 0), at(s, 12)), b = vx::join(at(s, 4), at(s, 16)), d = vx::join(at(s, 8), at(s, 20));
        const f8 xy = __builtin_shufflevector(b, d, 2, 3, 9, 10, 6, 7, 13, 14);  // x2 y2 x3 y3
        const f8 yz = __builtin_shufflevector(a, b, 1, 2, 8, 9, 5, 6, 12, 13);   // y0 z0 y1 z1
        c[0] = __builtin_shufflevector(a, xy, 0, 3, 8, 10, 4, 7, 12, 14);
        c[1] = __builtin_shufflevector(yz, xy, 0, 2, 9, 11, 4, 6, 13, 15);
        c[2] = __builtin_shufflevector(yz, d, 1, 3, 8, 11, 5, 7, 12, 15);
    };
    f8 a[3], b[3], c[3];
    columns(p, a);
    columns(q, b);
    cross_lanes(a, b, c);
    const f8 u = __builtin_shufflevector(c[0], c[1], 0, 2, 8, 10, 4, 6, 12, 14);
    const f8 v = __builtin_shufflevector(c[1], c[2], 1, 3, 9, 11, 5, 7, 13, 15);
    const f8 w = __builtin_shufflevector(c[2], c[0], 0, 2, 9, 11, 4, 6, 13, 15);
    const f8 o[3] = {__builtin_shufflevector(u, w, 0, 2, 8, 10, 4, 6, 12, 14),
                     __builtin_shufflevector(v, u, 0, 2, 9, 11, 4, 6, 13, 15),
                     __builtin_shufflevector(w, v, 1, 3, 9, 11, 5, 7, 13, 15)};
    float* out = reinterpret_cast<float*>(r);
    for (int j = 0; j < 3; ++j) {
        if constexpr (Stream) {
            stream16(out + 4 * j, vx::lo(o[j]));
            stream16(out + 12 + 4 * j, vx::hi(o[j]));
        } else {
            vx::store<4>(out + 4 * j, vx::lo(o[j]));
            vx::store<4>(out + 12 + 4 * j, vx::hi(o[j]));
        }
    }
}

// Four 64f objects, one per lane, transposed by shuffles as cross8_block32.
inline void cross4_block64(Bytes p, ptrdiff_t ps, Bytes q, ptrdiff_t qs, Bytes r, ptrdiff_t rs)
{
    using vx::d2;
    using vx::d4;
    const auto columns = [](Bytes s, ptrdiff_t ss, d4 (&c)[3]) {
        d4 row[4];
        for (int j = 0; j < 4; ++j, s += ss) row[j] = vx::load<d4, 4>(reinterpret_cast<const double*>(s));
        vx::transpose4(row);
        c[0] = row[0], c[1] = row[1], c[2] = row[2];
    };
    d4 a[3], b[3], c[3];
    columns(p, ps, a);
    columns(q, qs, b);
    cross_lanes(a, b, c);
    const d4 u0 = __builtin_shufflevector(c[0], c[1], 0, 4, 2, 6);  // objects 0 and 2
    const d4 u1 = __builtin_shufflevector(c[0], c[1], 1, 5, 3, 7);  // objects 1 and 3
    const d2 w01 = __builtin_shufflevector(c[2], c[2], 0, 1), w23 = __builtin_shufflevector(c[2], c[2], 2, 3);
    const auto put = [](Bytes o, d2 v, double z) {
        __builtin_memcpy(o, &v, 16);
        __builtin_memcpy(o + 16, &z, 8);
    };
    put(r, __builtin_shufflevector(u0, u0, 0, 1), w01[0]);
    put(r + rs, __builtin_shufflevector(u1, u1, 0, 1), w01[1]);
    put(r + 2 * rs, __builtin_shufflevector(u0, u0, 2, 3), w23[0]);
    put(r + 3 * rs, __builtin_shufflevector(u1, u1, 2, 3), w23[1]);
}

template <class X, class Y, class D>
static KELM_WIDE __attribute__((flatten)) void cross_objects(int count, const X& x, const Y& y, const D& d)
{
    using T = typename D::Elem;
    int k = 0;
    if constexpr (std::is_same_v<X, Strided<T, true>> && std::is_same_v<Y, X> && std::is_same_v<D, X>) {
        constexpr int L = std::is_same_v<T, float> ? 8 : 4;  // objects per block
        if (cross_blocks_fit(x) && cross_blocks_fit(y)) {
            Bytes p = x.base, q = y.base, r = d.base;
            if constexpr (L == 8) {
                if (x.obj == 12 && y.obj == 12 && d.obj == 12) {
                    if (beyond_cache(std::size_t(count) * 36) && aligned16(r)) {
                        for (; k + L <= count; k += L, p += 96, q += 96, r += 96) cross8_packed32<true>(p, q, r);
                        stream_fence();
                    }
                    for (; k + L <= count; k += L, p += 96, q += 96, r += 96) cross8_packed32<false>(p, q, r);
                }
            }
            for (; k + L < count; k += L, p += L * x.obj, q += L * y.obj, r += L * d.obj) {
                if constexpr (L == 8)
                    cross8_block32(p, x.obj, q, y.obj, r, d.obj);
                else
                    cross4_block64(p, x.obj, q, y.obj, r, d.obj);
            }
        }
    }
    for (; k < count; ++k) cross_one<T>(x[k], y[k], d[k]);
}

// The kernel of every cross-product member and description (a single operand
// of an array member is an array of object stride 0).
struct ownkelmCrossProduct_vava {
    template <class X, class Y, class D>
    kelStatus operator()(int count, const X& x, const Y& y, const D& d) const
    {
        cross_objects(count, x, y, d);
        return kelOk;
    }
};

// --- when an array goes parallel -----------------------------------------------

template <class T>
constexpr Limits kDotLimits = sizeof(T) == 4 ? Limits{5000, 2620, 2400, 2400, 2400} : Limits{3500, 2000, 4200, 3300, 2000};

inline I32 work_dot_vav(int len, int count) { return I32(len) * count + len; }
inline I32 work_dot_vava(int len, int count) { return I32(2) * len * count; }

// Cross products count vectors, not elements, against one threshold for every
// description and path.
inline bool cross_parallel(I32 work) { return work > 3000; }
inline I32 work_cross_vav(int count) { return I32(2) * count + 1; }  // also vva
inline I32 work_cross_vava(int count) { return I32(3) * count; }

}  // namespace kelm
