// Symmetric eigenproblems: residuals and orthonormality on random symmetric
// matrices, values against a long double Jacobi reference, the order of the
// results, the singular and non-converging statuses, argument checks, and the
// same bits from every description, from single and array forms, and from
// serial and parallel runs.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "support.h"

namespace {

using kt::Desc;

constexpr Desc kAll[] = {Desc::Contig, Desc::Strided, Desc::Pointer, Desc::List, Desc::ListS2};

template <class T>
struct Api;
template <>
struct Api<float> {
    static constexpr auto v = kelmEigenValuesSym_m_32f, vP = kelmEigenValuesSym_m_32f_P;
    static constexpr auto va = kelmEigenValuesSym_ma_32f, vaP = kelmEigenValuesSym_ma_32f_P,
                          vaL = kelmEigenValuesSym_ma_32f_L;
    static constexpr auto w = kelmEigenValuesVectorsSym_m_32f, wP = kelmEigenValuesVectorsSym_m_32f_P;
    static constexpr auto wa = kelmEigenValuesVectorsSym_ma_32f, waP = kelmEigenValuesVectorsSym_ma_32f_P,
                          waL = kelmEigenValuesVectorsSym_ma_32f_L;
};
template <>
struct Api<double> {
    static constexpr auto v = kelmEigenValuesSym_m_64f, vP = kelmEigenValuesSym_m_64f_P;
    static constexpr auto va = kelmEigenValuesSym_ma_64f, vaP = kelmEigenValuesSym_ma_64f_P,
                          vaL = kelmEigenValuesSym_ma_64f_L;
    static constexpr auto w = kelmEigenValuesVectorsSym_m_64f, wP = kelmEigenValuesVectorsSym_m_64f_P;
    static constexpr auto wa = kelmEigenValuesVectorsSym_ma_64f, waP = kelmEigenValuesVectorsSym_ma_64f_P,
                          waL = kelmEigenValuesVectorsSym_ma_64f_L;
};

constexpr int kGuard = 8;  // elements past the values and past the n*n buffer

// One call's results: values (count*n, then guard elements) and the status.
template <class T>
struct Run {
    kelStatus status;
    std::vector<T> values;
    bool guards_intact(int used) const
    {
        for (std::size_t i = std::size_t(used); i < values.size(); ++i)
            if (!kt::same_bits(values[i], T(-77))) return false;
        return true;
    }
};

// The array form of src's description; vectors (null for the values-only
// family) in the same description.
template <class T>
Run<T> call_array(kt::Objects<T>& src, kt::Objects<T>* vec, int n, int count)
{
    using A = Api<T>;
    Run<T> r{kelOk, std::vector<T>(std::size_t(count) * n + kGuard, T(-77))};
    std::vector<T> buf(std::size_t(n) * n + kGuard, T(-55));
    T* b = buf.data();
    T* val = r.values.data();
    switch (src.desc()) {
    case Desc::Contig:
    case Desc::Strided:
        r.status = vec ? A::wa(src.base(), src.objStride(), src.rowStride(), src.elemStride(), b, vec->base(),
                               vec->objStride(), vec->rowStride(), vec->elemStride(), val, n, count)
                       : A::va(src.base(), src.objStride(), src.rowStride(), src.elemStride(), b, val, n, count);
        break;
    case Desc::Pointer:
        r.status = vec ? A::waP(src.table(), src.shift(), src.objStride(), b, vec->table(), vec->shift(),
                                vec->objStride(), val, n, count)
                       : A::vaP(src.table(), src.shift(), src.objStride(), b, val, n, count);
        break;
    default:
        r.status = vec ? A::waL(src.table(), src.shift(), src.rowStride(), src.elemStride(), b, vec->table(),
                                vec->shift(), vec->rowStride(), vec->elemStride(), val, n, count)
                       : A::vaL(src.table(), src.shift(), src.rowStride(), src.elemStride(), b, val, n, count);
    }
    for (int g = 0; g < kGuard; ++g) EXPECT_TRUE(kt::same_bits(buf[std::size_t(n) * n + g], T(-55))) << "buffer overrun";
    return r;
}

// Object k alone through the single-matrix form of the description.
template <class T>
Run<T> call_single(kt::Objects<T>& src, kt::Objects<T>* vec, int n, int k)
{
    using A = Api<T>;
    Run<T> r{kelOk, std::vector<T>(std::size_t(n) + kGuard, T(-77))};
    std::vector<T> buf(std::size_t(n) * n);
    if (src.desc() == Desc::Pointer) {
        const int ss = src.shift() + k * src.objStride();
        r.status = vec ? A::wP(src.table(), ss, buf.data(), vec->table(), vec->shift() + k * vec->objStride(),
                               r.values.data(), n)
                       : A::vP(src.table(), ss, buf.data(), r.values.data(), n);
    } else {
        r.status = vec ? A::w(&src.at(k, 0, 0), src.rowStride(), src.elemStride(), buf.data(), &vec->at(k, 0, 0),
                              vec->rowStride(), vec->elemStride(), r.values.data(), n)
                       : A::v(&src.at(k, 0, 0), src.rowStride(), src.elemStride(), buf.data(), r.values.data(), n);
    }
    return r;
}

template <class T>
void symmetrise(kt::Objects<T>& o, int n)
{
    for (int k = 0; k < o.count(); ++k)
        for (int i = 0; i < n; ++i)
            for (int j = i + 1; j < n; ++j) o.at(k, j, i) = o.at(k, i, j);
}

template <class T>
void set_matrix(kt::Objects<T>& o, int k, int n, const std::vector<double>& m)
{
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) o.at(k, i, j) = T(m[std::size_t(i) * n + j]);
}

