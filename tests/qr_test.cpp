// QRDecomp and QRBackSubst: factors whose reflections rebuild the matrix and
// least-squares solutions in every description and size, the same bits
// however the work is run and as a plain Householder loop in the documented
// order, the tiny-column rule, arrays that stop at a failing matrix, the
// check order of every member, and where arrays go parallel.
#include <omp.h>

#include <algorithm>
#include <utility>

#include "support.h"

namespace {

using kt::Desc;
using kt::is_list;
using kt::kAllForms;
using kt::single_form;
using kt::Objects;

template <class T>
struct Qr;
#define KELM_QR_TABLE(T, S)                                                                                           \
    template <>                                                                                                       \
    struct Qr<T> {                                                                                                    \
        static constexpr auto m = kelmQRDecomp_m_##S, m_P = kelmQRDecomp_m_##S##_P;                                  \
        static constexpr auto ma = kelmQRDecomp_ma_##S, ma_P = kelmQRDecomp_ma_##S##_P, ma_L = kelmQRDecomp_ma_##S##_L; \
        static constexpr auto mv = kelmQRBackSubst_mv_##S, mv_P = kelmQRBackSubst_mv_##S##_P;                        \
        static constexpr auto mva = kelmQRBackSubst_mva_##S, mva_P = kelmQRBackSubst_mva_##S##_P,                    \
                              mva_L = kelmQRBackSubst_mva_##S##_L;                                                    \
        static constexpr auto mava = kelmQRBackSubst_mava_##S, mava_P = kelmQRBackSubst_mava_##S##_P,                \
                              mava_L = kelmQRBackSubst_mava_##S##_L;                                                  \
    };
KELM_QR_TABLE(float, 32f)
KELM_QR_TABLE(double, 64f)
#undef KELM_QR_TABLE

constexpr Desc kAllDescs[] = {Desc::Contig, Desc::Strided, Desc::Pointer, Desc::List, Desc::ListS2};
// A list call's single operands (the mva factor) keep the strided description.

template <class T>
kelStatus decomp(Objects<T>& a, T* buf, Objects<T>& d, int w, int h, int count)
{
    if (a.desc() == Desc::Pointer)
        return Qr<T>::ma_P(a.table(), a.shift(), a.objStride(), buf, d.table(), d.shift(), d.objStride(), w, h, count);
    if (is_list(a.desc()))
        return Qr<T>::ma_L(a.table(), a.shift(), a.rowStride(), a.elemStride(), buf, d.table(), d.shift(), d.rowStride(),
                           d.elemStride(), w, h, count);
    return Qr<T>::ma(a.base(), a.objStride(), a.rowStride(), a.elemStride(), buf, d.base(), d.objStride(), d.rowStride(),
                     d.elemStride(), w, h, count);
}

// Object k alone, through the single-matrix entries (strided or pointer).
template <class T>
kelStatus decomp_one(Objects<T>& a, T* buf, Objects<T>& d, int w, int h, int k = 0)
{
    if (a.desc() == Desc::Pointer)
        return Qr<T>::m_P(a.table(), a.shift() + k * a.objStride(), buf, d.table(), d.shift() + k * d.objStride(), w, h);
    return Qr<T>::m(&a.at(k, 0, 0), a.rowStride(), a.elemStride(), buf, &d.at(k, 0, 0), d.rowStride(), d.elemStride(), w, h);
}

template <class T>
kelStatus solve_mava(Objects<T>& f, T* buf, Objects<T>& b, Objects<T>& x, int w, int h, int count)
{
    if (f.desc() == Desc::Pointer)
        return Qr<T>::mava_P(f.table(), f.shift(), f.objStride(), buf, b.table(), b.shift(), b.objStride(), x.table(),
                             x.shift(), x.objStride(), w, h, count);
    if (is_list(f.desc()))
        return Qr<T>::mava_L(f.table(), f.shift(), f.rowStride(), f.elemStride(), buf, b.table(), b.shift(),
                             b.elemStride(), x.table(), x.shift(), x.elemStride(), w, h, count);
    return Qr<T>::mava(f.base(), f.objStride(), f.rowStride(), f.elemStride(), buf, b.base(), b.objStride(),
                       b.elemStride(), x.base(), x.objStride(), x.elemStride(), w, h, count);
}

// One factor f (in single_form of the vectors' description) for every vector.
template <class T>
kelStatus solve_mva(Objects<T>& f, T* buf, Objects<T>& b, Objects<T>& x, int w, int h, int count)
{
    if (b.desc() == Desc::Pointer)
        return Qr<T>::mva_P(f.table(), f.shift(), buf, b.table(), b.shift(), b.objStride(), x.table(), x.shift(),
                            x.objStride(), w, h, count);
    if (is_list(b.desc()))
        return Qr<T>::mva_L(f.base(), f.rowStride(), f.elemStride(), buf, b.table(), b.shift(), b.elemStride(), x.table(),
                            x.shift(), x.elemStride(), w, h, count);
    return Qr<T>::mva(f.base(), f.rowStride(), f.elemStride(), buf, b.base(), b.objStride(), b.elemStride(), x.base(),
                      x.objStride(), x.elemStride(), w, h, count);
}

template <class T>
kelStatus solve_mv(Objects<T>& f, T* buf, Objects<T>& b, Objects<T>& x, int w, int h)
{
    if (f.desc() == Desc::Pointer)
        return Qr<T>::mv_P(f.table(), f.shift(), buf, b.table(), b.shift(), x.table(), x.shift(), w, h);
    return Qr<T>::mv(f.base(), f.rowStride(), f.elemStride(), buf, b.base(), b.elemStride(), x.base(), x.elemStride(), w, h);
}

template <class T>
double eps() { return sizeof(T) == 4 ? 1.1920928955078125e-07 : 2.220446049250313e-16; }

int reflections(int w, int h) { return w == h ? w - 1 : w; }

// Q R, with Q the product of the stored reflections, rebuilds A.
template <class T>
void expect_factor(Objects<T>& a, Objects<T>& f, int k, int w, int h)
{
    std::vector<double> m(std::size_t(h * w), 0.0);
    double norm = 0;
    for (int i = 0; i < h; ++i)
        for (int j = 0; j < w; ++j) {
            if (j >= i) m[std::size_t(i * w + j)] = f.at(k, i, j);
            norm = std::max(norm, std::fabs(double(a.at(k, i, j))));
        }
    for (int r = reflections(w, h) - 1; r >= 0; --r) {
        std::vector<double> v(std::size_t(h), 0.0);
        double vv = 1;
        v[std::size_t(r)] = 1;
        for (int i = r + 1; i < h; ++i) v[std::size_t(i)] = f.at(k, i, r), vv += v[std::size_t(i)] * v[std::size_t(i)];
        for (int j = 0; j < w; ++j) {
            double t = 0;
            for (int i = r; i < h; ++i) t += v[std::size_t(i)] * m[std::size_t(i * w + j)];
            for (int i = r; i < h; ++i) m[std::size_t(i * w + j)] -= 2 / vv * v[std::size_t(i)] * t;
        }
    }
    for (int i = 0; i < h; ++i)
        for (int j = 0; j < w; ++j)
            ASSERT_NEAR(m[std::size_t(i * w + j)], double(a.at(k, i, j)), 20 * h * eps<T>() * norm)
                << "object " << k << " (" << i << ", " << j << ")";
}

// x is the least-squares solution: A^T (A x - b) vanishes next to |A| (|A| |x| + |b|).
template <class T>
void expect_least_squares(Objects<T>& a, int ka, Objects<T>& b, Objects<T>& x, int kb, int w, int h)
{
    std::vector<double> r(std::size_t(h), 0.0);
    double na = 0, nx = 0, nb = 0;
    for (int i = 0; i < h; ++i) {
        r[std::size_t(i)] = -double(b.at(kb, i));
        nb = std::max(nb, std::fabs(double(b.at(kb, i))));
        for (int j = 0; j < w; ++j) {
            r[std::size_t(i)] += double(a.at(ka, i, j)) * double(x.at(kb, j));
            na = std::max(na, std::fabs(double(a.at(ka, i, j))));
        }
    }
    for (int j = 0; j < w; ++j) nx = std::max(nx, std::fabs(double(x.at(kb, j))));
    for (int j = 0; j < w; ++j) {
        double g = 0;
        for (int i = 0; i < h; ++i) g += double(a.at(ka, i, j)) * r[std::size_t(i)];
        ASSERT_LE(std::fabs(g), 50.0 * h * w * eps<T>() * na * (na * nx + nb)) << "vector " << kb << " column " << j;
    }
}

template <class T>
class QrTest : public ::testing::Test {};
using Types = ::testing::Types<float, double>;
TYPED_TEST_SUITE(QrTest, Types);

// Every description, every h >= w from 1 to 9, one and two threads (parallel
// from 2x7 and 4x4 on): the reflections rebuild A, the
// solutions are least-squares ones, decomposition in place and the single
// forms give the same bits, and every run gives the bits of the serial
// contiguous one.
TYPED_TEST(QrTest, EveryDescriptionSizeAndThreadCountFactorsSolvesAndAgrees)
{
    using T = TypeParam;
    constexpr int count = 67;  // a short last block of lanes for both types
    for (int h = 1; h <= 9; ++h)
        for (int w = 1; w <= h; ++w) {
            std::vector<T> reference;
            for (Desc desc : kAllDescs)
                for (int threads : {1, 2}) {
                    SCOPED_TRACE(std::string(kt::name(desc)) + " w=" + std::to_string(w) + " h=" + std::to_string(h) +
                                 " threads=" + std::to_string(threads));
                    kt::Threads scope(threads);
                    std::vector<T> buf(std::size_t(h), T(0));
                    Objects<T> a(desc, count, h, w, 10 + h * w), d(desc, count, h, w, 20), inPlace(desc, count, h, w, 10 + h * w),
                        b(desc, count, 1, h, 30), x(desc, count, 1, w, 40), y(desc, count, 1, w, 50);
                    ASSERT_EQ(decomp(a, buf.data(), d, w, h, count), kelOk);
                    ASSERT_EQ(decomp(inPlace, buf.data(), inPlace, w, h, count), kelOk);
                    for (int k = 0; k < count; ++k) expect_factor(a, d, k, w, h);
                    ASSERT_EQ(solve_mava(d, buf.data(), b, x, w, h, count), kelOk);
                    for (int k = 0; k < count; ++k) expect_least_squares(a, k, b, x, k, w, h);

                    // One factor for every vector (mva) and for one (m, mv).
                    const Desc fd = single_form(desc);
                    Objects<T> a1(fd, 1, h, w, 60 + w), f1(fd, 1, h, w, 70), b1(fd, 1, 1, h, 80), x1(fd, 1, 1, w, 90);
                    ASSERT_EQ(decomp_one(a1, buf.data(), f1, w, h), kelOk);
                    expect_factor(a1, f1, 0, w, h);
                    ASSERT_EQ(solve_mva(f1, buf.data(), b, y, w, h, count), kelOk);
                    for (int k = 0; k < count; ++k) expect_least_squares(a1, 0, b, y, k, w, h);
                    ASSERT_EQ(solve_mv(f1, buf.data(), b1, x1, w, h), kelOk);
                    expect_least_squares(a1, 0, b1, x1, 0, w, h);
                    for (auto* o : {&d, &x, &y, &inPlace, &f1, &x1}) EXPECT_TRUE(o->canaries_intact());

                    // The single forms on a few objects of the array: the same bits.
                    Objects<T> e(desc, count, h, w, 20);
                    for (int k : {0, 5, count - 1}) {
                        ASSERT_EQ(decomp_one(a, buf.data(), e, w, h, k), kelOk);
                        for (int i = 0; i < h; ++i)
                            for (int j = 0; j < w; ++j) ASSERT_TRUE(kt::same_bits(e.at(k, i, j), d.at(k, i, j)));
                    }

                    std::vector<T> bits;
                    for (int k = 0; k < count; ++k) {
                        for (int j = 0; j < w; ++j) bits.insert(bits.end(), {x.at(k, j), y.at(k, j)});
                        for (int i = 0; i < h; ++i)
                            for (int j = 0; j < w; ++j) bits.insert(bits.end(), {d.at(k, i, j), inPlace.at(k, i, j)});
                    }
                    for (int j = 0; j < w; ++j) bits.push_back(x1.at(0, j));
                    for (int i = 0; i < h; ++i)
                        for (int j = 0; j < w; ++j) bits.push_back(f1.at(0, i, j));
                    if (reference.empty()) reference = bits;
                    for (std::size_t e = 0; e < bits.size(); ++e) ASSERT_TRUE(kt::same_bits(bits[e], reference[e])) << e;
                }
        }
}

// The arithmetic is part of the interface: a plain Householder loop in the
// documented order gives the library's bits, square orders 3 to 6 included.
TYPED_TEST(QrTest, ArithmeticIsTheDocumentedOneBitForBit)
{
    using T = TypeParam;
    constexpr int count = 13;
    for (int h = 1; h <= 8; ++h)
        for (int w = 1; w <= h; ++w) {
            SCOPED_TRACE("w=" + std::to_string(w) + " h=" + std::to_string(h));
            std::vector<T> buf(std::size_t(h), T(0));
            Objects<T> a(Desc::Contig, count, h, w, 100 + h + w), d(Desc::Contig, count, h, w), b(Desc::Contig, count, 1, h, 2),
                x(Desc::Contig, count, 1, w, 3);
            if (h > 1) a.at(3, 0, 0) = T(0), a.at(4, 0, 0) = -T(0);  // zero diagonals take the negative sign
            ASSERT_EQ(decomp(a, buf.data(), d, w, h, count), kelOk);
            ASSERT_EQ(solve_mava(d, buf.data(), b, x, w, h, count), kelOk);
            for (int k = 0; k < count; ++k) {
                std::vector<T> q(std::size_t(h * w), T(0)), v(std::size_t(h), T(0)), c(std::size_t(h), T(0));
                auto at = [&](int i, int j) -> T& { return q[std::size_t(i * w + j)]; };
                for (int i = 0; i < h; ++i)
                    for (int j = 0; j < w; ++j) at(i, j) = a.at(k, i, j);
                for (int i = 0; i < h; ++i) c[std::size_t(i)] = b.at(k, i);
                for (int r = 0; r < reflections(w, h); ++r) {
                    T s2 = 0;
                    for (int i = r; i < h; ++i) s2 = s2 + at(i, r) * at(i, r);
                    const T sigma = at(r, r) > 0 ? std::sqrt(s2) : -std::sqrt(s2);
                    const T inv = T(1) / (at(r, r) + sigma);
                    T sum = 1;
                    for (int i = r + 1; i < h; ++i) v[std::size_t(i)] = at(i, r) * inv;
                    for (int i = r + 1; i < h; ++i) sum = sum + v[std::size_t(i)] * v[std::size_t(i)];
                    const T beta = T(-2) / sum;
                    for (int j = r; j < w; ++j) {
                        T t = at(r, j);
                        for (int i = r + 1; i < h; ++i) t = t + at(i, j) * v[std::size_t(i)];
                        t = t * beta;
                        at(r, j) = at(r, j) + t;
                        for (int i = r + 1; i < h; ++i) at(i, j) = at(i, j) + v[std::size_t(i)] * t;
                    }
                    for (int i = r + 1; i < h; ++i) at(i, r) = v[std::size_t(i)];
                    T t = c[std::size_t(r)];
                    for (int i = r + 1; i < h; ++i) t = t + v[std::size_t(i)] * c[std::size_t(i)];
                    t = t * beta;
                    c[std::size_t(r)] = c[std::size_t(r)] + t;
                    for (int i = r + 1; i < h; ++i) c[std::size_t(i)] = c[std::size_t(i)] + v[std::size_t(i)] * t;
                }
                for (int i = w - 1; i >= 0; --i) {
                    T s = 0;
                    for (int j = i + 1; j < w; ++j) s = s + at(i, j) * c[std::size_t(j)];
                    c[std::size_t(i)] = (c[std::size_t(i)] - s) / at(i, i);
                }
                for (int i = 0; i < h; ++i)
                    for (int j = 0; j < w; ++j)
                        ASSERT_TRUE(kt::same_bits(d.at(k, i, j), at(i, j))) << "object " << k << " (" << i << ", " << j << ")";
                for (int j = 0; j < w; ++j) ASSERT_TRUE(kt::same_bits(x.at(k, j), c[std::size_t(j)])) << "object " << k;
            }
        }
}

// The tiny test is on the squared column norm, against epsilon.
TYPED_TEST(QrTest, TinyColumnsAndZeroDiagonals)
{
    using T = TypeParam;
    const bool f32 = sizeof(T) == 4;
    T buf[9];
    struct Case {
        const char* what;
        int w, h;
        std::vector<double> a;  // row-major
        kelStatus status;
    };
    const std::vector<Case> cases = {
        {"1x1 zero: no reflection", 1, 1, {0.0}, kelOk},
        {"one zero column", 1, 3, {0.0, 0.0, 0.0}, kelErrTinyDivisor},
        {"column of norm 1e-4", 1, 3, {1e-4, 0.0, 0.0}, f32 ? kelErrTinyDivisor : kelOk},
        {"column of norm 1e-7", 1, 3, {1e-7, 0.0, 0.0}, f32 ? kelErrTinyDivisor : kelOk},
        {"column of norm 1e-7 on 9", 1, 9, {1e-7, 0, 0, 0, 0, 0, 0, 0, 0}, f32 ? kelErrTinyDivisor : kelOk},
        {"squared norm 1e-17", 1, 2, {0.0, 3.1622776601683794e-09}, kelErrTinyDivisor},
        {"second column tiny after the first", 2, 3, {1, 1, 0, 0, 0, 0}, kelErrTinyDivisor},
        {"square: the last column is never tested", 3, 3, {1, 0, 0, 0, 1, 0, 0, 0, 0}, kelOk},
        {"4x4 third column tiny", 4, 4, {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 1}, kelErrTinyDivisor},
    };
    for (const Case& c : cases)
        for (Desc desc : {Desc::Contig, Desc::Pointer}) {
            SCOPED_TRACE(std::string(c.what) + " " + kt::name(desc));
            Objects<T> a(desc, 1, c.h, c.w), d(desc, 1, c.h, c.w, 9);
            for (int i = 0; i < c.h; ++i)
                for (int j = 0; j < c.w; ++j) a.at(0, i, j) = T(c.a[std::size_t(i * c.w + j)]);
            EXPECT_EQ(decomp_one(a, buf, d, c.w, c.h), c.status);
            if (c.w == 1 && c.h == 1) {
                EXPECT_TRUE(kt::same_bits(d.at(0, 0, 0), T(0)));
            }
        }
    // A zero diagonal of either sign with a non-zero column below takes the
    // negative sigma: R's diagonal comes out positive; a positive one negative.
    for (T top : {T(0), -T(0), T(2)}) {
        Objects<T> a(Desc::Contig, 1, 3, 3), d(Desc::Contig, 1, 3, 3);
        a.at(0, 0, 0) = top, a.at(0, 1, 0) = T(3), a.at(0, 2, 0) = T(4);
        ASSERT_EQ(decomp_one(a, buf, d, 3, 3), kelOk);
        const double norm = std::sqrt(double(top) * double(top) + 25.0);
        EXPECT_NEAR(double(d.at(0, 0, 0)), top > 0 ? -norm : norm, 1e-5) << double(top);
    }
}

// An array stops at its first tiny matrix: the ones before are complete, the
// failing one keeps the footprint of a single call, the rest are untouched.
// In a parallel run the other thread's matrices are still factored.
TYPED_TEST(QrTest, FailureInTheMiddleOfAnArray)
{
    using T = TypeParam;
    constexpr int count = 100;  // parallel for every size below
    for (auto [w, h] : {std::pair{4, 4}, std::pair{6, 6}, std::pair{2, 5}, std::pair{7, 7}})
        for (Desc desc : kAllDescs)
            for (int threads : {1, 2}) {
                SCOPED_TRACE(std::string(kt::name(desc)) + " w=" + std::to_string(w) + " h=" + std::to_string(h) +
                             " threads=" + std::to_string(threads));
                kt::Threads scope(threads);
                std::vector<T> buf(std::size_t(h), T(0));
                Objects<T> a(desc, count, h, w, 5), d(desc, count, h, w, 6), ok(desc, count, h, w, 6), one(desc, count, h, w, 6);
                for (int i = 0; i < h; ++i) a.at(13, i, 1) = T(0);  // tiny second column
                ASSERT_EQ(decomp(a, buf.data(), d, w, h, count), kelErrTinyDivisor);
                ASSERT_EQ(decomp_one(a, buf.data(), one, w, h, 13), kelErrTinyDivisor);
                for (int k = 0; k < count; ++k) {
                    if (k == 13) {
                        for (int i = 0; i < h; ++i)
                            for (int j = 0; j < w; ++j) ASSERT_TRUE(kt::same_bits(d.at(k, i, j), one.at(k, i, j)));
                        continue;
                    }
                    const bool done = k < 13 || (threads > 1 && k >= count / 2);
                    if (done) {
                        ASSERT_EQ(decomp_one(a, buf.data(), ok, w, h, k), kelOk);
                        for (int i = 0; i < h; ++i)
                            for (int j = 0; j < w; ++j) ASSERT_TRUE(kt::same_bits(d.at(k, i, j), ok.at(k, i, j))) << k;
                    } else {
                        Objects<T> fresh(desc, count, h, w, 6);
                        for (int i = 0; i < h; ++i)
                            for (int j = 0; j < w; ++j) ASSERT_TRUE(kt::same_bits(d.at(k, i, j), fresh.at(k, i, j))) << k;
                    }
                }
                EXPECT_TRUE(d.canaries_intact());
            }
}

// Parallel runs leave the caller's buffer alone, serial runs of the general
// sizes use it: that shows on which side of each bound a call falls.  The
// measures are w*h*2*count, w*h + (w + h)*count and (w*(h + 1) + h)*count,
// parallel strictly above 1800; arrays shorter than the thread count stay on
// the calling thread.
TYPED_TEST(QrTest, ThresholdsOnBothSidesOfEachBound)
{
    using T = TypeParam;
    kt::Threads scope(2);
    const int w = 2, h = 3;
    struct Bound {
        const char* what;
        int w, h, serialCount;  // the largest count that stays serial
    };
    const Bound bounds[] = {{"decomp", w, h, 150}, {"mva", w, h, 358}, {"mava", w, h, 163}, {"decomp 40x40", 40, 40, 1}};
    const T mark = T(-12345);
    for (const Bound& bd : bounds)
        for (int n : {bd.serialCount, bd.serialCount + 1}) {
            SCOPED_TRACE(std::string(bd.what) + " count=" + std::to_string(n));
            Objects<T> a(Desc::Contig, n, bd.h, bd.w, 3), d(Desc::Contig, n, bd.h, bd.w), b(Desc::Contig, n, 1, bd.h, 4),
                x(Desc::Contig, n, 1, bd.w);
            std::vector<T> buf(std::size_t(bd.h), mark);
            const std::string what = bd.what;
            if (what == "mva")
                ASSERT_EQ(solve_mva(a, buf.data(), b, x, bd.w, bd.h, n), kelOk);
            else if (what == "mava")
                ASSERT_EQ(solve_mava(a, buf.data(), b, x, bd.w, bd.h, n), kelOk);
            else
                ASSERT_EQ(decomp(a, buf.data(), d, bd.w, bd.h, n), kelOk);
            const bool parallel = n > bd.serialCount && n >= 2;
            EXPECT_EQ(std::all_of(buf.begin(), buf.end(), [&](T e) { return kt::same_bits(e, mark); }), parallel);
        }
}

}  // namespace
