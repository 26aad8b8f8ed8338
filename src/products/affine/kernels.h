// AffineTransform3DH: a 4x4 matrix applied to 3-D points with the implicit
// fourth coordinate 1, projected by one reciprocal per point.
//
// Per point, in single precision:
//   w = ((m30·x + m33) + m31·y) + m32·z   (the translation right after the
//   first product; the three rows below in the same order), then
//   |w| <= the smallest normal float: X = Y = Z = the largest finite float
//   and the call's status becomes kelErrTinyDivisor (the loop goes on);
//   otherwise q = 1 / w and X = (((m00·x + m03) + m01·y) + m02·z)·q, ...
//
// The contiguous kernel runs several points side by side, one per lane, each
// lane doing exactly the scalar operations (the division is correctly
// rounded in every lane): eight at a time when sources and results are both
// packed (12 bytes apart), loaded and stored as whole runs of floats and
// de-interleaved by shuffles; four at a time otherwise.  A last block of
// fewer than four points runs the scalar code, which gives the same bits.
#pragma once

#include <cfloat>
#include <cmath>
#include <cstddef>
#include <type_traits>

#include "common/check.h"
#include "common/desc.h"
#include "common/dispatch.h"
#include "common/parallel.h"
#include "common/vectors.h"
#include "kelm.h"

namespace kelm {

#define KELM_AFFINE_INLINE inline __attribute__((always_inline))

typedef int AffineMask __attribute__((vector_size(16)));  // per lane: all bits set or clear

struct Affine4 {
    float m[4][4];
};

template <class V>
KELM_AFFINE_INLINE Affine4 load_affine(const V& a)
{
    Affine4 r;
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j) r.m[i][j] = a(i, j);
    return r;
}

// One point; returns false for a tiny w.
KELM_AFFINE_INLINE bool affine_point(const Affine4& a, float x, float y, float z, float* X, float* Y, float* Z)
{
    const float w = ((a.m[3][0] * x + a.m[3][3]) + a.m[3][1] * y) + a.m[3][2] * z;
    if (std::fabs(w) <= FLT_MIN) {
        *X = *Y = *Z = FLT_MAX;
        return false;
    }
    const float q = 1.0f / w;
    *X = (((a.m[0][0] * x + a.m[0][3]) + a.m[0][1] * y) + a.m[0][2] * z) * q;
    *Y = (((a.m[1][0] * x + a.m[1][3]) + a.m[1][1] * y) + a.m[1][2] * z) * q;
    *Z = (((a.m[2][0] * x + a.m[2][3]) + a.m[2][1] * y) + a.m[2][2] * z) * q;
    return true;
}

template <class S, class D>
inline kelStatus affine_points(const Affine4& a, const S& src, const D& dst, int first, int count)
{
    kelStatus st = kelOk;
    for (int k = first; k < count; ++k) {
        const auto p = src[k];
        const auto r = dst[k];
        if (!affine_point(a, p[0], p[1], p[2], &r[0], &r[1], &r[2])) st = kelErrTinyDivisor;
    }
    return st;
}

// General element strides: the matrix read once, then point by point.
template <class M, class S, class D>
inline kelStatus ownkelmAffineTransform3DH_mva_32f_S2(const M& mat, const S& src, const D& dst, int count)
{
    return affine_points(load_affine(mat[0]), src, dst, 0, count);
}

// Four points in lanes: rows of the matrix times the coordinate lanes.
KELM_AFFINE_INLINE vx::f4 lanes_of(float v) { return vx::f4{v, v, v, v}; }

KELM_AFFINE_INLINE vx::f4 affine_row(const Affine4& a, int i, vx::f4 x, vx::f4 y, vx::f4 z)
{
    return ((lanes_of(a.m[i][0]) * x + lanes_of(a.m[i][3])) + lanes_of(a.m[i][1]) * y) + lanes_of(a.m[i][2]) * z;
}

// Returns the lanes whose w is tiny (all bits set).
KELM_AFFINE_INLINE AffineMask affine_lanes(const Affine4& a, vx::f4 x, vx::f4 y, vx::f4 z, vx::f4& X, vx::f4& Y,
                                       vx::f4& Z)
{
    const vx::f4 w = affine_row(a, 3, x, y, z);
    const vx::f4 absw = vx::f4(AffineMask(w) & AffineMask{0x7FFFFFFF, 0x7FFFFFFF, 0x7FFFFFFF, 0x7FFFFFFF});
    const AffineMask tiny = absw <= lanes_of(FLT_MIN);
    const vx::f4 q = lanes_of(1.0f) / w;
    const vx::f4 big = lanes_of(FLT_MAX);
    X = tiny ? big : affine_row(a, 0, x, y, z) * q;
    Y = tiny ? big : affine_row(a, 1, x, y, z) * q;
    Z = tiny ? big : affine_row(a, 2, x, y, z) * q;
    return tiny;
}