// Cyclic Jacobi in long double: the eigenvalues, descending.
template <class T>
std::vector<long double> reference_values(kt::Objects<T>& o, int k, int n)
{
    std::vector<long double> a(std::size_t(n) * n);
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) a[i * n + j] = o.at(k, i, j);
    for (int sweep = 0; sweep < 60; ++sweep) {
        long double off = 0;
        for (int p = 0; p < n; ++p)
            for (int q = p + 1; q < n; ++q) off += a[p * n + q] * a[p * n + q];
        if (off < 1e-36L) break;
        for (int p = 0; p < n; ++p)
            for (int q = p + 1; q < n; ++q) {
                if (a[p * n + q] == 0) continue;
                const long double th = (a[q * n + q] - a[p * n + p]) / (2 * a[p * n + q]);
                const long double t = (th >= 0 ? 1 : -1) / (std::fabs(th) + std::sqrt(th * th + 1));
                const long double c = 1 / std::sqrt(t * t + 1), s = t * c;
                for (int r = 0; r < n; ++r) {  // columns p, q
                    const long double x = a[r * n + p], y = a[r * n + q];
                    a[r * n + p] = c * x - s * y, a[r * n + q] = s * x + c * y;
                }
                for (int r = 0; r < n; ++r) {  // rows p, q
                    const long double x = a[p * n + r], y = a[q * n + r];
                    a[p * n + r] = c * x - s * y, a[q * n + r] = s * x + c * y;
                }
            }
    }
    std::vector<long double> d(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i) d[i] = a[i * n + i];
    std::sort(d.begin(), d.end(), [](long double x, long double y) { return x > y; });
    return d;
}

template <class T>
long double frob(kt::Objects<T>& o, int k, int n)
{
    long double s = 0;
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) s += (long double)o.at(k, i, j) * o.at(k, i, j);
    return std::sqrt(s);
}

// Values against the reference, and (vectors) A v = lambda v and V^T V = I,
// all within c * n * max(|A|, 1) * eps.  Residuals can be left out: a sweep
// that ends early on a rotation below eps (as repeated and clustered values
// provoke) keeps the values and the orthonormality but not the vectors' last
// digits.
template <class T>
void check_object(kt::Objects<T>& a, kt::Objects<T>* v, const T* val, int k, int n, bool residuals = true)
{
    const long double tol = 32.0L * n * std::max(frob(a, k, n), 1.0L) * std::numeric_limits<T>::epsilon();
    std::vector<long double> got(val, val + n), ref = reference_values(a, k, n);
    if (n >= 3) {
        for (int i = 0; i + 1 < n; ++i) EXPECT_GE(got[i], got[i + 1]) << "not descending at " << i;
    }
    if (n == 2) {
        const long double tr = (long double)a.at(k, 0, 0) + a.at(k, 1, 1);
        if (tr < -std::numeric_limits<T>::epsilon()) {
            EXPECT_LE(got[0], got[1]);
        } else {
            EXPECT_GE(got[0], got[1]);
        }
    }
    std::vector<long double> sorted = got;
    std::sort(sorted.begin(), sorted.end(), [](long double x, long double y) { return x > y; });
    for (int i = 0; i < n; ++i) EXPECT_NEAR(double(sorted[i]), double(ref[i]), double(tol)) << "value " << i;
    if (!v) return;
    for (int c = 0; c < n; ++c) {
        long double res = 0;
        for (int i = 0; i < n; ++i) {
            long double s = -got[c] * v->at(k, i, c);
            for (int j = 0; j < n; ++j) s += (long double)a.at(k, i, j) * v->at(k, j, c);
            res += s * s;
        }
        if (residuals) {
            EXPECT_LE(std::sqrt(res), tol) << "residual of vector " << c;
        }
        for (int d = 0; d < n; ++d) {
            long double dot = 0;
            for (int i = 0; i < n; ++i) dot += (long double)v->at(k, i, c) * v->at(k, i, d);
            EXPECT_NEAR(double(dot), c == d ? 1.0 : 0.0, double(tol)) << "columns " << c << ", " << d;
        }
    }
}

