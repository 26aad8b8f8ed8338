// Determinants: known values, random matrices against a long double
// reference, argument checks, and serial against parallel runs.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>
#include <random>
#include <vector>

#include "support.h"

namespace {

using kt::Desc;

template <class T>
struct Api;
template <>
struct Api<float> {
    static constexpr auto m = kelmDet_m_32f, mP = kelmDet_m_32f_P;
    static constexpr auto ma = kelmDet_ma_32f, maP = kelmDet_ma_32f_P, maL = kelmDet_ma_32f_L;
};
template <>
struct Api<double> {
    static constexpr auto m = kelmDet_m_64f, mP = kelmDet_m_64f_P;
    static constexpr auto ma = kelmDet_ma_64f, maP = kelmDet_ma_64f_P, maL = kelmDet_ma_64f_L;
};

constexpr Desc kAll[] = {Desc::Contig, Desc::Strided, Desc::Pointer, Desc::List, Desc::ListS2};

// Determinants of every object through the array form of o's description.
template <class T>
std::vector<T> det_array(kt::Objects<T>& o, int n)
{
    using A = Api<T>;
    std::vector<T> buf(std::size_t(n) * (n + 1)), dst(std::size_t(o.count()), T(-77));
    kelStatus s = kelOk;
    switch (o.desc()) {
    case Desc::Contig:
    case Desc::Strided:
        s = A::ma(o.base(), o.objStride(), o.rowStride(), o.elemStride(), n, buf.data(), dst.data(), o.count());
        break;
    case Desc::Pointer:
        s = A::maP(o.table(), o.shift(), o.objStride(), n, buf.data(), dst.data(), o.count());
        break;
    default:
        s = A::maL(o.table(), o.shift(), o.rowStride(), o.elemStride(), n, buf.data(), dst.data(), o.count());
    }
    EXPECT_EQ(s, kelOk);
    return dst;
}

// The same through the single-object forms, one call per object.
template <class T>
std::vector<T> det_each(kt::Objects<T>& o, int n)
{
    using A = Api<T>;
    std::vector<T> buf(std::size_t(n) * (n + 1)), dst(std::size_t(o.count()), T(-77));
    for (int k = 0; k < o.count(); ++k) {
        kelStatus s;
        if (o.desc() == Desc::Pointer)
            s = A::mP(o.table(), o.shift() + k * o.objStride(), n, buf.data(), &dst[k]);
        else
            s = A::m(&o.at(k, 0, 0), o.rowStride(), o.elemStride(), n, buf.data(), &dst[k]);
        EXPECT_EQ(s, kelOk);
    }
    return dst;
}

// Reference: elimination with partial pivoting, all in long double.
template <class T>
long double reference(kt::Objects<T>& o, int k, int n)
{
    std::vector<long double> a(std::size_t(n) * n);
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) a[i * n + j] = o.at(k, i, j);
    long double det = 1;
    for (int c = 0; c < n; ++c) {
        int p = c;
        for (int i = c + 1; i < n; ++i)
            if (std::fabs(a[i * n + c]) > std::fabs(a[p * n + c])) p = i;
        if (p != c) {
            for (int j = 0; j < n; ++j) std::swap(a[c * n + j], a[p * n + j]);
            det = -det;
        }
        if (a[c * n + c] == 0) return 0;
        det *= a[c * n + c];
        for (int i = c + 1; i < n; ++i) {
            const long double f = a[i * n + c] / a[c * n + c];
            for (int j = c; j < n; ++j) a[i * n + j] -= f * a[c * n + j];
        }
    }
    return det;
}

// The rounding error allowed: a few units of the element type on the largest
// term the expansion can meet (the product of the rows' absolute sums).
template <class T>
long double allowance(kt::Objects<T>& o, int k, int n)
{
    long double bound = 1;
    for (int i = 0; i < n; ++i) {
        long double row = 0;
        for (int j = 0; j < n; ++j) row += std::fabs(static_cast<long double>(o.at(k, i, j)));
        bound *= row;
    }
    return 4 * n * std::numeric_limits<T>::epsilon() * bound;
}