// Eight packed points side by side: each 128-bit half of a vector holds
// four of them (points 0-3 in the low half, 4-7 in the high), so that the
// de-interleaving of the xyz triples stays within the halves.
typedef float AffineF8 __attribute__((vector_size(32)));
typedef int AffineMask8 __attribute__((vector_size(32)));

KELM_AFFINE_INLINE AffineF8 lanes8(float v) { return AffineF8{v, v, v, v, v, v, v, v}; }

// The same four-lane selection in both halves: a[i0], a[i1], b[i2], b[i3].
template <int I0, int I1, int I2, int I3>
KELM_AFFINE_INLINE AffineF8 pick(AffineF8 a, AffineF8 b)
{
    return __builtin_shufflevector(a, b, I0, I1, 8 + I2, 8 + I3, 4 + I0, 4 + I1, 12 + I2, 12 + I3);
}

KELM_AFFINE_INLINE AffineF8 halves(const float* lo, const float* hi)
{
    return __builtin_shufflevector(vx::load<vx::f4, 4>(lo), vx::load<vx::f4, 4>(hi), 0, 1, 2, 3, 4, 5, 6, 7);
}

KELM_AFFINE_INLINE AffineF8 affine_row8(const Affine4& a, int i, AffineF8 x, AffineF8 y, AffineF8 z)
{
    return ((lanes8(a.m[i][0]) * x + lanes8(a.m[i][3])) + lanes8(a.m[i][1]) * y) + lanes8(a.m[i][2]) * z;
}

// Points k .. k+7 of packed p into packed r; returns the tiny lanes.
KELM_AFFINE_INLINE AffineMask8 affine_block8(const Affine4& a, const float* p, float* r)
{
    // Per half: m03 = x0 y0 z0 x1, m14 = y1 z1 x2 y2, m25 = z2 x3 y3 z3.
    const AffineF8 m03 = halves(p, p + 12), m14 = halves(p + 4, p + 16), m25 = halves(p + 8, p + 20);
    const AffineF8 xy = pick<2, 3, 1, 2>(m14, m25);  // x2 y2 x3 y3
    const AffineF8 yz = pick<1, 2, 0, 1>(m03, m14);  // y0 z0 y1 z1
    const AffineF8 x = pick<0, 3, 0, 2>(m03, xy), y = pick<0, 2, 1, 3>(yz, xy), z = pick<1, 3, 0, 3>(yz, m25);

    const AffineF8 w = affine_row8(a, 3, x, y, z);
    const AffineMask8 magnitude = AffineMask8(w) & 0x7FFFFFFF;
    const AffineMask8 tiny = AffineF8(magnitude) <= lanes8(FLT_MIN);
    const AffineF8 q = lanes8(1.0f) / w;
    const AffineF8 big = lanes8(FLT_MAX);
    const AffineF8 X = tiny ? big : affine_row8(a, 0, x, y, z) * q;
    const AffineF8 Y = tiny ? big : affine_row8(a, 1, x, y, z) * q;
    const AffineF8 Z = tiny ? big : affine_row8(a, 2, x, y, z) * q;

    const AffineF8 rxy = pick<0, 2, 0, 2>(X, Y);  // X0 X2 Y0 Y2
    const AffineF8 ryz = pick<1, 3, 1, 3>(Y, Z);  // Y1 Y3 Z1 Z3
    const AffineF8 rzx = pick<0, 2, 1, 3>(Z, X);  // Z0 Z2 X1 X3
    const AffineF8 r03 = pick<0, 2, 0, 2>(rxy, rzx), r14 = pick<0, 2, 1, 3>(ryz, rxy), r25 = pick<1, 3, 1, 3>(rzx, ryz);
    const AffineF8 out0 = __builtin_shufflevector(r03, r14, 0, 1, 2, 3, 8, 9, 10, 11);
    const AffineF8 out1 = __builtin_shufflevector(r25, r03, 0, 1, 2, 3, 12, 13, 14, 15);
    const AffineF8 out2 = __builtin_shufflevector(r14, r25, 4, 5, 6, 7, 12, 13, 14, 15);
    __builtin_memcpy(r, &out0, sizeof out0);
    __builtin_memcpy(r + 8, &out1, sizeof out1);
    __builtin_memcpy(r + 16, &out2, sizeof out2);
    return tiny;
}

