// General eigenvalues and eigenvectors: eigenvalues against an independent
// long double reference (as multisets), eigenvectors against their
// definitions on the source, the pair conventions, statuses, argument
// checks, and the same bits on every path (descriptions, single and array
// forms, serial and parallel).
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <limits>
#include <vector>

#include "support.h"

namespace {

using kt::Desc;
using LC = std::complex<long double>;

constexpr Desc kAll[] = {Desc::Contig, Desc::Strided, Desc::Pointer, Desc::List, Desc::ListS2};

template <class T>
struct Api;
template <>
struct Api<float> {
    static constexpr auto bufValues = kelmEigenValuesGetBufSize_32f, bufVectors = kelmEigenValuesVectorsGetBufSize_32f;
    static constexpr auto m = kelmEigenValues_m_32f, mP = kelmEigenValues_m_32f_P;
    static constexpr auto ma = kelmEigenValues_ma_32f, maP = kelmEigenValues_ma_32f_P, maL = kelmEigenValues_ma_32f_L;
};
template <>
struct Api<double> {
    static constexpr auto bufValues = kelmEigenValuesGetBufSize_64f, bufVectors = kelmEigenValuesVectorsGetBufSize_64f;
    static constexpr auto m = kelmEigenValues_m_64f, mP = kelmEigenValues_m_64f_P;
    static constexpr auto ma = kelmEigenValues_ma_64f, maP = kelmEigenValues_ma_64f_P, maL = kelmEigenValues_ma_64f_L;
};

template <class T>
struct Values {
    std::vector<T> re, im;
    std::vector<kelStatus> status;  // one per call
};

// Eigenvalues of every object through the array form of o's description.
template <class T>
kelStatus values_array(kt::Objects<T>& o, int n, Values<T>& v, std::vector<T>* buffer = nullptr)
{
    using A = Api<T>;
    std::vector<T> own(std::size_t(n) * (n + 5), T(0));
    T* buf = buffer ? buffer->data() : own.data();
    v.re.assign(std::size_t(n) * o.count(), T(-77));
    v.im.assign(std::size_t(n) * o.count(), T(-77));
    switch (o.desc()) {
    case Desc::Contig:
    case Desc::Strided:
        return A::ma(o.base(), o.objStride(), o.rowStride(), o.elemStride(), v.re.data(), v.im.data(), n, o.count(), buf);
    case Desc::Pointer:
        return A::maP(o.table(), o.shift(), o.objStride(), v.re.data(), v.im.data(), n, o.count(), buf);
    default:
        return A::maL(o.table(), o.shift(), o.rowStride(), o.elemStride(), v.re.data(), v.im.data(), n, o.count(), buf);
    }
}

// The same through the single-matrix forms, one call per object.
template <class T>
void values_each(kt::Objects<T>& o, int n, Values<T>& v)
{
    using A = Api<T>;
    std::vector<T> buf(std::size_t(n) * (n + 5));
    v.re.assign(std::size_t(n) * o.count(), T(-77));
    v.im.assign(std::size_t(n) * o.count(), T(-77));
    v.status.clear();
    for (int k = 0; k < o.count(); ++k) {
        T* re = v.re.data() + k * n;
        T* im = v.im.data() + k * n;
        if (o.desc() == Desc::Pointer)
            v.status.push_back(A::mP(o.table(), o.shift() + k * o.objStride(), re, im, n, buf.data()));
        else
            v.status.push_back(A::m(&o.at(k, 0, 0), o.rowStride(), o.elemStride(), re, im, n, buf.data()));
    }
}

// --- an independent reference: complex single-shift QR in long double ------------

template <class T>
std::vector<LC> reference_eigenvalues(kt::Objects<T>& o, int k, int n)
{
    std::vector<LC> h(std::size_t(n) * n);
    auto H = [&](int i, int j) -> LC& { return h[std::size_t(i) * n + j]; };
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) H(i, j) = static_cast<long double>(o.at(k, i, j));
    // Hessenberg form by Givens rotations (similarity).
    for (int c = 0; c + 2 < n; ++c)
        for (int r = n - 1; r > c + 1; --r) {
            const LC a = H(r - 1, c), b = H(r, c);
            const long double nr = std::sqrt(std::norm(a) + std::norm(b));
            if (nr == 0) continue;
            const LC cs = a / nr, sn = b / nr;
            for (int j = 0; j < n; ++j) {
                const LC x = H(r - 1, j), y = H(r, j);
                H(r - 1, j) = std::conj(cs) * x + std::conj(sn) * y;
                H(r, j) = -sn * x + cs * y;
            }
            for (int i = 0; i < n; ++i) {
                const LC x = H(i, r - 1), y = H(i, r);
                H(i, r - 1) = x * cs + y * sn;
                H(i, r) = -x * std::conj(sn) + y * std::conj(cs);
            }
        }
    std::vector<LC> eig(static_cast<std::size_t>(n));
    const long double eps = std::numeric_limits<long double>::epsilon();
    for (int m = n - 1; m > 0; --m) {
        for (int it = 0; it < 500; ++it) {
            if (std::abs(H(m, m - 1)) <= eps * (std::abs(H(m, m)) + std::abs(H(m - 1, m - 1)))) break;
            // Wilkinson shift (an odd one now and then against cycles).
            const LC a = H(m - 1, m - 1), b = H(m - 1, m), c = H(m, m - 1), d = H(m, m);
            const LC half = (a - d) / 2.0L, root = std::sqrt(half * half + b * c);
            LC mu = (std::abs(half + root) > std::abs(half - root)) ? d - b * c / (half + root) : d - b * c / (half - root);
            if (it % 11 == 10) mu += std::abs(H(m, m - 1));
            std::vector<LC> cs(static_cast<std::size_t>(m)), sn(static_cast<std::size_t>(m));
            for (int i = 0; i <= m; ++i) H(i, i) -= mu;
            for (int j = 0; j < m; ++j) {
                const LC x = H(j, j), y = H(j + 1, j);
                const long double nr = std::sqrt(std::norm(x) + std::norm(y));
                cs[j] = nr == 0 ? LC(1) : x / nr;
                sn[j] = nr == 0 ? LC(0) : y / nr;
                for (int c2 = j; c2 <= m; ++c2) {
                    const LC p = H(j, c2), q = H(j + 1, c2);
                    H(j, c2) = std::conj(cs[j]) * p + std::conj(sn[j]) * q;
                    H(j + 1, c2) = -sn[j] * p + cs[j] * q;
                }
            }
            for (int j = 0; j < m; ++j)
                for (int i = 0; i <= std::min(j + 1, m); ++i) {
                    const LC p = H(i, j), q = H(i, j + 1);
                    H(i, j) = p * cs[j] + q * sn[j];
                    H(i, j + 1) = -p * std::conj(sn[j]) + q * std::conj(cs[j]);
                }
            for (int i = 0; i <= m; ++i) H(i, i) += mu;
        }
        eig[std::size_t(m)] = H(m, m);
    }
    eig[0] = H(0, 0);
    return eig;
}

