// Determinants: closed-form cofactor expansions for orders 3 to 6, Gaussian
// elimination with partial pivoting in the caller's buffer for every other
// order.  A singular matrix gives 0; the kernels never fail.
//
// Closed forms expand along the first row; the minors of the lower rows are
// formed once each, from the bottom up (2x2 minors of the last two rows, then
// 3x3 minors of the last three, ...), and every sum runs in long double.  The
// result is rounded to the element type once, on storing.
#pragma once

#include <cmath>
#include <cstddef>
#include <limits>

#include "common/check.h"
#include "common/desc.h"
#include "common/parallel.h"
#include "kelm.h"

namespace kelm {

using LD = long double;

// The 2x2 minors and the products of the 3x3 level are formed in double
// (SSE; the minors' products are exact for 32f), every sum of the expansion
// runs in long double.
// Loading the elements once into locals keeps x87 traffic to the sums.
template <class T, class V>
inline T a6_Det_m_3x3(const V& a)
{
    const double a10 = a(1, 0), a11 = a(1, 1), a12 = a(1, 2);
    const double a20 = a(2, 0), a21 = a(2, 1), a22 = a(2, 2);
    const LD m1 = a20 * a12 - a10 * a22, m2 = a21 * a10 - a20 * a11, m0 = a11 * a22 - a12 * a21;
    // Term order is fixed: callers compare the last bits.
    return T(m1 * LD(a(0, 1)) + m2 * LD(a(0, 2)) + m0 * LD(a(0, 0)));
}

template <class T, class V>
inline T a6_Det_m_4x4(const V& a)
{
    const double a20 = a(2, 0), a21 = a(2, 1), a22 = a(2, 2), a23 = a(2, 3);
    const double a30 = a(3, 0), a31 = a(3, 1), a32 = a(3, 2), a33 = a(3, 3);
    const double m01 = a20 * a31 - a21 * a30, m02 = a20 * a32 - a22 * a30, m03 = a20 * a33 - a23 * a30;
    const double m12 = a21 * a32 - a22 * a31, m13 = a21 * a33 - a23 * a31, m23 = a22 * a33 - a23 * a32;
    const double a10 = a(1, 0), a11 = a(1, 1), a12 = a(1, 2), a13 = a(1, 3);
    const LD c0 = LD(a11 * m23) - LD(a12 * m13) + LD(a13 * m12);
    const LD c1 = LD(a10 * m23) - LD(a12 * m03) + LD(a13 * m02);
    const LD c2 = LD(a10 * m13) - LD(a11 * m03) + LD(a13 * m01);
    const LD c3 = LD(a10 * m12) - LD(a11 * m02) + LD(a12 * m01);
    return T(LD(a(0, 0)) * c0 - LD(a(0, 1)) * c1 + LD(a(0, 2)) * c2 - LD(a(0, 3)) * c3);
}

// Orders 5 and 6: the minor of rows r..N-1 on the column set S (a bit mask
// with N - r bits) is kept at m[S]; each level is built from the one below.
template <int N, class T, class V>
inline T det_expand(const V& a)
{
    LD m[1 << N];
    for (int c = 0; c < N; ++c) m[1 << c] = a(N - 1, c);
    for (int r = N - 2; r >= 0; --r) {
        const int bits = N - r;
        for (int s = 0; s < (1 << N); ++s) {
            if (__builtin_popcount(unsigned(s)) != bits) continue;
            LD sum = 0;
            int k = 0;
            for (int c = 0; c < N; ++c) {
                if (!(s & (1 << c))) continue;
                const LD t = LD(a(r, c)) * m[s & ~(1 << c)];
                sum = (k++ & 1) ? sum - t : sum + t;
            }
            m[s] = sum;
        }
    }
    return T(m[(1 << N) - 1]);
}

template <class T, class V>
inline T a6_Det_m_5x5(const V& a) { return det_expand<5, T>(a); }
template <class T, class V>
inline T a6_Det_m_6x6(const V& a) { return det_expand<6, T>(a); }

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
        int p = k;
        T best = std::fabs(w[idx[k] * n + k]);
        for (int i = k + 1; i < n; ++i) {
            const T v = std::fabs(w[idx[i] * n + k]);
            if (v > best) best = v, p = i;
        }
        if (p != k) {
            const int t = idx[k];
            idx[k] = idx[p];
            idx[p] = t;
            sign = -sign;
        }
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

template <class T, class V>
inline T det_one(const V& a, int n, T* buf)
{
    switch (n) {
    case 3: return a6_Det_m_3x3<T>(a);
    case 4: return a6_Det_m_4x4<T>(a);
    case 5: return a6_Det_m_5x5<T>(a);
    case 6: return a6_Det_m_6x6<T>(a);
    default: return det_eliminate<T>(a, n, buf);
    }
}

// Closed forms over an array: order fixed at compile time, objects in order.
template <int N, class D>
inline void a6_Det_ma(const D& d, typename D::Elem* dst, int count)
{
    using T = typename D::Elem;
    for (int k = 0; k < count; ++k) {
        if constexpr (N == 3) dst[k] = a6_Det_m_3x3<T>(d[k]);
        else if constexpr (N == 4) dst[k] = a6_Det_m_4x4<T>(d[k]);
        else dst[k] = det_expand<N, T>(d[k]);
    }
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

#ifndef KELM_FOR_TYPES
#define KELM_FOR_TYPES(M, ...) M(float, 32f, __VA_ARGS__) M(double, 64f, __VA_ARGS__)
#endif

// The entries of both element types.  Checks: null (source, destination,
// buffer; the buffer even when the order needs none), count, order, strides,
// shift.
#define KELM_DET_M_T(T, S, _)                                                                                   \
    extern "C" KELM_API kelStatus kelmDet_m_##S(const T* src, int srcRowStride, int srcElemStride, int n,    \
                                                T* buffer, T* dst)                                           \
    {                                                                                                         \
        KELM_CHECKS(nulls(src, dst, buffer), sizes(n), strides<T>(srcRowStride, srcElemStride));             \
        return with_unit_strides([&](const auto& d) { return ownkelmDet_m(d, n, buffer, dst); },            \
                                 mat(src, srcRowStride, srcElemStride));                                      \
    }                                                                                                         \
    extern "C" KELM_API kelStatus kelmDet_m_##S##_P(const T* const* src, int srcObjShift, int n, T* buffer,  \
                                                    T* dst)                                                  \
    {                                                                                                         \
        KELM_CHECKS(nulls(src, dst, buffer), sizes(n), shifts<T>(srcObjShift));                               \
        return ownkelmDet_m(ptrs<T>(src, srcObjShift, 0, n), n, buffer, dst);                                 \
    }
