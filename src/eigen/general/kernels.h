// General (nonsymmetric) eigenvalues and eigenvectors: kernels.
//
// The working matrix h is the source copied row by row into the buffer and
// then addressed by columns (h[i][j] is buffer element j*n + i), so h is the
// transpose of the source; its eigenvalues are the source's, and every test
// below (deflation, block detection) refers to h.  Columns of h are
// contiguous, which the reflector updates exploit.
//
// hqr() is the whole eigenvalue method: Householder reduction to Hessenberg
// form, then double-shift QR with a budget of 30*n sweeps for the whole
// matrix, deflating 1x1 and 2x2 blocks from the bottom.  With Vec = true it
// also applies every transformation to the whole rows and columns of h (which
// becomes the quasi-triangular T) and accumulates it into the Schur vectors
// q (rows contiguous), h = Q T Q^T.  The active block's arithmetic is the
// same either way, so the eigenvalues have the same bits with or without
// vectors.
//
// Orders 3 to 6 are instantiations with the order fixed at compile time
// (N = 3..6); N = 0 reads it at run time.  Same operations, same bits.
#pragma once

#include <cmath>
#include <cstddef>

#include "common/check.h"
#include "common/desc.h"
#include "common/parallel.h"
#include "kelm.h"

namespace kelm {
namespace geig {

template <class T>
struct Lim;
template <>
struct Lim<float> {
    static constexpr float eps = 1.1920929e-7f, tiny = 1.1754944e-38f, eps4 = 4.7683716e-7f;
};
template <>
struct Lim<double> {
    static constexpr double eps = 2.220446049250313e-16, tiny = 2.2250738585072014e-308,
                            eps4 = 8.881784197001252e-16;
};

// Work-buffer sizes in elements: values only, and values with vectors.
inline unsigned values_elems(int n) { return unsigned(n) * (unsigned(n) + 5u); }
inline unsigned vectors_elems(int n) { return unsigned(n) * (3u * unsigned(n) + 5u); }

template <class T>
inline T fabs_(T x) { return std::fabs(x); }
template <class T>
inline T max_(T a, T b) { return a > b ? a : b; }
template <class T>
inline T min_(T a, T b) { return a > b ? b : a; }
template <class T>
inline T sign1(T x) { return std::signbit(x) ? T(-1) : T(1); }

// sqrt(x)*sqrt(y); the 32f kernels take both roots and the product in double.
template <class T>
inline T sqrt_times_sqrt(T x, T y)
{
    if constexpr (sizeof(T) == 4)
        return T(std::sqrt(double(x)) * std::sqrt(double(y)));
    else
        return std::sqrt(x) * std::sqrt(y);
}

// sqrt(x^2 + y^2) as m*sqrt((mu/m)^2 + 1), m and mu the larger and smaller
// magnitude; just m when mu is below the smallest normal number.
template <class T>
inline T hyp(T x, T y)
{
    const T ax = fabs_(x), ay = fabs_(y);
    const T m = max_(ax, ay), mu = min_(ax, ay);
    if (mu < Lim<T>::tiny) return m;
    const T r = mu / m;
    return m * std::sqrt(r * r + T(1));
}

// The reflector I - tau*w*w^T with w = (1, x) that takes (alpha, x) to
// (beta, 0): alpha becomes beta, x becomes the vector part, tau is returned.
// A vector part of norm below the smallest normal number gives the identity
// (tau = 0, alpha and x unchanged).
template <class T>
inline T reflector(T& alpha, T* x, int m)
{
    T ss = T(0);
    for (int j = 0; j < m; ++j) ss = ss + x[j] * x[j];
    const T xnorm = std::sqrt(ss);
    if (xnorm < Lim<T>::tiny) return T(0);
    const T r = hyp(alpha, xnorm);
    const T beta = alpha >= T(0) ? -r : r;
    const T tau = (beta - alpha) / beta;
    const T sc = T(1) / (alpha - beta);
    for (int j = 0; j < m; ++j) x[j] = x[j] * sc;
    alpha = beta;
    return tau;
}

// Column-addressed working matrix and row-addressed Schur vectors.
template <int N, class T>
struct Mats {
    T* h;
    T* q;
    int nrt;
    int n() const { return N ? N : nrt; }
    T& H(int i, int j) const { return h[std::ptrdiff_t(j) * n() + i]; }
    T& Q(int i, int j) const { return q[std::ptrdiff_t(i) * n() + j]; }
    T* col(int j) const { return h + std::ptrdiff_t(j) * n(); }
    T* row_q(int i) const { return q + std::ptrdiff_t(i) * n(); }
};

// Householder reduction to upper Hessenberg form; scratch: 2n elements.
// Each reflector is applied from the right to all rows (columns k+1..n-1),
// then from the left to rows and columns k+1..n-1; with Vec it is also
// accumulated into the Schur vectors.  Elements below the subdiagonal end as
// zeros (the vector parts live in scratch).
template <int N, bool Vec, class T>
inline void hessenberg(const Mats<N, T>& m, T* scr)
{
    const int n = m.n();
    T* w = scr;
    T* s = scr + n;
    for (int k = 0; k + 2 < n; ++k) {
        T* ck = m.col(k);
        T alpha = ck[k + 1];
        for (int i = k + 2; i < n; ++i) w[i] = ck[i];
        const T tau = reflector(alpha, w + k + 2, n - k - 2);
        for (int i = k + 2; i < n; ++i) ck[i] = T(0);
        if (tau == T(0)) continue;
        ck[k + 1] = alpha;
        w[k + 1] = T(1);
        // From the right: s = h*w over all rows, h -= (tau*s)*w^T.
        {
            const T* c = m.col(k + 1);
            for (int i = 0; i < n; ++i) s[i] = c[i];
        }
        for (int j = k + 2; j < n; ++j) {
            const T wj = w[j];
            const T* c = m.col(j);
            for (int i = 0; i < n; ++i) s[i] = s[i] + c[i] * wj;
        }
        for (int i = 0; i < n; ++i) s[i] = tau * s[i];
        for (int j = k + 1; j < n; ++j) {
            const T wj = w[j];
            T* c = m.col(j);
            for (int i = 0; i < n; ++i) c[i] = c[i] - s[i] * wj;
        }
        // From the left: rows and columns k+1..n-1.
        for (int j = k + 1; j < n; ++j) {
            T* c = m.col(j);
            T sum = c[k + 1];
            for (int i = k + 2; i < n; ++i) sum = sum + w[i] * c[i];
            sum = tau * sum;
            c[k + 1] = c[k + 1] - sum;
            for (int i = k + 2; i < n; ++i) c[i] = c[i] - sum * w[i];
        }
        if constexpr (Vec) {
            for (int r = 0; r < n; ++r) {
                T* qr = m.row_q(r);
                T sum = qr[k + 1];
                for (int j = k + 2; j < n; ++j) sum = sum + qr[j] * w[j];
                sum = tau * sum;
                qr[k + 1] = qr[k + 1] - sum;
                for (int j = k + 2; j < n; ++j) qr[j] = qr[j] - sum * w[j];
            }
        }
    }
}

// Brings the 2x2 block at rows and columns i-1, i to standard form and
// writes its two eigenvalues to positions i-1 and i: either upper
// triangular (two real eigenvalues) or equal diagonal with off-diagonal
// elements of opposite sign (a complex pair, positive imaginary part first).
// With Vec the rotation is applied to the rest of h and to the Schur vectors.
template <int N, bool Vec, class T>
inline void standardise(const Mats<N, T>& m, int i, T* wr, T* wi)
{
    constexpr T tiny = Lim<T>::tiny;
    T a = m.H(i - 1, i - 1), b = m.H(i - 1, i), c = m.H(i, i - 1), d = m.H(i, i);
    T cs = T(1), sn = T(0);
    bool rotated = false;
    T r1 = a, r2 = d, im = T(0);
    if (fabs_(c) <= tiny) {
        c = T(0);
    } else if (fabs_(b) <= tiny) {  // swap rows and columns
        cs = T(0);
        sn = T(1);
        const T t = d;
        d = a;
        a = t;
        b = -c;
        c = T(0);
        rotated = true;
        r1 = a;
        r2 = d;
    } else if (fabs_(a - d) <= tiny) {
        // Equal diagonal: reported as a complex pair whatever the signs of b
        // and c (callers rely on this; a block with b and c of one sign
        // still comes out as a pair).
        r1 = r2 = a;
        im = sqrt_times_sqrt(fabs_(b), fabs_(c));
    } else {
        const T p = T(0.5) * (a - d);
        const T bcmax = max_(fabs_(b), fabs_(c));
        const T bcmis = min_(fabs_(b), fabs_(c)) * sign1(b) * sign1(c);
        const T scale = max_(fabs_(p), bcmax);
        T z = (p / scale) * p + (bcmax / scale) * bcmis;
        if (z >= Lim<T>::eps4) {  // real eigenvalues: upper triangular
            const T root = sqrt_times_sqrt(scale, z);
            z = p + (p >= T(0) ? root : -root);
            a = d + z;
            d = d - (bcmax / z) * bcmis;
            const T tau = hyp(c, z);
            cs = z / tau;
            sn = c / tau;
            b = b - c;
            c = T(0);
        } else {  // complex or nearly equal: make the diagonal elements equal
            const T sigma = b + c;
            const T tau = hyp(sigma, a - d);
            cs = std::sqrt(T(0.5) * (T(1) + fabs_(sigma) / tau));
            sn = -(p / (tau * cs)) * sign1(sigma);
            const T aa = a * cs + b * sn, bb = -a * sn + b * cs;
            const T cc = c * cs + d * sn, dd = -c * sn + d * cs;
            a = aa * cs + cc * sn;
            b = bb * cs + dd * sn;
            c = -aa * sn + cc * cs;
            d = -bb * sn + dd * cs;
            const T mid = T(0.5) * (a + d);
            a = mid;
            d = mid;
            if (c != T(0)) {
                if (b != T(0)) {
                    if (sign1(b) == sign1(c)) {  // real after all: make it triangular
                        const T sab = std::sqrt(fabs_(b)), sac = std::sqrt(fabs_(c));
                        const T pp = c >= T(0) ? sab * sac : -(sab * sac);
                        const T t = T(1) / std::sqrt(fabs_(b + c));
                        a = mid + pp;
                        d = mid - pp;
                        b = b - c;
                        c = T(0);
                        const T cs1 = sab * t, sn1 = sac * t;
                        const T ncs = cs * cs1 - sn * sn1;
                        sn = cs * sn1 + sn * cs1;
                        cs = ncs;
                    }
                } else {
                    b = -c;
                    c = T(0);
                    const T t = cs;
                    cs = -sn;
                    sn = t;
                }
            }
        }
        rotated = true;
        r1 = a;
        r2 = d;
        if (c != T(0)) im = sqrt_times_sqrt(fabs_(b), fabs_(c));
    }
    m.H(i - 1, i - 1) = a;
    m.H(i - 1, i) = b;
    m.H(i, i - 1) = c;
    m.H(i, i) = d;
    wr[i - 1] = r1;
    wi[i - 1] = im;
    wr[i] = r2;
    wi[i] = -im;
    if constexpr (Vec) {
        if (!rotated) return;
        const int n = m.n();
        for (int j = i + 1; j < n; ++j) {
            const T x = m.H(i - 1, j), y = m.H(i, j);
            m.H(i - 1, j) = cs * x + sn * y;
            m.H(i, j) = cs * y - sn * x;
        }
        T* c0 = m.col(i - 1);
        T* c1 = m.col(i);
        for (int r = 0; r + 1 < i; ++r) {
            const T x = c0[r], y = c1[r];
            c0[r] = cs * x + sn * y;
            c1[r] = cs * y - sn * x;
        }
        for (int r = 0; r < n; ++r) {
            T* qr = m.row_q(r);
            const T x = qr[i - 1], y = qr[i];
            qr[i - 1] = cs * x + sn * y;
            qr[i] = cs * y - sn * x;
        }
    }
}

// One double-shift sweep over the active block, rows l..i (i - l >= 2), with
// the shifts re1 + i*im1 and re2 + i*im2.  The bulge is chased down with
// 3-element reflectors (2 elements at the last step).
template <int N, bool Vec, class T>
inline void sweep(const Mats<N, T>& m, int l, int i, T re1, T im1, T re2, T im2)
{
    const int n = m.n();
    T v[3];
    {
        const T h00 = m.H(l, l), h10 = m.H(l + 1, l), h01 = m.H(l, l + 1);
        const T h11 = m.H(l + 1, l + 1), h21 = m.H(l + 2, l + 1);
        const T s = fabs_(h00 - re2) + fabs_(im2) + fabs_(h10);
        const T h10s = h10 / s;
        v[0] = h10s * h01 + (h00 - re1) * ((h00 - re2) / s) - im1 * (im2 / s);
        v[1] = h10s * (h00 + h11 - re1 - re2);
        v[2] = h10s * h21;
    }
    for (int k = l; k < i; ++k) {
        const bool three = k + 2 <= i;
        if (k > l) {
            v[0] = m.H(k, k - 1);
            v[1] = m.H(k + 1, k - 1);
            v[2] = three ? m.H(k + 2, k - 1) : T(0);
        }
        T beta = v[0];
        const T tau = reflector(beta, v + 1, three ? 2 : 1);
        if (k > l) {
            m.H(k, k - 1) = beta;
            m.H(k + 1, k - 1) = T(0);
            if (three) m.H(k + 2, k - 1) = T(0);
        }
        if (tau == T(0)) continue;
        const T v1 = v[1], t1 = tau, t2 = tau * v1;
        const int jEnd = Vec ? n - 1 : i;
        const int rBeg = Vec ? 0 : l;
        const int rEnd = k + 3 < i ? k + 3 : i;
        T* c0 = m.col(k);
        T* c1 = c0 + n;
        if (three) {
            const T v2 = v[2], t3 = tau * v2;
            T* c2 = c1 + n;
            for (int j = k; j <= jEnd; ++j) {
                T* c = m.col(j);
                const T sum = c[k] + v1 * c[k + 1] + v2 * c[k + 2];
                c[k] = c[k] - sum * t1;
                c[k + 1] = c[k + 1] - sum * t2;
                c[k + 2] = c[k + 2] - sum * t3;
            }
            for (int r = rBeg; r <= rEnd; ++r) {
                const T sum = c0[r] + v1 * c1[r] + v2 * c2[r];
                c0[r] = c0[r] - sum * t1;
                c1[r] = c1[r] - sum * t2;
                c2[r] = c2[r] - sum * t3;
            }
            if constexpr (Vec) {
                for (int r = 0; r < n; ++r) {
                    T* qr = m.row_q(r);
                    const T sum = qr[k] + v1 * qr[k + 1] + v2 * qr[k + 2];
                    qr[k] = qr[k] - sum * t1;
                    qr[k + 1] = qr[k + 1] - sum * t2;
                    qr[k + 2] = qr[k + 2] - sum * t3;
                }
            }
        } else {
            for (int j = k; j <= jEnd; ++j) {
                T* c = m.col(j);
                const T sum = c[k] + v1 * c[k + 1];
                c[k] = c[k] - sum * t1;
                c[k + 1] = c[k + 1] - sum * t2;
            }
            for (int r = rBeg; r <= rEnd; ++r) {
                const T sum = c0[r] + v1 * c1[r];
                c0[r] = c0[r] - sum * t1;
                c1[r] = c1[r] - sum * t2;
            }
            if constexpr (Vec) {
                for (int r = 0; r < n; ++r) {
                    T* qr = m.row_q(r);
                    const T sum = qr[k] + v1 * qr[k + 1];
                    qr[k] = qr[k] - sum * t1;
                    qr[k + 1] = qr[k + 1] - sum * t2;
                }
            }
        }
    }
}

// Eigenvalues of the working matrix (already loaded), with Vec the Schur
// form and vectors too (q must hold room for n*n elements; it is set to the
// identity here).  Scratch: 2n elements.  On kelErrNotConverged only the
// eigenvalues of the blocks deflated so far (the trailing positions) are
// written.
template <int N, bool Vec, class T>
inline kelStatus hqr(const Mats<N, T>& m, T* wr, T* wi, T* scr)
{
    const int n = m.n();
    if constexpr (Vec) {
        for (int r = 0; r < n; ++r)
            for (int j = 0; j < n; ++j) m.Q(r, j) = r == j ? T(1) : T(0);
    }
    hessenberg<N, Vec>(m, scr);
    int i = n - 1, its = 0, budget = 30 * n;
    while (i >= 0) {
        int l = i;
        for (; l > 0; --l) {
            // Absolute test: not scaled by the neighbouring diagonal elements.
            if (fabs_(m.H(l, l - 1)) <= Lim<T>::eps) {
                m.H(l, l - 1) = T(0);
                break;
            }
        }
        if (l == i) {
            wr[i] = m.H(i, i);
            wi[i] = T(0);
            budget -= its;
            its = 0;
            i -= 1;
            continue;
        }
        if (l == i - 1) {
            standardise<N, Vec>(m, i, wr, wi);
            budget -= its;
            its = 0;
            i -= 2;
            continue;
        }
        if (its >= budget) return kelErrNotConverged;
        T a = m.H(i - 1, i - 1), d = m.H(i, i), q = m.H(i, i - 1) * m.H(i - 1, i);
        if (its == 10 || its == 20) {  // exceptional shift
            const T s = fabs_(m.H(i, i - 1)) + fabs_(m.H(i - 1, i - 2));
            a = d = T(0.75) * s + m.H(i, i);
            q = T(-0.4375) * s * s;
        }
        const T half = (a - d) * T(0.5);
        const T disc = half * half + q;
        const T mean = (d + a) * T(0.5);
        if (disc > T(0)) {  // real roots: a double real shift
            const T root = std::sqrt(disc);
            const T r = mean >= T(0) ? mean + root : mean - root;
            const T sh = fabs_(a) - fabs_(d) > T(0) ? (a * d - q) / r : r;
            sweep<N, Vec>(m, l, i, sh, T(0), sh, T(0));
        } else {
            const T im = std::sqrt(-disc);
            sweep<N, Vec>(m, l, i, mean, im, mean, -im);
        }
        ++its;
    }
    return kelOk;
}

// --- eigenvectors of the quasi-triangular T --------------------------------------

template <class T>
struct Cx {
    T re, im;
};
template <class T>
inline Cx<T> operator-(Cx<T> a, Cx<T> b) { return {a.re - b.re, a.im - b.im}; }
template <class T>
inline Cx<T> operator*(Cx<T> a, Cx<T> b) { return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re}; }
template <class T>
inline Cx<T> operator/(Cx<T> a, Cx<T> b)
{
    if (fabs_(b.im) <= fabs_(b.re)) {
        const T e = b.im / b.re, f = b.re + b.im * e;
        return {(a.re + a.im * e) / f, (a.im - a.re * e) / f};
    }
    const T e = b.re / b.im, f = b.im + b.re * e;
    return {(a.im + a.re * e) / f, (a.im * e - a.re) / f};
}
template <class T>
inline T abs1(T x) { return fabs_(x); }
template <class T>
inline T abs1(Cx<T> x) { return fabs_(x.re) + fabs_(x.im); }
template <class T>
inline T as_small(T, T smin) { return smin; }
template <class T>
inline Cx<T> as_small(Cx<T>, T smin) { return {smin, T(0)}; }

// Solves [m00 m01; m10 m11] x = r with complete pivoting.  The pivot is the
// element of largest magnitude; below smin the block has no usable pivot and
// false is returned.  A second pivot below smin is replaced by smin.
template <class V, class T>
inline bool solve2(V m00, V m01, V m10, V m11, V r0, V r1, T smin, V& x0, V& x1)
{
    const V e[4] = {m00, m01, m10, m11};
    int p = 0;
    T big = abs1(e[0]);
    for (int t = 1; t < 4; ++t)
        if (abs1(e[t]) > big) {
            big = abs1(e[t]);
            p = t;
        }
    if (!(big >= smin)) return false;
    const int ip = p >> 1, jp = p & 1;
    const V u11 = e[p];
    const V l21 = e[(1 - ip) * 2 + jp] / u11;
    const V u12 = e[ip * 2 + 1 - jp];
    V u22 = e[(1 - ip) * 2 + 1 - jp] - l21 * u12;
    if (abs1(u22) < smin) u22 = as_small(u22, smin);
    const V b0 = ip ? r1 : r0;
    const V b1 = (ip ? r0 : r1) - l21 * b0;
    const V y1 = b1 / u22;
    const V y0 = (b0 - u12 * y1) / u11;
    (jp ? x1 : x0) = y0;
    (jp ? x0 : x1) = y1;
    return true;
}

template <class V, class T>
inline V divide1(V num, V den, T smin)
{
    if (abs1(den) < smin) den = as_small(den, smin);
    return num / den;
}

// Real unit column k of w (rows contiguous), unless its squared norm is not
// above the smallest normal number.
template <int N, class T>
inline void normalise_real(T* w, int nrt, int k)
{
    const int n = N ? N : nrt;
    T s = T(0);
    for (int r = 0; r < n; ++r) s = s + w[r * n + k] * w[r * n + k];
    if (!(s > Lim<T>::tiny)) return;
    const T sc = T(1) / std::sqrt(s);
    for (int r = 0; r < n; ++r) w[r * n + k] = w[r * n + k] * sc;
}

// The complex pair in columns k (real part) and k+1 (imaginary part): turned
// by one plane rotation (a unit complex factor) so that its largest component
// is real, then scaled so that |re|^2 + |im|^2 = 1.
template <int N, class T>
inline void normalise_pair(T* w, int nrt, int k)
{
    const int n = N ? N : nrt;
    int top = 0;
    T big = T(-1);
    for (int r = 0; r < n; ++r) {
        const T x = w[r * n + k], y = w[r * n + k + 1];
        const T e = x * x + y * y;
        if (e > big) {
            big = e;
            top = r;
        }
    }
    const T rr = hyp(w[top * n + k], w[top * n + k + 1]);
    if (rr > T(0)) {
        const T cs = w[top * n + k] / rr, sn = w[top * n + k + 1] / rr;
        for (int r = 0; r < n; ++r) {
            const T x = w[r * n + k], y = w[r * n + k + 1];
            w[r * n + k] = cs * x + sn * y;
            w[r * n + k + 1] = cs * y - sn * x;
        }
        w[top * n + k + 1] = T(0);
    }
    T s = T(0);
    for (int r = 0; r < n; ++r) {
        s = s + w[r * n + k] * w[r * n + k];
        s = s + w[r * n + k + 1] * w[r * n + k + 1];
    }
    if (!(s > Lim<T>::tiny)) return;
    const T sc = T(1) / std::sqrt(s);
    for (int r = 0; r < n; ++r) {
        w[r * n + k] = w[r * n + k] * sc;
        w[r * n + k + 1] = w[r * n + k + 1] * sc;
    }
}

template <class T>
inline T smin_of(T re, T im)
{
    return max_(Lim<T>::eps * (fabs_(re) + fabs_(im)), Lim<T>::tiny);
}

enum class Side { Right, Left };

// Eigenvectors of the source into w (column k for position k, rows
// contiguous), from T and Q.  Side::Right: the source's right eigenvectors,
// which are Q times the left eigenvectors of T (forward substitution);
// Side::Left: the source's left eigenvectors, Q times the right eigenvectors
// of T (back substitution).  Scratch: 2n elements.  done receives the number
// of leading columns completed.  pairCheck: a position that is the second
// half of a pair where a first half or a real eigenvalue is expected stops
// with kelErrFail.
template <int N, Side S, class T>
inline kelStatus vectors(const Mats<N, T>& m, const T* wr, const T* wi, T* w, T* scr, bool pairCheck, int& done)
{
    using C = Cx<T>;
    const int n = m.n();
    T* xr = scr;
    T* xi = scr + n;
    done = 0;
    for (int p = 0; p < n;) {
        const bool first = wi[p] > T(0) && p + 1 < n;
        if (wi[p] != T(0) && !first && pairCheck) return kelErrFail;
        if (!first) {
            const T lam = wr[p];
            const T smin = smin_of(lam, T(0));
            if constexpr (S == Side::Right) {
                xr[p] = T(1);
                for (int j = p + 1; j < n;) {
                    if (j + 1 < n && m.H(j + 1, j) != T(0)) {
                        const T* c0 = m.col(j);
                        const T* c1 = m.col(j + 1);
                        T s0 = T(0), s1 = T(0);
                        for (int r = p; r < j; ++r) {
                            s0 = s0 + c0[r] * xr[r];
                            s1 = s1 + c1[r] * xr[r];
                        }
                        if (!solve2(m.H(j, j) - lam, m.H(j + 1, j), m.H(j, j + 1), m.H(j + 1, j + 1) - lam, -s0, -s1,
                                    smin, xr[j], xr[j + 1]))
                            return kelErrEigenSolve;
                        j += 2;
                    } else {
                        const T* c0 = m.col(j);
                        T s0 = T(0);
                        for (int r = p; r < j; ++r) s0 = s0 + c0[r] * xr[r];
                        xr[j] = divide1(-s0, m.H(j, j) - lam, smin);
                        j += 1;
                    }
                }
                for (int r = 0; r < n; ++r) {
                    const T* qr = m.row_q(r);
                    T s = T(0);
                    for (int j = p; j < n; ++j) s = s + qr[j] * xr[j];
                    w[r * n + p] = s;
                }
            } else {
                const T* cp = m.col(p);
                for (int j = 0; j < p; ++j) xr[j] = -cp[j];
                xr[p] = T(1);
                for (int j = p - 1; j >= 0;) {
                    if (j > 0 && m.H(j, j - 1) != T(0)) {
                        T x0, x1;
                        if (!solve2(m.H(j - 1, j - 1) - lam, m.H(j - 1, j), m.H(j, j - 1), m.H(j, j) - lam, xr[j - 1],
                                    xr[j], smin, x0, x1))
                            return kelErrEigenSolve;
                        xr[j - 1] = x0;
                        xr[j] = x1;
                        const T* c0 = m.col(j - 1);
                        const T* c1 = m.col(j);
                        for (int r = 0; r < j - 1; ++r) xr[r] = xr[r] - c0[r] * x0 - c1[r] * x1;
                        j -= 2;
                    } else {
                        const T x0 = divide1(xr[j], m.H(j, j) - lam, smin);
                        xr[j] = x0;
                        const T* c0 = m.col(j);
                        for (int r = 0; r < j; ++r) xr[r] = xr[r] - c0[r] * x0;
                        j -= 1;
                    }
                }
                for (int r = 0; r < n; ++r) {
                    const T* qr = m.row_q(r);
                    T s = T(0);
                    for (int j = 0; j <= p; ++j) s = s + qr[j] * xr[j];
                    w[r * n + p] = s;
                }
            }
            normalise_real<N>(w, n, p);
            p += 1;
        } else {
            // The pair at p, p+1 from the standardised block [[a, b], [c, a]]:
            // the eigenvector of wr + i*wi (wi > 0).
            const C lam{wr[p], wi[p]};
            const T smin = smin_of(wr[p], wi[p]);
            const T b = m.H(p, p + 1), c = m.H(p + 1, p), wv = wi[p];
            auto at = [&](int i, int j) { return C{m.H(i, j), T(0)}; };
            auto diag = [&](int j) { return C{m.H(j, j), T(0)} - lam; };
            if constexpr (S == Side::Right) {
                if (fabs_(c) >= fabs_(b)) {
                    xr[p] = T(1), xi[p] = T(0), xr[p + 1] = T(0), xi[p + 1] = wv / c;
                } else {
                    xr[p] = c / wv, xi[p] = T(0), xr[p + 1] = T(0), xi[p + 1] = T(1);
                }
                for (int j = p + 2; j < n;) {
                    auto dot = [&](int col) {
                        const T* cc = m.col(col);
                        T sr = T(0), si = T(0);
                        for (int r = p; r < j; ++r) {
                            sr = sr + cc[r] * xr[r];
                            si = si + cc[r] * xi[r];
                        }
                        return C{-sr, -si};
                    };
                    if (j + 1 < n && m.H(j + 1, j) != T(0)) {
                        C y0, y1;
                        if (!solve2(diag(j), at(j + 1, j), at(j, j + 1), diag(j + 1), dot(j), dot(j + 1), smin, y0, y1))
                            return kelErrEigenSolve;
                        xr[j] = y0.re, xi[j] = y0.im, xr[j + 1] = y1.re, xi[j + 1] = y1.im;
                        j += 2;
                    } else {
                        const C y = divide1(dot(j), diag(j), smin);
                        xr[j] = y.re, xi[j] = y.im;
                        j += 1;
                    }
                }
                for (int r = 0; r < n; ++r) {
                    const T* qr = m.row_q(r);
                    T sr = T(0), si = T(0);
                    for (int j = p; j < n; ++j) {
                        sr = sr + qr[j] * xr[j];
                        si = si + qr[j] * xi[j];
                    }
                    w[r * n + p] = sr;
                    w[r * n + p + 1] = si;
                }
            } else {
                if (fabs_(b) >= fabs_(c)) {
                    xr[p] = T(1), xi[p] = T(0), xr[p + 1] = T(0), xi[p + 1] = wv / b;
                } else {
                    xr[p] = -wv / c, xi[p] = T(0), xr[p + 1] = T(0), xi[p + 1] = T(1);
                }
                {
                    const T* c0 = m.col(p);
                    const T* c1 = m.col(p + 1);
                    const T zr0 = xr[p], zi1 = xi[p + 1];
                    for (int j = 0; j < p; ++j) {
                        xr[j] = -(c0[j] * zr0);
                        xi[j] = -(c1[j] * zi1);
                    }
                }
                for (int j = p - 1; j >= 0;) {
                    if (j > 0 && m.H(j, j - 1) != T(0)) {
                        C x0, x1;
                        if (!solve2(diag(j - 1), at(j - 1, j), at(j, j - 1), diag(j), C{xr[j - 1], xi[j - 1]},
                                    C{xr[j], xi[j]}, smin, x0, x1))
                            return kelErrEigenSolve;
                        xr[j - 1] = x0.re, xi[j - 1] = x0.im, xr[j] = x1.re, xi[j] = x1.im;
                        const T* c0 = m.col(j - 1);
                        const T* c1 = m.col(j);
                        for (int r = 0; r < j - 1; ++r) {
                            xr[r] = xr[r] - c0[r] * x0.re - c1[r] * x1.re;
                            xi[r] = xi[r] - c0[r] * x0.im - c1[r] * x1.im;
                        }
                        j -= 2;
                    } else {
                        const C x0 = divide1(C{xr[j], xi[j]}, diag(j), smin);
                        xr[j] = x0.re, xi[j] = x0.im;
                        const T* c0 = m.col(j);
                        for (int r = 0; r < j; ++r) {
                            xr[r] = xr[r] - c0[r] * x0.re;
                            xi[r] = xi[r] - c0[r] * x0.im;
                        }
                        j -= 1;
                    }
                }
                for (int r = 0; r < n; ++r) {
                    const T* qr = m.row_q(r);
                    T sr = T(0), si = T(0);
                    for (int j = 0; j <= p + 1; ++j) {
                        sr = sr + qr[j] * xr[j];
                        si = si + qr[j] * xi[j];
                    }
                    w[r * n + p] = sr;
                    w[r * n + p + 1] = si;
                }
            }
            normalise_pair<N>(w, n, p);
            p += 2;
        }
        done = p;
    }
    return kelOk;
}

// --- objects in their descriptions ----------------------------------------------

// Source row i into buffer elements i*n .. i*n + n - 1.
template <int N, class V, class T>
inline void load(const V& src, T* buf, int nrt)
{
    const int n = N ? N : nrt;
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) buf[i * n + j] = src(i, j);
}