template <class T>
long double frob(kt::Objects<T>& o, int k, int n)
{
    long double s = 0;
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) s += static_cast<long double>(o.at(k, i, j)) * o.at(k, i, j);
    return std::sqrt(s);
}

// The pair conventions: real values have imaginary part exactly 0; a pair
// takes two adjacent positions, equal real parts, positive imaginary first.
template <class T>
void expect_pair_layout(const T* re, const T* im, int n)
{
    for (int p = 0; p < n; ++p) {
        if (im[p] == T(0)) continue;
        ASSERT_GT(im[p], T(0)) << "position " << p;
        ASSERT_LT(p + 1, n);
        EXPECT_TRUE(kt::same_bits(re[p + 1], re[p]));
        EXPECT_TRUE(kt::same_bits(im[p + 1], T(-im[p])));
        ++p;
    }
}

// Computed values against the reference as multisets: each reference value
// claims the nearest unclaimed computed one.
template <class T>
void expect_same_multiset(const T* re, const T* im, const std::vector<LC>& ref, long double tol)
{
    const int n = int(ref.size());
    std::vector<bool> used(static_cast<std::size_t>(n), false);
    for (const LC& r : ref) {
        int best = -1;
        long double dist = 0;
        for (int p = 0; p < n; ++p) {
            if (used[std::size_t(p)]) continue;
            const long double d = std::abs(LC(re[p], im[p]) - r);
            if (best < 0 || d < dist) best = p, dist = d;
        }
        used[std::size_t(best)] = true;
        EXPECT_LE(dist, tol) << "reference " << r.real() << " + " << r.imag() << "i";
    }
}

template <class T>
void random_values()
{
    constexpr int count = 5;
    for (Desc d : kAll)
        for (int n = 1; n <= 9; ++n) {
            SCOPED_TRACE(testing::Message() << kt::type_name<T>() << " " << kt::name(d) << " n=" << n);
            kt::Objects<T> o(d, count, n, n, unsigned(n * 131 + int(d)));
            const auto before = o.snapshot();
            Values<T> got;
            ASSERT_EQ(values_array(o, n, got), kelOk);
            EXPECT_TRUE(o.unchanged_since(before));
            EXPECT_TRUE(o.canaries_intact());
            for (int k = 0; k < count; ++k) {
                const T* re = got.re.data() + k * n;
                const T* im = got.im.data() + k * n;
                expect_pair_layout(re, im, n);
                const long double tol = 64 * n * std::numeric_limits<T>::epsilon() * frob(o, k, n);
                expect_same_multiset(re, im, reference_eigenvalues(o, k, n), tol);
            }
            if (d == Desc::List || d == Desc::ListS2) continue;  // no single-matrix list form
            Values<T> one;
            values_each(o, n, one);
            for (kelStatus s : one.status) EXPECT_EQ(s, kelOk);
            for (std::size_t e = 0; e < got.re.size(); ++e) {
                EXPECT_TRUE(kt::same_bits(one.re[e], got.re[e])) << e;
                EXPECT_TRUE(kt::same_bits(one.im[e], got.im[e])) << e;
            }
        }
}