// Sixteen packed points per block on processors with AVX-512, where one
// permute takes any lanes of two registers: fewer shuffles per point than
// the eight-point block, which is bound by them.  Only the 64-bit build has
// it (compiled for that instruction set alone and chosen at run time).
#if defined(__GNUC__) && !defined(__clang__) && defined(__x86_64__) && !defined(KELM_NO_CLONES)
#define KELM_AFFINE_SIXTEEN 1
typedef float AffineF16 __attribute__((vector_size(64)));
typedef int AffineMask16 __attribute__((vector_size(64)));

#define KELM_AFFINE_V4 __attribute__((target("arch=x86-64-v4"), always_inline)) inline

KELM_AFFINE_V4 AffineF16 lanes16(float v) { return AffineF16{v, v, v, v, v, v, v, v, v, v, v, v, v, v, v, v}; }

KELM_AFFINE_V4 AffineF16 affine_row16(const Affine4& a, int i, AffineF16 x, AffineF16 y, AffineF16 z)
{
    return ((lanes16(a.m[i][0]) * x + lanes16(a.m[i][3])) + lanes16(a.m[i][1]) * y) + lanes16(a.m[i][2]) * z;
}

// Sixteen packed points at p into r: whole 64-byte runs, each coordinate
// gathered from the three runs by two two-source permutes (and back).
KELM_AFFINE_V4 AffineMask16 affine_block16(const Affine4& a, const float* p, float* r)
{
    AffineF16 A, B, C;
    __builtin_memcpy(&A, p, sizeof A);
    __builtin_memcpy(&B, p + 16, sizeof B);
    __builtin_memcpy(&C, p + 32, sizeof C);
    const AffineF16 x = __builtin_shufflevector(
        __builtin_shufflevector(A, B, 0, 3, 6, 9, 12, 15, 18, 21, 24, 27, 30, -1, -1, -1, -1, -1), C, 0, 1, 2, 3, 4, 5,
        6, 7, 8, 9, 10, 17, 20, 23, 26, 29);
    const AffineF16 y = __builtin_shufflevector(
        __builtin_shufflevector(A, B, 1, 4, 7, 10, 13, 16, 19, 22, 25, 28, 31, -1, -1, -1, -1, -1), C, 0, 1, 2, 3, 4, 5,
        6, 7, 8, 9, 10, 18, 21, 24, 27, 30);
    const AffineF16 z = __builtin_shufflevector(
        __builtin_shufflevector(A, B, 2, 5, 8, 11, 14, 17, 20, 23, 26, 29, -1, -1, -1, -1, -1, -1), C, 0, 1, 2, 3, 4, 5,
        6, 7, 8, 9, 16, 19, 22, 25, 28, 31);

    const AffineF16 w = affine_row16(a, 3, x, y, z);
    const AffineMask16 magnitude = AffineMask16(w) & 0x7FFFFFFF;
    const AffineMask16 tiny = AffineF16(magnitude) <= lanes16(FLT_MIN);
    const AffineF16 q = lanes16(1.0f) / w;
    const AffineF16 big = lanes16(FLT_MAX);
    const AffineF16 X = tiny ? big : affine_row16(a, 0, x, y, z) * q;
    const AffineF16 Y = tiny ? big : affine_row16(a, 1, x, y, z) * q;
    const AffineF16 Z = tiny ? big : affine_row16(a, 2, x, y, z) * q;

    const AffineF16 out0 = __builtin_shufflevector(
        __builtin_shufflevector(X, Y, 0, 16, -1, 1, 17, -1, 2, 18, -1, 3, 19, -1, 4, 20, -1, 5), Z, 0, 1, 16, 3, 4, 17,
        6, 7, 18, 9, 10, 19, 12, 13, 20, 15);
    const AffineF16 out1 = __builtin_shufflevector(
        __builtin_shufflevector(X, Y, 21, -1, 6, 22, -1, 7, 23, -1, 8, 24, -1, 9, 25, -1, 10, 26), Z, 0, 21, 2, 3, 22,
        5, 6, 23, 8, 9, 24, 11, 12, 25, 14, 15);
    const AffineF16 out2 = __builtin_shufflevector(
        __builtin_shufflevector(X, Y, -1, 11, 27, -1, 12, 28, -1, 13, 29, -1, 14, 30, -1, 15, 31, -1), Z, 26, 1, 2, 27,
        4, 5, 28, 7, 8, 29, 10, 11, 30, 13, 14, 31);
    __builtin_memcpy(r, &out0, sizeof out0);
    __builtin_memcpy(r + 16, &out1, sizeof out1);
    __builtin_memcpy(r + 32, &out2, sizeof out2);
    return tiny;
}

// Points 0 .. count rounded down to sixteen; returns whether any w was tiny.
__attribute__((target("arch=x86-64-v4"), noinline)) static bool affine_packed16(const Affine4& a, const float* p,
                                                                               float* r, int blocks)
{
    AffineMask16 tiny = {};
    for (ptrdiff_t b = 0; b < blocks; ++b) tiny |= affine_block16(a, p + 48 * b, r + 48 * b);
    bool any = false;
    for (int l = 0; l < 16; ++l) any |= tiny[l] != 0;
    return any;
}