template <class T>
void random_matrices()
{
    for (Desc d : kAll)
        for (int n = 1; n <= 8; ++n) {
            SCOPED_TRACE(testing::Message() << kt::type_name<T>() << " " << kt::name(d) << " n=" << n);
            kt::Objects<T> o(d, 5, n, n, unsigned(n * 31 + int(d)));
            const auto before = o.snapshot();
            const auto got = det_array(o, n);
            for (int k = 0; k < 5; ++k)
                EXPECT_NEAR(double(got[k]), double(reference(o, k, n)), double(allowance(o, k, n))) << "k=" << k;
            EXPECT_TRUE(o.unchanged_since(before));
            EXPECT_TRUE(o.canaries_intact());
            if (d == Desc::List || d == Desc::ListS2) continue;  // no single-object list form
            const auto one = det_each(o, n);
            for (int k = 0; k < 5; ++k) EXPECT_TRUE(kt::same_bits(one[k], got[k])) << "k=" << k;
        }
}

TEST(Det, RandomMatricesEveryDescription32f) { random_matrices<float>(); }
TEST(Det, RandomMatricesEveryDescription64f) { random_matrices<double>(); }

// The 32f closed forms written out plainly, one object at a time, as the
// library defines their last bits: everything in double, each sum starting
// from its first term.
float closed_form(kt::Objects<float>& o, int k, int n)
{
    auto a = [&](int i, int j) { return double(o.at(k, i, j)); };
    if (n == 3) {
        const double m1 = a(2, 0) * a(1, 2) - a(1, 0) * a(2, 2), m2 = a(2, 1) * a(1, 0) - a(2, 0) * a(1, 1);
        const double m0 = a(1, 1) * a(2, 2) - a(1, 2) * a(2, 1);
        return float(m1 * a(0, 1) + m2 * a(0, 2) + m0 * a(0, 0));
    }
    if (n == 4) {
        auto m = [&](int x, int y) { return a(2, x) * a(3, y) - a(2, y) * a(3, x); };
        auto c = [&](int skip) {  // 3x3 minor of rows 1..3 without column skip
            int col[3], q = 0;
            for (int j = 0; j < 4; ++j)
                if (j != skip) col[q++] = j;
            return a(1, col[0]) * m(col[1], col[2]) - a(1, col[1]) * m(col[0], col[2]) + a(1, col[2]) * m(col[0], col[1]);
        };
        return float(a(0, 0) * c(0) - a(0, 1) * c(1) + a(0, 2) * c(2) - a(0, 3) * c(3));
    }
    // Minor of rows r..n-1 on the columns in mask, expanded along row r.
    auto minor = [&](auto& self, int r, unsigned mask) -> double {
        double sum = 0;
        int t = 0;
        for (int c = 0; c < n; ++c) {
            if (!(mask & (1u << c))) continue;
            if (r == n - 1) return a(r, c);
            const double term = a(r, c) * self(self, r + 1, mask & ~(1u << c));
            sum = t == 0 ? term : t % 2 ? sum - term : sum + term;
            ++t;
        }
        return sum;
    };
    return float(minor(minor, 0, (1u << n) - 1));
}

// Four objects run side by side in the array kernels; odd counts leave a last
// partial block.  Every object, in every description and block position, and
// the single-object forms, give the same bits: for 32f those of the plain
// expansion above.
template <class T>
void closed_forms_bit_exact()
{
    for (Desc d : kAll)
        for (int n = 3; n <= 6; ++n)
            for (int count : {1, 3, 4, 6, 13}) {
                SCOPED_TRACE(testing::Message() << kt::type_name<T>() << " " << kt::name(d) << " n=" << n
                                                << " count=" << count);
                kt::Objects<T> o(d, count, n, n, unsigned(97 * n + count + 7 * int(d)));
                const auto got = det_array(o, n);
                if constexpr (std::is_same_v<T, float>) {
                    for (int k = 0; k < count; ++k)
                        EXPECT_TRUE(kt::same_bits(got[k], closed_form(o, k, n))) << "k=" << k << " " << got[k];
                }
                kt::Objects<T> contig(Desc::Contig, count, n, n, unsigned(97 * n + count + 7 * int(d)));
                const auto ref = det_array(contig, n);
                for (int k = 0; k < count; ++k) EXPECT_TRUE(kt::same_bits(got[k], ref[k])) << "k=" << k;
                EXPECT_TRUE(o.canaries_intact());
                if (d == Desc::List || d == Desc::ListS2) continue;
                const auto one = det_each(o, n);
                for (int k = 0; k < count; ++k) EXPECT_TRUE(kt::same_bits(one[k], got[k])) << "k=" << k;
            }
}