// Columns 0 .. done-1 of w (rows contiguous) into the destination.
template <int N, class V, class T>
inline void store(const V& dst, const T* w, int nrt, int done)
{
    const int n = N ? N : nrt;
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < done; ++j) dst(i, j) = w[i * n + j];
}

template <int N, class D, class T>
inline kelStatus values_run(const D& d, T* wr, T* wi, int nrt, int count, T* buf)
{
    const int n = N ? N : nrt;
    const Mats<N, T> m{buf, nullptr, n};
    T* scr = buf + std::ptrdiff_t(n) * n;
    for (int k = 0; k < count; ++k) {
        load<N>(d[k], buf, n);
        const std::ptrdiff_t off = std::ptrdiff_t(k) * n;
        if (kelStatus s = hqr<N, false>(m, wr + off, wi + off, scr)) return s;
    }
    return kelOk;
}

// The array kernel of every description; a single matrix is an array of one.
template <class D, class T>
inline kelStatus ownkelmEigenValues_ma(const D& d, T* wr, T* wi, int n, int count, T* buf)
{
    switch (n) {
    case 3: return values_run<3>(d, wr, wi, n, count, buf);
    case 4: return values_run<4>(d, wr, wi, n, count, buf);
    case 5: return values_run<5>(d, wr, wi, n, count, buf);
    case 6: return values_run<6>(d, wr, wi, n, count, buf);
    default: return values_run<0>(d, wr, wi, n, count, buf);
    }
}