TEST(EigenValues, RandomMatricesEveryDescription32f) { random_values<float>(); }
TEST(EigenValues, RandomMatricesEveryDescription64f) { random_values<double>(); }

// Every description gives the contiguous form's bits.
template <class T>
void descriptions_agree()
{
    for (int n : {2, 3, 4, 5, 6, 7, 8}) {
        SCOPED_TRACE(testing::Message() << kt::type_name<T>() << " n=" << n);
        Values<T> first;
        for (Desc d : kAll) {
            kt::Objects<T> o(d, 7, n, n, unsigned(977 + n));
            Values<T> got;
            ASSERT_EQ(values_array(o, n, got), kelOk) << kt::name(d);
            if (d == Desc::Contig) {
                first = got;
                continue;
            }
            for (std::size_t e = 0; e < got.re.size(); ++e) {
                ASSERT_TRUE(kt::same_bits(first.re[e], got.re[e])) << kt::name(d) << " " << e;
                ASSERT_TRUE(kt::same_bits(first.im[e], got.im[e])) << kt::name(d) << " " << e;
            }
        }
    }
}

TEST(EigenValues, DescriptionsGiveTheSameBits32f) { descriptions_agree<float>(); }
TEST(EigenValues, DescriptionsGiveTheSameBits64f) { descriptions_agree<double>(); }

// One matrix given by rows.
template <class T>
Values<T> values_of(int n, const std::vector<double>& rows, kelStatus expect = kelOk)
{
    kt::Objects<T> o(Desc::Strided, 1, n, n);
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) o.at(0, i, j) = T(rows[std::size_t(i * n + j)]);
    Values<T> v;
    EXPECT_EQ(values_array(o, n, v), expect);
    return v;
}

template <class T>
void known_values()
{
    SCOPED_TRACE(kt::type_name<T>());
    const T eps = std::numeric_limits<T>::epsilon();
    {  // the quarter turn
        const auto v = values_of<T>(2, {0, -1, 1, 0});
        EXPECT_EQ(v.re, (std::vector<T>{0, 0}));
        EXPECT_EQ(v.im, (std::vector<T>{1, -1}));
    }
    {  // equal diagonal, off-diagonal elements of one sign: still a "pair"
        const auto v = values_of<T>(2, {1, 2, 3, 1});
        const T w = T(std::sqrt(2.0) * std::sqrt(3.0));
        EXPECT_EQ(v.re, (std::vector<T>{1, 1}));
        EXPECT_NEAR(v.im[0], w, 2 * eps * w);
        EXPECT_TRUE(kt::same_bits(v.im[1], T(-v.im[0])));
    }
    // Unequal diagonal, complex eigenvalues: the standardising rotation must
    // keep the block's own eigenvalues.  [[1, -5], [2, 3]]: 2 +- 3i;
    // [[3, -2], [4, -1]]: 1 +- 2i; [[0.5, -7], [0.25, -1]]: -0.25 +- i*sqrt(1.1875).
    struct Case {
        std::vector<double> a;
        double re, im;
    };
    for (const Case& c : {Case{{1, -5, 2, 3}, 2, 3}, Case{{3, -2, 4, -1}, 1, 2},
                          Case{{0.5, -7, 0.25, -1}, -0.25, std::sqrt(1.1875)}}) {
        const auto v = values_of<T>(2, c.a);
        EXPECT_NEAR(v.re[0], c.re, 8 * eps * 8);
        EXPECT_NEAR(v.re[1], c.re, 8 * eps * 8);
        EXPECT_NEAR(v.im[0], c.im, 8 * eps * 8);
        EXPECT_TRUE(kt::same_bits(v.im[1], T(-v.im[0])));
    }
    {  // real 2x2 eigenvalues: [[2, 1], [4, -1]] has 3 and -2
        const auto v = values_of<T>(2, {2, 1, 4, -1});
        std::vector<T> re = v.re;
        std::sort(re.begin(), re.end());
        EXPECT_NEAR(re[0], -2, 16 * eps);
        EXPECT_NEAR(re[1], 3, 16 * eps);
        EXPECT_EQ(v.im, (std::vector<T>{0, 0}));
    }
    for (int n = 1; n <= 8; ++n) {  // lower triangular: the diagonal, in order, without a sweep
        std::vector<double> a(std::size_t(n * n), 0.0);
        for (int i = 0; i < n; ++i)
            for (int j = 0; j <= i; ++j) a[std::size_t(i * n + j)] = i == j ? 1.5 * i - 2 : 0.25 * (i + 2 * j + 1);
        const auto v = values_of<T>(n, a);
        for (int i = 0; i < n; ++i) {
            EXPECT_EQ(v.re[std::size_t(i)], T(1.5 * i - 2)) << n;
            EXPECT_TRUE(kt::same_bits(v.im[std::size_t(i)], T(0))) << n;
        }
    }
    {  // the identity: a repeated eigenvalue
        std::vector<double> a(49, 0.0);
        for (int i = 0; i < 7; ++i) a[std::size_t(i * 8)] = 1;
        const auto v = values_of<T>(7, a);
        EXPECT_EQ(v.re, std::vector<T>(7, T(1)));
        EXPECT_EQ(v.im, std::vector<T>(7, T(0)));
    }
    {  // a 4x4 Jordan block (defective): error of order eps^(1/4)
        const auto v = values_of<T>(4, {3, 1, 0, 0, 0, 3, 1, 0, 0, 0, 3, 1, 0, 0, 0, 3});
        for (int p = 0; p < 4; ++p)
            EXPECT_LE(std::abs(std::complex<double>(v.re[std::size_t(p)], v.im[std::size_t(p)]) - 3.0),
                      8 * std::pow(double(eps), 0.25));
    }
    {  // the cyclic shift of order 5: the fifth roots of unity
        std::vector<double> a(25, 0.0);
        for (int i = 0; i < 5; ++i) a[std::size_t(i * 5 + (i + 1) % 5)] = 1;
        const auto v = values_of<T>(5, a);
        expect_pair_layout(v.re.data(), v.im.data(), 5);
        std::vector<LC> ref;
        for (int k = 0; k < 5; ++k) ref.push_back(std::polar(1.0L, 2 * 3.14159265358979323846L * k / 5));
        expect_same_multiset(v.re.data(), v.im.data(), ref, 64 * eps);
    }
}