TEST(Det, ClosedFormsBitExact32f) { closed_forms_bit_exact<float>(); }
TEST(Det, ClosedFormsSameBitsEveryPath64f) { closed_forms_bit_exact<double>(); }

// Accuracy of the closed forms: the result is the expansion's value rounded
// once, within one unit in the last place of a quad-precision Laplace
// expansion of the same elements (its products of doubles are exact), on
// random matrices, on matrices whose first row nearly combines two others
// (the minors and the sum cancel), and on rows scaled by 2^500 and 2^-500.
using Quad = __float128;

template <class T>
Quad quad_det(kt::Objects<T>& o, int k, int n)
{
    auto minor = [&](auto& self, int r, unsigned mask) -> Quad {
        Quad sum = 0;
        int t = 0;
        for (int c = 0; c < n; ++c) {
            if (!(mask & (1u << c))) continue;
            if (r == n - 1) return Quad(o.at(k, r, c));
            const Quad term = Quad(o.at(k, r, c)) * self(self, r + 1, mask & ~(1u << c));
            sum = t % 2 ? sum - term : sum + term;
            ++t;
        }
        return sum;
    };
    return minor(minor, 0, (1u << n) - 1);
}

// Units in the last place between two finite values of one sign (or zeros).
template <class T>
long long ulps_apart(T a, T b)
{
    using I = std::conditional_t<sizeof(T) == 4, std::int32_t, std::int64_t>;
    I x, y;
    std::memcpy(&x, &a, sizeof a);
    std::memcpy(&y, &b, sizeof b);
    if ((x < 0) != (y < 0)) return a == b ? 0 : std::numeric_limits<long long>::max();
    return x > y ? (long long)x - y : (long long)y - x;
}

enum class Kind { Random, Cancelling, Scaled };

template <class T>
void shape_matrices(kt::Objects<T>& o, int n, Kind kind, unsigned seed)
{
    std::mt19937 rng(seed);
    std::uniform_real_distribution<double> u(-1.0, 1.0);
    for (int k = 0; k < o.count(); ++k) {
        for (int i = 0; i < n; ++i)
            for (int j = 0; j < n; ++j) o.at(k, i, j) = T(u(rng));
        if (kind == Kind::Cancelling) {  // row 0 = x row 1 + y row 2 + a small change
            const double x = u(rng), y = u(rng), tiny = sizeof(T) == 4 ? 1e-3 : 1e-9;
            for (int j = 0; j < n; ++j)
                o.at(k, 0, j) = T(x * double(o.at(k, 1, j)) + y * double(o.at(k, 2, j)) + tiny * u(rng));
        }
        if (kind == Kind::Scaled && sizeof(T) == 8) {
            const int up = k % n, down = (k + 1 + k / n % (n - 1)) % n;
            for (int j = 0; j < n; ++j) {
                o.at(k, up, j) = T(std::ldexp(double(o.at(k, up, j)), 500));
                o.at(k, down, j) = T(std::ldexp(double(o.at(k, down, j)), -500));
            }
            if (k % 3 == 0)  // and a second row up: minors beyond 2^996
                for (int j = 0; j < n; ++j) o.at(k, down, j) = T(std::ldexp(double(o.at(k, down, j)), 1000));
        }
    }
}

template <class T>
void within_one_ulp()
{
    for (Kind kind : {Kind::Random, Kind::Cancelling, Kind::Scaled})
        for (Desc d : kAll)
            for (int n = 3; n <= 6; ++n) {
                SCOPED_TRACE(testing::Message() << kt::type_name<T>() << " " << kt::name(d) << " n=" << n
                                                << " kind=" << int(kind));
                const int count = d == Desc::Contig ? 2000 : 101;
                kt::Objects<T> o(d, count, n, n);
                shape_matrices(o, n, kind, unsigned(1000 * n + int(kind)));
                const auto got = det_array(o, n);
                long long worst = 0;
                for (int k = 0; k < count; ++k) worst = std::max(worst, ulps_apart(got[k], T(quad_det(o, k, n))));
                EXPECT_LE(worst, 1);
            }
}