// Per-thread workspace of the parallel drivers: the eigenvector buffer size,
// also for the values-only family (its own need is smaller).
template <class T>
inline std::size_t thread_slice(int n)
{
    return std::size_t(vectors_elems(n) * unsigned(sizeof(T)));
}

template <class D, class T>
inline kelStatus ownOMP_kelmEigenValues_ma(const D& d, T* wr, T* wi, int n, int count, T* buf)
{
    return split_with_workspace(count, thread_slice<T>(n), buf, [&](int first, int mine, void* ws) {
        const std::ptrdiff_t off = std::ptrdiff_t(first) * n;
        return ownkelmEigenValues_ma(d.from(first), wr + off, wi + off, n, mine, static_cast<T*>(ws));
    });
}

template <class D, class T>
inline kelStatus values_array(const D& d, T* wr, T* wi, int n, int count, T* buf)
{
    if (I32(n) * I32(n + 1) * I32(count) >= 251) return ownOMP_kelmEigenValues_ma(d, wr, wi, n, count, buf);
    return ownkelmEigenValues_ma(d, wr, wi, n, count, buf);
}

// Which eigenvectors an operation delivers.  Both: right ones into the first
// destination, left ones into the second.
enum class Want { Right, Left, Both };

template <int N, Want W, class D, class O1, class O2, class T>
inline kelStatus vectors_run(const D& d, const O1& o1, const O2& o2, T* wr, T* wi, int nrt, int count, T* buf)
{
    const int n = N ? N : nrt;
    const std::ptrdiff_t nn = std::ptrdiff_t(n) * n;
    const Mats<N, T> m{buf, buf + nn, n};
    T* w = buf + 2 * nn;
    T* scr = buf + 3 * nn;
    for (int k = 0; k < count; ++k) {
        load<N>(d[k], buf, n);
        const std::ptrdiff_t off = std::ptrdiff_t(k) * n;
        if (kelStatus s = hqr<N, true>(m, wr + off, wi + off, scr)) return s;
        int done = 0;
        kelStatus s = kelOk;
        if constexpr (W == Want::Left) {
            s = vectors<N, Side::Left>(m, wr + off, wi + off, w, scr, false, done);
        } else {
            s = vectors<N, Side::Right>(m, wr + off, wi + off, w, scr, W == Want::Both, done);
        }
        store<N>(o1[k], w, n, done);
        if (s != kelOk) return s;
        if constexpr (W == Want::Both) {
            s = vectors<N, Side::Left>(m, wr + off, wi + off, w, scr, true, done);
            store<N>(o2[k], w, n, done);
            if (s != kelOk) return s;
        }
    }
    return kelOk;
}