// --- random matrices, every description, both families ---------------------------

template <class T>
void random_symmetric()
{
    const int count = 4;
    for (bool vectors : {false, true})
        for (Desc d : kAll)
            for (int n = 1; n <= 9; ++n) {
                SCOPED_TRACE(testing::Message() << kt::type_name<T>() << " " << kt::name(d) << " n=" << n
                                                << (vectors ? " vectors" : " values"));
                kt::Objects<T> a(d, count, n, n, unsigned(n * 7 + int(d))), v(d, count, n, n, 99);
                symmetrise(a, n);
                const auto before = a.snapshot();
                Run<T> r = call_array(a, vectors ? &v : nullptr, n, count);
                ASSERT_EQ(r.status, kelOk);
                EXPECT_TRUE(r.guards_intact(count * n));
                EXPECT_TRUE(a.unchanged_since(before));
                EXPECT_TRUE(v.canaries_intact());
                for (int k = 0; k < count; ++k) check_object(a, vectors ? &v : nullptr, &r.values[std::size_t(k) * n], k, n);
            }
}

TEST(EigenSym, RandomSymmetric32f) { random_symmetric<float>(); }
TEST(EigenSym, RandomSymmetric64f) { random_symmetric<double>(); }

// Clustered and repeated eigenvalues: Q diag(l) Q^T with Q = I - 2uu^T/u^Tu.
template <class T>
void clustered()
{
    const std::vector<std::vector<double>> spectra = {
        {1, 1, 1}, {2, 2, -1}, {3, 1e-3 + 3, -2, -2}, {1, 1, 1, 1, 5}, {4, 4 + 1e-6, 4 - 1e-6, 1, 1, -3}};
    std::mt19937 rng(5);
    std::normal_distribution<double> g;
    for (bool vectors : {false, true})
        for (const auto& lam : spectra) {
            const int n = int(lam.size());
            SCOPED_TRACE(testing::Message() << kt::type_name<T>() << " n=" << n << (vectors ? " vectors" : ""));
            std::vector<double> u(static_cast<std::size_t>(n)), m(std::size_t(n) * n, 0.0);
            double uu = 0;
            for (auto& x : u) x = g(rng), uu += x * x;
            for (int i = 0; i < n; ++i)
                for (int j = 0; j < n; ++j)
                    for (int p = 0; p < n; ++p)
                        m[i * n + j] += ((i == p) - 2 * u[i] * u[p] / uu) * lam[p] * ((j == p) - 2 * u[j] * u[p] / uu);
            for (int i = 0; i < n; ++i)
                for (int j = 0; j < i; ++j) m[i * n + j] = m[j * n + i];
            kt::Objects<T> a(Desc::Contig, 1, n, n), v(Desc::Contig, 1, n, n);
            set_matrix(a, 0, n, m);
            Run<T> r = call_array(a, vectors ? &v : nullptr, n, 1);
            ASSERT_EQ(r.status, kelOk);
            check_object(a, vectors ? &v : nullptr, r.values.data(), 0, n, false);
        }
}

TEST(EigenSym, ClusteredAndRepeated32f) { clustered<float>(); }
TEST(EigenSym, ClusteredAndRepeated64f) { clustered<double>(); }

// --- the same bits from every path ----------------------------------------------------