TEST(EigenValues, KnownValues32f) { known_values<float>(); }
TEST(EigenValues, KnownValues64f) { known_values<double>(); }

// The source of a working matrix in Hessenberg form (no reflector mixes the
// rows) with NaN subdiagonal elements in its leading 3x3 block and a
// trailing 1x1 block 5 cut off by a zero.
template <class T>
T nan_block(int i, int j)
{
    if (j == 3) return i == 3 ? T(5) : T(0);
    if (i < 3 && j == i + 1) return std::numeric_limits<T>::quiet_NaN();
    return i < 3 && j > i + 1 ? T(0) : T(1);
}

// A NaN never passes the deflation test, so the budget runs out: nothing but
// the trailing eigenvalues already deflated is written, and an array stops
// at that object.
template <class T>
void not_converged()
{
    SCOPED_TRACE(kt::type_name<T>());
    kt::Objects<T> o(Desc::Contig, 3, 4, 4, 5);
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j) o.at(1, i, j) = nan_block<T>(i, j);
    Values<T> v;
    ASSERT_EQ(values_array(o, 4, v), kelErrNotConverged);
    for (int p = 0; p < 4; ++p) EXPECT_NE(v.re[std::size_t(p)], T(-77));  // object 0 complete
    for (int p = 4; p < 7; ++p) {
        EXPECT_EQ(v.re[std::size_t(p)], T(-77));
        EXPECT_EQ(v.im[std::size_t(p)], T(-77));
    }
    EXPECT_EQ(v.re[7], T(5));
    EXPECT_EQ(v.im[7], T(0));
    for (int p = 8; p < 12; ++p) EXPECT_EQ(v.re[std::size_t(p)], T(-77));  // object 2 untouched
}

TEST(EigenValues, BudgetExhausted32f) { not_converged<float>(); }
TEST(EigenValues, BudgetExhausted64f) { not_converged<double>(); }

TEST(EigenValues, BufferSizeQueries)
{
    int bytes = -1;
    EXPECT_EQ(kelmEigenValuesGetBufSize_32f(0, nullptr), kelErrNullPointer);
    EXPECT_EQ(kelmEigenValuesGetBufSize_32f(0, &bytes), kelErrSize);
    EXPECT_EQ(kelmEigenValuesVectorsGetBufSize_64f(-3, &bytes), kelErrSize);
    EXPECT_EQ(bytes, -1);
    struct Case {
        kelStatus (*f)(int, int*);
        int n, expect;
    };
    for (const Case& c : {Case{kelmEigenValuesGetBufSize_32f, 4, 4 * 9 * 4}, Case{kelmEigenValuesGetBufSize_64f, 6, 6 * 11 * 8},
                          Case{kelmEigenValuesVectorsGetBufSize_32f, 5, 5 * 20 * 4},
                          Case{kelmEigenValuesVectorsGetBufSize_64f, 1, 8 * 8},
                          // unsigned 32-bit product, no overflow test: 40000*40005*8 mod 2^32
                          Case{kelmEigenValuesGetBufSize_64f, 40000, int(40000u * 40005u * 8u)}}) {
        ASSERT_EQ(c.f(c.n, &bytes), kelOk);
        EXPECT_EQ(bytes, c.expect) << c.n;
    }
}

TEST(EigenValues, ParallelThreshold)
{
    kt::Threads two(2);
    for (int count : {125, 126}) {  // n = 1: n(n+1)*count = 250, 252
        kt::Objects<double> o(Desc::Contig, count, 1, 1, 3);
        std::vector<double> buf(6, 123.0);
        Values<double> v;
        ASSERT_EQ(values_array(o, 1, v, &buf), kelOk);
        EXPECT_EQ(buf[0] != 123.0, count == 125) << count;
        for (int k = 0; k < count; ++k) EXPECT_EQ(v.re[std::size_t(k)], o.at(k, 0, 0));
    }
}