template <Want W, class D, class O1, class O2, class T>
inline kelStatus ownkelmEigenValuesVectors_ma(const D& d, const O1& o1, const O2& o2, T* wr, T* wi, int n, int count,
                                              T* buf)
{
    switch (n) {
    case 3: return vectors_run<3, W>(d, o1, o2, wr, wi, n, count, buf);
    case 4: return vectors_run<4, W>(d, o1, o2, wr, wi, n, count, buf);
    case 5: return vectors_run<5, W>(d, o1, o2, wr, wi, n, count, buf);
    case 6: return vectors_run<6, W>(d, o1, o2, wr, wi, n, count, buf);
    default: return vectors_run<0, W>(d, o1, o2, wr, wi, n, count, buf);
    }
}

template <Want W, class D, class O1, class O2, class T>
inline kelStatus ownOMP_kelmEigenValuesVectors_ma(const D& d, const O1& o1, const O2& o2, T* wr, T* wi, int n,
                                                  int count, T* buf)
{
    return split_with_workspace(count, thread_slice<T>(n), buf, [&](int first, int mine, void* ws) {
        const std::ptrdiff_t off = std::ptrdiff_t(first) * n;
        return ownkelmEigenValuesVectors_ma<W>(d.from(first), o1.from(first), o2.from(first), wr + off, wi + off, n,
                                               mine, static_cast<T*>(ws));
    });
}

template <Want W, class D, class O1, class O2, class T>
inline kelStatus vectors_array(const D& d, const O1& o1, const O2& o2, T* wr, T* wi, int n, int count, T* buf)
{
    if (I32(n) * (I32(3) * I32(n) + I32(1)) * I32(count) >= 501)
        return ownOMP_kelmEigenValuesVectors_ma<W>(d, o1, o2, wr, wi, n, count, buf);
    return ownkelmEigenValuesVectors_ma<W>(d, o1, o2, wr, wi, n, count, buf);
}

}  // namespace geig
}  // namespace kelm