// Each description's array form, its single forms, the contiguous array form,
// and a parallel run all agree bit for bit, values and vectors.
template <class T>
void same_bits_everywhere()
{
    for (bool vectors : {false, true})
        for (int n : {2, 3, 4, 5, 6, 7, 8}) {
            const int count = 120;  // parallel for every n with two threads
            kt::Objects<T> ref(Desc::Contig, count, n, n, unsigned(40 + n)), refv(Desc::Contig, count, n, n);
            symmetrise(ref, n);
            Run<T> base;
            {
                kt::Threads one(1);
                base = call_array(ref, vectors ? &refv : nullptr, n, count);
            }
            ASSERT_EQ(base.status, kelOk);
            for (Desc d : kAll)
                for (int threads : {1, 2}) {
                    SCOPED_TRACE(testing::Message() << kt::type_name<T>() << " " << kt::name(d) << " n=" << n
                                                    << " threads=" << threads << (vectors ? " vectors" : ""));
                    kt::Objects<T> a(d, count, n, n), v(d, count, n, n);
                    for (int k = 0; k < count; ++k)
                        for (int i = 0; i < n; ++i)
                            for (int j = 0; j < n; ++j) a.at(k, i, j) = ref.at(k, i, j);
                    kt::Threads t(threads);
                    Run<T> r = call_array(a, vectors ? &v : nullptr, n, count);
                    ASSERT_EQ(r.status, kelOk);
                    for (std::size_t e = 0; e < std::size_t(count) * n; ++e)
                        ASSERT_TRUE(kt::same_bits(r.values[e], base.values[e])) << "value element " << e;
                    if (vectors) {
                        for (int k = 0; k < count; ++k)
                            for (int i = 0; i < n; ++i)
                                for (int j = 0; j < n; ++j)
                                    ASSERT_TRUE(kt::same_bits(v.at(k, i, j), refv.at(k, i, j))) << k << " " << i << " " << j;
                    }
                    EXPECT_TRUE(v.canaries_intact());
                    if (threads == 1)
                        for (int k : {0, count - 1}) {
                            kt::Objects<T> v1(d, count, n, n);
                            Run<T> s = call_single(a, vectors ? &v1 : nullptr, n, k);
                            ASSERT_EQ(s.status, kelOk);
                            for (int e = 0; e < n; ++e)
                                ASSERT_TRUE(kt::same_bits(s.values[e], base.values[std::size_t(k) * n + e]));
                            if (vectors) {
                                for (int i = 0; i < n; ++i)
                                    for (int j = 0; j < n; ++j) ASSERT_TRUE(kt::same_bits(v1.at(k, i, j), refv.at(k, i, j)));
                            }
                        }
                }
        }
}

TEST(EigenSym, SameBitsOnEveryPath32f) { same_bits_everywhere<float>(); }
TEST(EigenSym, SameBitsOnEveryPath64f) { same_bits_everywhere<double>(); }

// --- known cases --------------------------------------------------------------------

// Known results, both families: status and values (values-only, vectors).
template <class T>
void known_cases()
{
    struct Case {
        const char* what;
        int n;
        std::vector<double> m;
        kelStatus status;
        std::vector<double> values, vectorsValues;  // empty: nothing written
    };
    const Case cases[] = {
        {"order 1, zero", 1, {0}, kelOk, {0}, {0}},
        {"order 2, trace -3: larger magnitude first", 2, {-1.5, 0.5, 0.5, -1.5}, kelOk, {-2, -1}, {-2, -1}},
        {"order 2, singular: nothing written", 2, {1, 2, 2, 4}, kelErrSingular, {}, {}},
        {"diag(1, 3, 2)", 3, {1, 0, 0, 0, 3, 0, 0, 0, 2}, kelOk, {3, 2, 1}, {3, 2, 1}},
        {"singular 3x3: values-only unsorted", 3, {-1, 0, 0, 0, 0, 0, 0, 0, 3}, kelErrSingular, {-1, 0, 3}, {3, 0, -1}},
    };
    for (const Case& c : cases)
        for (bool vectors : {false, true}) {
            SCOPED_TRACE(testing::Message() << kt::type_name<T>() << " " << c.what << (vectors ? " vectors" : ""));
            kt::Objects<T> a(Desc::Contig, 1, c.n, c.n), v(Desc::Contig, 1, c.n, c.n);
            set_matrix(a, 0, c.n, c.m);
            const auto before = v.snapshot();
            Run<T> r = call_array(a, vectors ? &v : nullptr, c.n, 1);
            EXPECT_EQ(r.status, c.status);
            const auto& want = vectors ? c.vectorsValues : c.values;
            EXPECT_TRUE(r.guards_intact(int(want.size())));
            for (std::size_t i = 0; i < want.size(); ++i) EXPECT_EQ(r.values[i], T(want[i])) << i;
            if (!vectors) continue;
            if (want.empty()) {
                EXPECT_TRUE(v.unchanged_since(before));
            } else {
                check_object(a, &v, r.values.data(), 0, c.n);
            }
        }
    // diag(1, 3, 2) has the permuted identity as vectors.
    kt::Objects<T> a(Desc::Contig, 1, 3, 3), v(Desc::Contig, 1, 3, 3);
    set_matrix(a, 0, 3, {1, 0, 0, 0, 3, 0, 0, 0, 2});
    call_array(a, &v, 3, 1);
    const int perm[3][3] = {{0, 0, 1}, {1, 0, 0}, {0, 1, 0}};
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) EXPECT_EQ(std::fabs(v.at(0, i, j)), T(perm[i][j])) << i << " " << j;
}