// --- eigenvectors ------------------------------------------------------------------

enum class Op { Right, Left, Both };

inline const char* name(Op op) { return op == Op::Right ? "right" : op == Op::Left ? "left" : "both"; }

template <class T>
struct VApi;
#define KT_VAPI(T, S)                                                                                                  \
    template <>                                                                                                        \
    struct VApi<T> {                                                                                                   \
        static constexpr auto rm = kelmEigenValuesVectorsRight_m_##S, rmP = kelmEigenValuesVectorsRight_m_##S##_P;     \
        static constexpr auto rma = kelmEigenValuesVectorsRight_ma_##S, rmaP = kelmEigenValuesVectorsRight_ma_##S##_P; \
        static constexpr auto rmaL = kelmEigenValuesVectorsRight_ma_##S##_L;                                           \
        static constexpr auto lm = kelmEigenValuesVectorsLeft_m_##S, lmP = kelmEigenValuesVectorsLeft_m_##S##_P;       \
        static constexpr auto lma = kelmEigenValuesVectorsLeft_ma_##S, lmaP = kelmEigenValuesVectorsLeft_ma_##S##_P;   \
        static constexpr auto lmaL = kelmEigenValuesVectorsLeft_ma_##S##_L;                                            \
        static constexpr auto bm = kelmEigenValuesVectors_m_##S, bmP = kelmEigenValuesVectors_m_##S##_P;               \
        static constexpr auto bma = kelmEigenValuesVectors_ma_##S, bmaP = kelmEigenValuesVectors_ma_##S##_P;           \
        static constexpr auto bmaL = kelmEigenValuesVectors_ma_##S##_L;                                                \
    };
KT_VAPI(float, 32f)
KT_VAPI(double, 64f)

// Source and vector matrices of one call in one description; Both fills
// x (right vectors, first matrix) and y (left vectors, second matrix).
template <class T>
struct VecCall {
    kt::Objects<T>& a;
    kt::Objects<T>& x;
    kt::Objects<T>& y;
    Values<T> v;
};

template <class T>
kelStatus vectors_array(Op op, kt::Objects<T>& a, kt::Objects<T>& x, kt::Objects<T>& y, int n, Values<T>& v,
                        std::vector<T>* buffer = nullptr)
{
    using A = VApi<T>;
    std::vector<T> own(std::size_t(n) * (3 * n + 5), T(0));
    T* buf = buffer ? buffer->data() : own.data();
    v.re.assign(std::size_t(n) * a.count(), T(-77));
    v.im.assign(std::size_t(n) * a.count(), T(-77));
    T* re = v.re.data();
    T* im = v.im.data();
    const int c = a.count();
    switch (a.desc()) {
    case Desc::Contig:
    case Desc::Strided:
        if (op == Op::Both)
            return A::bma(a.base(), a.objStride(), a.rowStride(), a.elemStride(), x.base(), x.objStride(), x.rowStride(),
                          x.elemStride(), y.base(), y.objStride(), y.rowStride(), y.elemStride(), re, im, n, c, buf);
        return (op == Op::Right ? A::rma : A::lma)(a.base(), a.objStride(), a.rowStride(), a.elemStride(), x.base(),
                                                   x.objStride(), x.rowStride(), x.elemStride(), re, im, n, c, buf);
    case Desc::Pointer:
        if (op == Op::Both)
            return A::bmaP(a.table(), a.shift(), a.objStride(), x.table(), x.shift(), x.objStride(), y.table(), y.shift(),
                           y.objStride(), re, im, n, c, buf);
        return (op == Op::Right ? A::rmaP : A::lmaP)(a.table(), a.shift(), a.objStride(), x.table(), x.shift(),
                                                     x.objStride(), re, im, n, c, buf);
    default:
        if (op == Op::Both)
            return A::bmaL(a.table(), a.shift(), a.rowStride(), a.elemStride(), x.table(), x.shift(), x.rowStride(),
                           x.elemStride(), y.table(), y.shift(), y.rowStride(), y.elemStride(), re, im, n, c, buf);
        return (op == Op::Right ? A::rmaL : A::lmaL)(a.table(), a.shift(), a.rowStride(), a.elemStride(), x.table(),
                                                     x.shift(), x.rowStride(), x.elemStride(), re, im, n, c, buf);
    }
}