#define KELM_DET_MA_T(T, S, _)                                                                                \
    extern "C" KELM_API kelStatus kelmDet_ma_##S(const T* src, int srcObjStride, int srcRowStride,           \
                                                 int srcElemStride, int n, T* buffer, T* dst, int count)     \
    {                                                                                                         \
        KELM_CHECKS(nulls(src, dst, buffer), counts(count), sizes(n),                                         \
                    strides<T>(srcObjStride, srcRowStride, srcElemStride));                                   \
        return det_array(mats(src, srcObjStride, srcRowStride, srcElemStride), n, buffer, dst, count);       \
    }                                                                                                         \
    extern "C" KELM_API kelStatus kelmDet_ma_##S##_P(const T* const* src, int srcObjShift, int srcObjStride, \
                                                     int n, T* buffer, T* dst, int count)                    \
    {                                                                                                         \
        KELM_CHECKS(nulls(src, dst, buffer), counts(count), sizes(n), strides<T>(srcObjStride),              \
                    shifts<T>(srcObjShift));                                                                  \
        return det_array(ptrs<T>(src, srcObjShift, srcObjStride, n), n, buffer, dst, count);                 \
    }                                                                                                         \
    extern "C" KELM_API kelStatus kelmDet_ma_##S##_L(const T* const* src, int srcObjShift, int srcRowStride, \
                                                     int srcElemStride, int n, T* buffer, T* dst, int count) \
    {                                                                                                         \
        KELM_CHECKS(nulls(src, dst, buffer), counts(count), sizes(n),                                         \
                    strides<T>(srcRowStride, srcElemStride), shifts<T>(srcObjShift));                         \
        return det_array(list(src, srcObjShift, srcRowStride, srcElemStride), n, buffer, dst, count);        \
    }