TEST(EigenSym, KnownCases32f) { known_cases<float>(); }
TEST(EigenSym, KnownCases64f) { known_cases<double>(); }

// An array stops at its first failing object (singular, or NaN that never
// converges); later objects are untouched.  The parallel thresholds are
// visible here: at and above them the second thread's block is still done.
template <class T>
void array_stops()
{
    const T nan = std::numeric_limits<T>::quiet_NaN();
    for (bool vectors : {false, true})
        for (Desc d : kAll)
            for (int n : {2, 3, 7}) {
                SCOPED_TRACE(testing::Message() << kt::type_name<T>() << " " << kt::name(d) << " n=" << n
                                                << (vectors ? " vectors" : ""));
                kt::Objects<T> a(d, 3, n, n, 3), v(d, 3, n, n);
                symmetrise(a, n);
                for (int i = 0; i < n; ++i) a.at(1, 0, i) = a.at(1, i, 0) = 0;  // object 1 singular
                Run<T> r = call_array(a, vectors ? &v : nullptr, n, 3);
                EXPECT_EQ(r.status, kelErrSingular);
                EXPECT_TRUE(r.guards_intact(n == 2 ? n : 2 * n));
                if (vectors) {
                    kt::Objects<T> fresh(d, 3, n, n);
                    for (int i = 0; i < n; ++i)
                        for (int j = 0; j < n; ++j) EXPECT_EQ(v.at(2, i, j), fresh.at(2, i, j));
                }
                if (n == 2) continue;
                a.at(1, 1, 1) = nan;
                r = call_array(a, vectors ? &v : nullptr, n, 3);
                EXPECT_EQ(r.status, kelErrNotConverged);
                EXPECT_TRUE(r.guards_intact(2 * n));
            }
}

TEST(EigenSym, ArrayStopsAtFirstFailure32f) { array_stops<float>(); }
TEST(EigenSym, ArrayStopsAtFirstFailure64f) { array_stops<double>(); }

// Object 0 singular, two threads: below the threshold the call stops at once
// and the last object stays unwritten; at the threshold the second block runs.
template <class T>
void thresholds()
{
    kt::Threads two(2);
    struct Case {
        bool vectors;
        int n, serialCount;  // the largest serial count: n(n+1)c < 1001, n(2n+1)c < 701
    };
    for (Case c : {Case{false, 3, 83}, Case{false, 7, 17}, Case{true, 3, 33}, Case{true, 5, 12}})
        for (int count : {c.serialCount, c.serialCount + 1}) {
            SCOPED_TRACE(testing::Message() << kt::type_name<T>() << " n=" << c.n << " count=" << count
                                            << (c.vectors ? " vectors" : ""));
            kt::Objects<T> a(Desc::Contig, count, c.n, c.n, 8), v(Desc::Contig, count, c.n, c.n);
            symmetrise(a, c.n);
            for (int i = 0; i < c.n; ++i) a.at(0, 0, i) = a.at(0, i, 0) = 0;
            Run<T> r = call_array(a, c.vectors ? &v : nullptr, c.n, count);
            EXPECT_EQ(r.status, kelErrSingular);
            const bool lastWritten = !kt::same_bits(r.values[std::size_t(count) * c.n - 1], T(-77));
            EXPECT_EQ(lastWritten, count > c.serialCount);
        }
}

TEST(EigenSym, ParallelThresholds32f) { thresholds<float>(); }
TEST(EigenSym, ParallelThresholds64f) { thresholds<double>(); }


}  // namespace