// The single-matrix forms, one call per object (strided and pointer descriptions).
template <class T>
void vectors_each(Op op, kt::Objects<T>& a, kt::Objects<T>& x, kt::Objects<T>& y, int n, Values<T>& v)
{
    using A = VApi<T>;
    std::vector<T> buf(std::size_t(n) * (3 * n + 5));
    v.re.assign(std::size_t(n) * a.count(), T(-77));
    v.im.assign(std::size_t(n) * a.count(), T(-77));
    v.status.clear();
    for (int k = 0; k < a.count(); ++k) {
        T* re = v.re.data() + k * n;
        T* im = v.im.data() + k * n;
        if (a.desc() == Desc::Pointer) {
            const int sa = a.shift() + k * a.objStride(), sx = x.shift() + k * x.objStride(), sy = y.shift() + k * y.objStride();
            v.status.push_back(op == Op::Both ? A::bmP(a.table(), sa, x.table(), sx, y.table(), sy, re, im, n, buf.data())
                                              : (op == Op::Right ? A::rmP : A::lmP)(a.table(), sa, x.table(), sx, re, im,
                                                                                    n, buf.data()));
        } else {
            v.status.push_back(op == Op::Both
                                   ? A::bm(&a.at(k, 0, 0), a.rowStride(), a.elemStride(), &x.at(k, 0, 0), x.rowStride(),
                                           x.elemStride(), &y.at(k, 0, 0), y.rowStride(), y.elemStride(), re, im, n,
                                           buf.data())
                                   : (op == Op::Right ? A::rm : A::lm)(&a.at(k, 0, 0), a.rowStride(), a.elemStride(),
                                                                       &x.at(k, 0, 0), x.rowStride(), x.elemStride(), re,
                                                                       im, n, buf.data()));
        }
    }
}

// max over eigenvalue positions of the residual |A z - lambda z| (right) or
// |z^T A - lambda z^T| (left), z = column p (+ i * column p+1 for a pair),
// and of | |z|^2 - 1 |.
template <class T>
void expect_eigenvectors(kt::Objects<T>& a, kt::Objects<T>& z, int k, int n, const T* re, const T* im, bool right)
{
    const long double tol = 64 * n * std::numeric_limits<T>::epsilon() * std::max(frob(a, k, n), 1.0L);
    for (int p = 0; p < n; ++p) {
        const bool pair = im[p] != T(0);
        const LC lam(re[p], im[p]);
        std::vector<LC> v(static_cast<std::size_t>(n));
        long double norm2 = 0;
        for (int i = 0; i < n; ++i) {
            v[std::size_t(i)] = LC(z.at(k, i, p), pair ? static_cast<long double>(z.at(k, i, p + 1)) : 0.0L);
            norm2 += std::norm(v[std::size_t(i)]);
        }
        EXPECT_NEAR(double(norm2), 1.0, 8 * n * std::numeric_limits<T>::epsilon()) << "position " << p;
        long double worst = 0;
        for (int i = 0; i < n; ++i) {
            LC s = 0;
            for (int j = 0; j < n; ++j)
                s += right ? static_cast<long double>(a.at(k, i, j)) * v[std::size_t(j)]
                           : v[std::size_t(j)] * static_cast<long double>(a.at(k, j, i));
            worst = std::max(worst, std::abs(s - lam * v[std::size_t(i)]));
        }
        EXPECT_LE(worst, tol) << (right ? "right" : "left") << " position " << p << " object " << k;
        if (pair) ++p;
    }
}

template <class T>
void random_vectors()
{
    constexpr int count = 4;
    for (Desc d : kAll)
        for (int n = 1; n <= 9; ++n) {
            SCOPED_TRACE(testing::Message() << kt::type_name<T>() << " " << kt::name(d) << " n=" << n);
            const unsigned seed = unsigned(n * 71 + int(d));
            kt::Objects<T> a(d, count, n, n, seed);
            Values<T> values;
            ASSERT_EQ(values_array(a, n, values), kelOk);
            const auto before = a.snapshot();
            kt::Objects<T> right(d, count, n, n, 1), left(d, count, n, n, 2), both1(d, count, n, n, 3),
                both2(d, count, n, n, 4), unused(d, count, n, n, 5);
            Values<T> vr, vl, vb;
            ASSERT_EQ(vectors_array(Op::Right, a, right, unused, n, vr), kelOk);
            ASSERT_EQ(vectors_array(Op::Left, a, left, unused, n, vl), kelOk);
            ASSERT_EQ(vectors_array(Op::Both, a, both1, both2, n, vb), kelOk);
            EXPECT_TRUE(a.unchanged_since(before));
            for (auto* o : {&right, &left, &both1, &both2}) EXPECT_TRUE(o->canaries_intact());
            // The eigenvalues are kelmEigenValues' own bits in every family.
            for (const Values<T>* v : {&vr, &vl, &vb})
                for (std::size_t e = 0; e < values.re.size(); ++e) {
                    ASSERT_TRUE(kt::same_bits(v->re[e], values.re[e])) << e;
                    ASSERT_TRUE(kt::same_bits(v->im[e], values.im[e])) << e;
                }
            for (int k = 0; k < count; ++k) {
                const T* re = values.re.data() + k * n;
                const T* im = values.im.data() + k * n;
                expect_eigenvectors(a, right, k, n, re, im, true);
                expect_eigenvectors(a, left, k, n, re, im, false);
                for (int i = 0; i < n; ++i)
                    for (int j = 0; j < n; ++j) {
                        ASSERT_TRUE(kt::same_bits(both1.at(k, i, j), right.at(k, i, j)));
                        ASSERT_TRUE(kt::same_bits(both2.at(k, i, j), left.at(k, i, j)));
                    }
            }
            if (d == Desc::List || d == Desc::ListS2) continue;
            for (Op op : {Op::Right, Op::Left, Op::Both}) {
                kt::Objects<T> x(d, count, n, n, 6), y(d, count, n, n, 7);
                Values<T> one;
                vectors_each(op, a, x, y, n, one);
                for (kelStatus s : one.status) EXPECT_EQ(s, kelOk);
                kt::Objects<T>& ref = op == Op::Left ? left : right;
                for (int k = 0; k < count; ++k)
                    for (int i = 0; i < n; ++i)
                        for (int j = 0; j < n; ++j) {
                            ASSERT_TRUE(kt::same_bits(x.at(k, i, j), ref.at(k, i, j))) << name(op);
                            if (op == Op::Both) {
                                ASSERT_TRUE(kt::same_bits(y.at(k, i, j), left.at(k, i, j)));
                            }
                        }
            }
        }
}