TEST(Det, ClosedFormsWithinOneUlp32f) { within_one_ulp<float>(); }
TEST(Det, ClosedFormsWithinOneUlp64f) { within_one_ulp<double>(); }

// Fills object 0 with rows given by f(i, j), returns its determinant.
template <class T, class F>
T det_of(Desc d, int n, F f)
{
    kt::Objects<T> o(d, 1, n, n);
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) o.at(0, i, j) = T(f(i, j));
    return det_array(o, n)[0];
}

template <class T>
void known_values()
{
    for (Desc d : kAll) {
        SCOPED_TRACE(testing::Message() << kt::type_name<T>() << " " << kt::name(d));
        EXPECT_TRUE(kt::same_bits(det_of<T>(d, 3, [](int, int) { return 0; }), T(0)));
        EXPECT_TRUE(kt::same_bits(det_of<T>(d, 7, [](int, int) { return 0; }), T(0)));
        EXPECT_EQ(det_of<T>(d, 2, [](int i, int j) { return i != j; }), T(-1));
        for (int n = 1; n <= 8; ++n) {
            // The cyclic shift has sign (-1)^(n-1); swapping rows 0 and 1 of the identity gives -1.
            EXPECT_EQ(det_of<T>(d, n, [n](int i, int j) { return j == (i + 1) % n; }), T(n % 2 ? 1 : -1)) << n;
            if (n >= 2) {
                EXPECT_EQ(det_of<T>(d, n, [](int i, int j) { return i < 2 && j < 2 ? i != j : i == j; }), T(-1)) << n;
            }
            // Upper triangular: the product of the diagonal.
            T prod = 1;
            for (int i = 0; i < n; ++i) prod *= T(i + 2) / 4;
            const T tri = det_of<T>(d, n, [](int i, int j) { return j < i ? 0.0 : j == i ? (i + 2) / 4.0 : 0.5 * (j - i); });
            EXPECT_NEAR(tri, prod, 8 * n * std::numeric_limits<T>::epsilon() * std::fabs(prod)) << n;
        }
        // A pivot of exactly the tolerance passes the elimination test but
        // fails the last-pivot test: order 2, tolerance 16 times the smallest normal.
        const T tol2 = 16 * std::numeric_limits<T>::min();
        EXPECT_EQ(det_of<T>(d, 2, [&](int i, int j) { return i == j ? (i == 0 ? tol2 : T(1)) : T(0); }), tol2);
        EXPECT_EQ(det_of<T>(d, 2, [&](int i, int j) { return i == j ? (i == 0 ? T(1) : tol2) : T(0); }), T(0));
        EXPECT_EQ(det_of<T>(d, 1, [](int, int) { return 2 * std::numeric_limits<T>::min(); }), T(0));
        EXPECT_EQ(det_of<T>(d, 1, [](int, int) { return -3; }), T(-3));
    }
}

TEST(Det, KnownValues32f) { known_values<float>(); }
TEST(Det, KnownValues64f) { known_values<double>(); }

TEST(Det, TinyDiagonalBelowCubicToleranceGivesZero)
{
    // Order 7: tolerance 686 * 2^-126, about 8.06e-36, above the pivots 1e-36.
    EXPECT_EQ(det_of<float>(Desc::Contig, 7, [](int i, int j) { return i == j ? 1e-36f : 0.0f; }), 0.0f);
}

TEST(Det, ParallelRunLeavesCallerBufferAlone)
{
    kt::Threads two(2);
    kt::Objects<double> o(Desc::Contig, 2100, 7, 7, 3);
    std::vector<double> buf(56, 123.0), dst(2100);
    ASSERT_EQ(kelmDet_ma_64f(o.base(), o.objStride(), o.rowStride(), o.elemStride(), 7, buf.data(), dst.data(), 2100),
              kelOk);
    for (double b : buf) EXPECT_EQ(b, 123.0);
}

}  // namespace