inline bool affine_has_sixteen() { return __builtin_cpu_supports("x86-64-v4"); }
#endif

template <class M, class S, class D>
static KELM_WIDE kelStatus affine_contiguous(const M& mat, const S& src, const D& dst, int count)
{
    const Affine4 a = load_affine(mat[0]);
    AffineMask anyTiny = {0, 0, 0, 0};
    int k = 0;
    const bool packedSrc = src.obj == 12, packedDst = dst.obj == 12;
    if (packedSrc && packedDst) {
        AffineMask8 tiny8 = {0, 0, 0, 0, 0, 0, 0, 0};
        const float* p = &src[0][0];
        float* r = &dst[0][0];
#ifdef KELM_AFFINE_SIXTEEN
        if (count >= 16 && affine_has_sixteen()) {
            if (affine_packed16(a, p, r, count / 16)) tiny8[0] = -1;
            k = count / 16 * 16;
        }
#endif
        for (; k + 8 <= count; k += 8) tiny8 |= affine_block8(a, p + 3 * ptrdiff_t(k), r + 3 * ptrdiff_t(k));
        anyTiny = __builtin_shufflevector(tiny8, tiny8, 0, 1, 2, 3) | __builtin_shufflevector(tiny8, tiny8, 4, 5, 6, 7);
    }
    for (; k + 4 <= count; k += 4) {
        vx::f4 x, y, z;
        if (packedSrc) {
            const float* p = &src[k][0];
            const vx::f8 ab = vx::join(vx::load<vx::f4, 4>(p), vx::load<vx::f4, 4>(p + 4));
            const vx::f8 cc = vx::twice(vx::load<vx::f4, 4>(p + 8));
            x = __builtin_shufflevector(ab, cc, 0, 3, 6, 9);
            y = __builtin_shufflevector(ab, cc, 1, 4, 7, 10);
            z = __builtin_shufflevector(ab, cc, 2, 5, 8, 11);
        } else {
            const auto p0 = src[k], p1 = src[k + 1], p2 = src[k + 2], p3 = src[k + 3];
            x = vx::f4{p0[0], p1[0], p2[0], p3[0]};
            y = vx::f4{p0[1], p1[1], p2[1], p3[1]};
            z = vx::f4{p0[2], p1[2], p2[2], p3[2]};
        }
        vx::f4 X, Y, Z;
        anyTiny |= affine_lanes(a, x, y, z, X, Y, Z);
        if (packedDst) {
            float* r = &dst[k][0];
            const vx::f8 xy = vx::join(X, Y), zz = vx::twice(Z);
            vx::store<4>(r, vx::f4(__builtin_shufflevector(xy, zz, 0, 4, 8, 1)));
            vx::store<4>(r + 4, vx::f4(__builtin_shufflevector(xy, zz, 5, 9, 2, 6)));
            vx::store<4>(r + 8, vx::f4(__builtin_shufflevector(xy, zz, 10, 3, 7, 11)));
        } else {
            for (int l = 0; l < 4; ++l) {
                const auto r = dst[k + l];
                r[0] = X[l], r[1] = Y[l], r[2] = Z[l];
            }
        }
    }
    const kelStatus tail = affine_points(a, src, dst, k, count);
    const bool tiny = (anyTiny[0] | anyTiny[1] | anyTiny[2] | anyTiny[3]) != 0;
    return tiny ? kelErrTinyDivisor : tail;
}

template <class M, class S, class D>
inline kelStatus ownkelmAffineTransform3DH_mva_32f(const M& mat, const S& src, const D& dst, int count)
{
    return affine_contiguous(mat, src, dst, count);
}

template <class M, class S, class D>
inline kelStatus affine_kernel(const M& mat, const S& src, const D& dst, int count)
{
    if constexpr (std::is_same_v<S, Strided<float, true>>) return ownkelmAffineTransform3DH_mva_32f(mat, src, dst, count);
    else return ownkelmAffineTransform3DH_mva_32f_S2(mat, src, dst, count);
}

// The matrix is shared by every thread; points and results are split.
template <class M, class S, class D>
inline kelStatus ownOMP_kelmAffineTransform3DH_mva_32f(const M& mat, const S& src, const D& dst, int count)
{
    return with_unit_strides(
        [&](const auto& mu, const auto& su, const auto& du) {
            return split(count, [&](int first, int mine) { return affine_kernel(mu, su.from(first), du.from(first), mine); });
        },
        mat, src, dst);
}

}  // namespace kelm