TEST(EigenVectors, RandomMatricesEveryDescription32f) { random_vectors<float>(); }
TEST(EigenVectors, RandomMatricesEveryDescription64f) { random_vectors<double>(); }

// Every description gives the contiguous form's vectors, bit for bit.
template <class T>
void vector_descriptions_agree()
{
    for (int n : {2, 3, 4, 5, 6, 8}) {
        std::vector<T> first;
        for (Desc d : kAll) {
            SCOPED_TRACE(testing::Message() << kt::type_name<T>() << " " << kt::name(d) << " n=" << n);
            kt::Objects<T> a(d, 5, n, n, unsigned(313 + n)), x(d, 5, n, n, 1), y(d, 5, n, n, 2);
            Values<T> v;
            ASSERT_EQ(vectors_array(Op::Both, a, x, y, n, v), kelOk);
            std::vector<T> got;
            for (int k = 0; k < 5; ++k)
                for (int i = 0; i < n; ++i)
                    for (int j = 0; j < n; ++j) got.push_back(x.at(k, i, j)), got.push_back(y.at(k, i, j));
            if (d == Desc::Contig) {
                first = got;
                continue;
            }
            for (std::size_t e = 0; e < got.size(); ++e) ASSERT_TRUE(kt::same_bits(first[e], got[e])) << e;
        }
    }
}

TEST(EigenVectors, DescriptionsGiveTheSameBits32f) { vector_descriptions_agree<float>(); }
TEST(EigenVectors, DescriptionsGiveTheSameBits64f) { vector_descriptions_agree<double>(); }

template <class T>
void known_vectors()
{
    SCOPED_TRACE(kt::type_name<T>());
    const T eps = std::numeric_limits<T>::epsilon();
    auto one = [](int n, const std::vector<double>& rows, kt::Objects<T>& a) {
        for (int i = 0; i < n; ++i)
            for (int j = 0; j < n; ++j) a.at(0, i, j) = T(rows[std::size_t(i * n + j)]);
    };
    {  // diagonal: unit coordinate vectors on both sides
        const int n = 5;
        std::vector<double> rows(25, 0.0);
        const double diag[5] = {3, -1, 3, 0.5, 2};
        for (int i = 0; i < n; ++i) rows[std::size_t(i * 6)] = diag[i];
        kt::Objects<T> a(Desc::Contig, 1, n, n), x(Desc::Contig, 1, n, n), y(Desc::Contig, 1, n, n);
        one(n, rows, a);
        Values<T> v;
        ASSERT_EQ(vectors_array(Op::Both, a, x, y, n, v), kelOk);
        for (int i = 0; i < n; ++i) {
            EXPECT_EQ(v.re[std::size_t(i)], T(diag[i]));
            for (int j = 0; j < n; ++j) {
                EXPECT_EQ(x.at(0, i, j), T(i == j)) << i << " " << j;
                EXPECT_EQ(y.at(0, i, j), T(i == j)) << i << " " << j;
            }
        }
    }
    {  // the quarter turn: one pair, real part in column 0, imaginary in column 1
        kt::Objects<T> a(Desc::Contig, 1, 2, 2), x(Desc::Contig, 1, 2, 2), y(Desc::Contig, 1, 2, 2);
        one(2, {0, -1, 1, 0}, a);
        Values<T> v;
        ASSERT_EQ(vectors_array(Op::Both, a, x, y, 2, v), kelOk);
        EXPECT_EQ(v.im, (std::vector<T>{1, -1}));
        expect_eigenvectors(a, x, 0, 2, v.re.data(), v.im.data(), true);
        expect_eigenvectors(a, y, 0, 2, v.re.data(), v.im.data(), false);
        // A (re + i im) = i (re + i im): A re = -im, A im = re.
        EXPECT_NEAR(-x.at(0, 1, 0), -x.at(0, 0, 1), 4 * eps);
        EXPECT_NEAR(x.at(0, 0, 0), -x.at(0, 1, 1), 4 * eps);
    }
    {  // 1x1: the eigenvector 1
        kt::Objects<T> a(Desc::Contig, 1, 1, 1), x(Desc::Contig, 1, 1, 1), y(Desc::Contig, 1, 1, 1);
        a.at(0, 0, 0) = T(-2.5);
        Values<T> v;
        ASSERT_EQ(vectors_array(Op::Both, a, x, y, 1, v), kelOk);
        EXPECT_EQ(x.at(0, 0, 0), T(1));
        EXPECT_EQ(y.at(0, 0, 0), T(1));
        EXPECT_EQ(v.re[0], T(-2.5));
    }
    {  // repeated eigenvalues with full eigenspaces and a defective one
        for (const std::vector<double>& rows :
             {std::vector<double>{2, 0, 0, 0, 2, 0, 1, 1, 2}, std::vector<double>{1, 0, 0, 0, 1, 0, 0, 0, 1},
              std::vector<double>{2, 1, 0, 0, 2, 0, 0, 0, 5}}) {
            kt::Objects<T> a(Desc::Contig, 1, 3, 3), x(Desc::Contig, 1, 3, 3), y(Desc::Contig, 1, 3, 3);
            one(3, rows, a);
            Values<T> v;
            ASSERT_EQ(vectors_array(Op::Both, a, x, y, 3, v), kelOk);
            for (int p = 0; p < 3; ++p)
                for (int i = 0; i < 3; ++i) {
                    EXPECT_TRUE(std::isfinite(x.at(0, i, p)));
                    EXPECT_TRUE(std::isfinite(y.at(0, i, p)));
                }
            expect_eigenvectors(a, x, 0, 3, v.re.data(), v.im.data(), true);
            expect_eigenvectors(a, y, 0, 3, v.re.data(), v.im.data(), false);
        }
    }
}

TEST(EigenVectors, KnownVectors32f) { known_vectors<float>(); }
TEST(EigenVectors, KnownVectors64f) { known_vectors<double>(); }

// Statuses.  A NaN block uses up the budget: trailing values written, no
// vectors.  A 2x2 pair block far below the scale of a real eigenvalue with
// the same real part leaves the left substitution without a usable pivot:
// values written, the vectors before it written, the rest not.
template <class T>
void vector_statuses()
{
    SCOPED_TRACE(kt::type_name<T>());
    for (Op op : {Op::Right, Op::Left, Op::Both}) {
        kt::Objects<T> a(Desc::Contig, 2, 4, 4), x(Desc::Contig, 2, 4, 4), y(Desc::Contig, 2, 4, 4);
        for (int i = 0; i < 4; ++i)
            for (int j = 0; j < 4; ++j) a.at(0, i, j) = nan_block<T>(i, j);
        const auto xs = x.snapshot(), ys = y.snapshot();
        Values<T> v;
        EXPECT_EQ(vectors_array(op, a, x, y, 4, v), kelErrNotConverged) << name(op);
        EXPECT_EQ(v.re[3], T(5));
        EXPECT_EQ(v.re[0], T(-77));
        EXPECT_EQ(v.re[4], T(-77));  // the array stopped
        EXPECT_TRUE(x.unchanged_since(xs));
        EXPECT_TRUE(y.unchanged_since(ys));
    }
    const T big = sizeof(T) == 4 ? T(1e8) : T(1e14);
    for (Op op : {Op::Right, Op::Left, Op::Both}) {
        // Working matrix (the transpose) [[big, e, 1], [-e, big, 2], [0, 0, big]], e = 1e-3.
        kt::Objects<T> a(Desc::Contig, 1, 3, 3), x(Desc::Contig, 1, 3, 3), y(Desc::Contig, 1, 3, 3);
        const T e = T(1e-3);
        const T rows[9] = {big, -e, 0, e, big, 0, 1, 2, big};
        for (int i = 0; i < 9; ++i) a.at(0, i / 3, i % 3) = rows[i];
        const T sentinel = x.at(0, 0, 2);
        const T sentinelY = y.at(0, 0, 2);
        Values<T> v;
        const kelStatus s = vectors_array(op, a, x, y, 3, v);
        EXPECT_EQ(s, op == Op::Right ? kelOk : kelErrEigenSolve) << name(op);
        EXPECT_EQ(v.re, (std::vector<T>{big, big, big}));
        EXPECT_GT(v.im[0], T(0));
        if (op == Op::Left) {
            EXPECT_EQ(x.at(0, 0, 2), sentinel);  // third column never written
        }
        if (op == Op::Both) {
            EXPECT_EQ(y.at(0, 0, 2), sentinelY);  // right vectors done, left stopped
        }
    }
}

TEST(EigenVectors, Statuses32f) { vector_statuses<float>(); }
TEST(EigenVectors, Statuses64f) { vector_statuses<double>(); }

TEST(EigenVectors, ParallelThreshold)
{
    kt::Threads two(2);
    for (int count : {125, 126}) {  // n = 1: n(3n+1)*count = 500, 504
        kt::Objects<float> a(Desc::Contig, count, 1, 1, 3), x(Desc::Contig, count, 1, 1, 4);
        std::vector<float> buf(8, 123.0f);
        Values<float> v;
        ASSERT_EQ(vectors_array(Op::Right, a, x, x, 1, v, &buf), kelOk);
        EXPECT_EQ(buf[0] != 123.0f, count == 125) << count;
        for (int k = 0; k < count; ++k) EXPECT_EQ(x.at(k, 0, 0), 1.0f);
    }
}

}  // namespace
