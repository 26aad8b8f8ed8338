// LUDecomp and LUBackSubst: factors that reconstruct the matrix, solutions
// with small residuals, the pivot and threshold rules, the failure footprint,
// the shared index block, and identical results however the work is run.
#include <omp.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <numeric>

#include "support.h"

namespace {

using kt::Desc;
using kt::Objects;

// Every entry of both families, by element type.
template <class T>
struct Lu;
#define KELM_LU_TABLE(T, S)                                      \
    template <>                                                  \
    struct Lu<T> {                                               \
        static constexpr auto m = kelmLUDecomp_m_##S;            \
        static constexpr auto m_P = kelmLUDecomp_m_##S##_P;      \
        static constexpr auto ma = kelmLUDecomp_ma_##S;          \
        static constexpr auto ma_P = kelmLUDecomp_ma_##S##_P;    \
        static constexpr auto ma_L = kelmLUDecomp_ma_##S##_L;    \
        static constexpr auto mv = kelmLUBackSubst_mv_##S;       \
        static constexpr auto mv_P = kelmLUBackSubst_mv_##S##_P; \
        static constexpr auto mva = kelmLUBackSubst_mva_##S;     \
        static constexpr auto mva_P = kelmLUBackSubst_mva_##S##_P; \
        static constexpr auto mva_L = kelmLUBackSubst_mva_##S##_L; \
        static constexpr auto mava = kelmLUBackSubst_mava_##S;   \
        static constexpr auto mava_P = kelmLUBackSubst_mava_##S##_P; \
        static constexpr auto mava_L = kelmLUBackSubst_mava_##S##_L; \
    };
KELM_LU_TABLE(float, 32f)
KELM_LU_TABLE(double, 64f)
#undef KELM_LU_TABLE

constexpr Desc kAllDescs[] = {Desc::Contig, Desc::Strided, Desc::Pointer, Desc::List, Desc::ListS2};

// The single-object operand of a list call keeps the strided description.
Desc single_form(Desc d) { return d == Desc::List ? Desc::Contig : d == Desc::ListS2 ? Desc::Strided : d; }

// The array decomposition in the operands' description.
template <class T>
kelStatus decomp(Objects<T>& a, int* index, Objects<T>& d, int n, int count)
{
    switch (a.desc()) {
    case Desc::Pointer:
        return Lu<T>::ma_P(a.table(), a.shift(), a.objStride(), index, d.table(), d.shift(), d.objStride(), n, count);
    case Desc::List:
    case Desc::ListS2:
        return Lu<T>::ma_L(a.table(), a.shift(), a.rowStride(), a.elemStride(), index, d.table(), d.shift(),
                           d.rowStride(), d.elemStride(), n, count);
    default:
        return Lu<T>::ma(a.base(), a.objStride(), a.rowStride(), a.elemStride(), index, d.base(), d.objStride(),
                         d.rowStride(), d.elemStride(), n, count);
    }
}

// One matrix (object 0): strided or pointer description.
template <class T>
kelStatus decomp_one(Objects<T>& a, int* index, Objects<T>& d, int n)
{
    if (a.desc() == Desc::Pointer) return Lu<T>::m_P(a.table(), a.shift(), index, d.table(), d.shift(), n);
    return Lu<T>::m(a.base(), a.rowStride(), a.elemStride(), index, d.base(), d.rowStride(), d.elemStride(), n);
}

// The strided form with a general element stride keeps one index block for
// matrices of order outside 3..6; tests that need every permutation factor
// each matrix again on its own (same bits) into its own block.
bool shared_block(Desc d, int n) { return d == Desc::Strided && (n < 3 || n > 6); }

template <class T>
void refactor_each(Objects<T>& a, int* index, Objects<T>& d, int n)
{
    const int s = int(sizeof(T));
    for (int k = 0; k < a.count(); ++k)
        ASSERT_EQ(Lu<T>::m(a.base() + k * a.objStride() / s, a.rowStride(), a.elemStride(), index + k * n,
                           d.base() + k * d.objStride() / s, d.rowStride(), d.elemStride(), n),
                  kelOk);
}

template <class T>
kelStatus solve_mava(Objects<T>& f, const int* index, Objects<T>& b, Objects<T>& x, int n, int count)
{
    switch (f.desc()) {
    case Desc::Pointer:
        return Lu<T>::mava_P(f.table(), f.shift(), f.objStride(), index, b.table(), b.shift(), b.objStride(),
                             x.table(), x.shift(), x.objStride(), n, count);
    case Desc::List:
    case Desc::ListS2:
        return Lu<T>::mava_L(f.table(), f.shift(), f.rowStride(), f.elemStride(), index, b.table(), b.shift(),
                             b.elemStride(), x.table(), x.shift(), x.elemStride(), n, count);
    default:
        return Lu<T>::mava(f.base(), f.objStride(), f.rowStride(), f.elemStride(), index, b.base(), b.objStride(),
                           b.elemStride(), x.base(), x.objStride(), x.elemStride(), n, count);
    }
}

// One factor f (strided or pointer: single_form of the vectors' description).
template <class T>
kelStatus solve_mva(Objects<T>& f, const int* index, Objects<T>& b, Objects<T>& x, int n, int count)
{
    switch (b.desc()) {
    case Desc::Pointer:
        return Lu<T>::mva_P(f.table(), f.shift(), index, b.table(), b.shift(), b.objStride(), x.table(), x.shift(),
                            x.objStride(), n, count);
    case Desc::List:
    case Desc::ListS2:
        return Lu<T>::mva_L(f.base(), f.rowStride(), f.elemStride(), index, b.table(), b.shift(), b.elemStride(),
                            x.table(), x.shift(), x.elemStride(), n, count);
    default:
        return Lu<T>::mva(f.base(), f.rowStride(), f.elemStride(), index, b.base(), b.objStride(), b.elemStride(),
                          x.base(), x.objStride(), x.elemStride(), n, count);
    }
}

template <class T>
kelStatus solve_mv(Objects<T>& f, const int* index, Objects<T>& b, Objects<T>& x, int n)
{
    if (f.desc() == Desc::Pointer)
        return Lu<T>::mv_P(f.table(), f.shift(), index, b.table(), b.shift(), x.table(), x.shift(), n);
    return Lu<T>::mv(f.base(), f.rowStride(), f.elemStride(), index, b.base(), b.elemStride(), x.base(),
                     x.elemStride(), n);
}

// Random entries in [-4, 4) plus 10 on a random permutation: well conditioned,
// and the pivots are seldom on the diagonal.
template <class T>
void make_well_conditioned(Objects<T>& a, int n, unsigned seed)
{
    std::mt19937 rng(seed);
    std::vector<int> p(std::size_t(n), 0);
    for (int k = 0; k < a.count(); ++k) {
        std::iota(p.begin(), p.end(), 0);
        std::shuffle(p.begin(), p.end(), rng);
        for (int i = 0; i < n; ++i) a.at(k, i, p[std::size_t(i)]) += T(10);
    }
}

template <class T>
double tol() { return sizeof(T) == 4 ? 2e-5 : 1e-13; }

// Checks that index block k is a permutation and that P*A = L*U.
template <class T>
void expect_factor(Objects<T>& a, Objects<T>& d, int k, const int* index, int n)
{
    std::vector<int> seen(std::size_t(n), 0);
    for (int i = 0; i < n; ++i) {
        ASSERT_TRUE(index[i] >= 0 && index[i] < n);
        ++seen[std::size_t(index[i])];
    }
    for (int s : seen) ASSERT_EQ(s, 1);
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) {
            double lu = 0, scale = 0;
            for (int q = 0; q <= std::min(i, j); ++q) {
                const double l = q == i ? 1.0 : double(d.at(k, index[i], q));
                const double t = l * double(d.at(k, index[q], j));
                lu += t;
                scale += std::fabs(t);
            }
            EXPECT_NEAR(lu, double(a.at(k, index[i], j)), tol<T>() * n * (scale + 1))
                << "object " << k << " row " << i << " column " << j;
        }
}

// |A x - b| small against |A| |x| + |b|.
template <class T>
void expect_solution(Objects<T>& a, int ka, Objects<T>& b, Objects<T>& x, int kb, int n)
{
    for (int i = 0; i < n; ++i) {
        double r = -double(b.at(kb, i)), scale = std::fabs(double(b.at(kb, i)));
        for (int j = 0; j < n; ++j) {
            r += double(a.at(ka, i, j)) * double(x.at(kb, j));
            scale += std::fabs(double(a.at(ka, i, j)) * double(x.at(kb, j)));
        }
        EXPECT_LE(std::fabs(r), tol<T>() * n * scale) << "vector " << kb << " row " << i;
    }
}

template <class T>
class LuTest : public ::testing::Test {};
using Types = ::testing::Types<float, double>;
TYPED_TEST_SUITE(LuTest, Types);

TYPED_TEST(LuTest, FactorsReconstructAndSolveInEveryDescription)
{
    using T = TypeParam;
    constexpr int count = 3;
    for (int n = 1; n <= 9; ++n) {
        // Results of the contiguous run; every other description must match them bit for bit.
        std::vector<T> refFactor, refX;
        for (Desc desc : kAllDescs) {
            SCOPED_TRACE(std::string(kt::name(desc)) + " n=" + std::to_string(n) + " " + kt::type_name<T>());
            Objects<T> a(desc, count, n, n, 10 + n), d(desc, count, n, n, 20), b(desc, count, 1, n, 30),
                x(desc, count, 1, n, 40);
            make_well_conditioned(a, n, 7u * n);
            std::vector<int> index(std::size_t(n * count), -1);
            ASSERT_EQ(decomp(a, index.data(), d, n, count), kelOk);
            if (shared_block(desc, n)) refactor_each(a, index.data(), d, n);
            for (int k = 0; k < count; ++k) expect_factor(a, d, k, index.data() + k * n, n);
            ASSERT_EQ(solve_mava(d, index.data(), b, x, n, count), kelOk);
            for (int k = 0; k < count; ++k) expect_solution(a, k, b, x, k, n);
            EXPECT_TRUE(a.canaries_intact() && d.canaries_intact() && x.canaries_intact());

            // One factor for many vectors (mva), and one for one (m, mv).
            const Desc fd = single_form(desc);
            Objects<T> a1(fd, 1, n, n, 10 + n), f1(fd, 1, n, n, 50), x1(fd, 1, 1, n, 60), b1(fd, 1, 1, n, 30);
            make_well_conditioned(a1, n, 7u * n);
            std::vector<int> index1(std::size_t(n), -1);
            ASSERT_EQ(decomp_one(a1, index1.data(), f1, n), kelOk);
            expect_factor(a1, f1, 0, index1.data(), n);
            ASSERT_EQ(solve_mva(f1, index1.data(), b, x, n, count), kelOk);
            for (int k = 0; k < count; ++k) expect_solution(a1, 0, b, x, k, n);
            ASSERT_EQ(solve_mv(f1, index1.data(), b1, x1, n), kelOk);
            expect_solution(a1, 0, b1, x1, 0, n);
            EXPECT_TRUE(f1.canaries_intact() && x1.canaries_intact() && x.canaries_intact());

            std::vector<T> factor, sol;
            for (int k = 0; k < count; ++k)
                for (int i = 0; i < n; ++i) {
                    sol.push_back(x.at(k, i));
                    for (int j = 0; j < n; ++j) factor.push_back(d.at(k, i, j));
                }
            if (desc == Desc::Contig) {
                refFactor = factor, refX = sol;
            } else {
                for (std::size_t e = 0; e < factor.size(); ++e) ASSERT_TRUE(kt::same_bits(factor[e], refFactor[e]));
                for (std::size_t e = 0; e < sol.size(); ++e) ASSERT_TRUE(kt::same_bits(sol[e], refX[e]));
            }
        }
    }
}

// The arithmetic is part of the interface: the elimination of every order is
// that of the index-based loop below, and back substitution follows its two
// forms (running sums and divisions; terms subtracted from the highest column
// down and reciprocals for orders 3 to 6).
template <class T>
void reference_lu(std::vector<T>& a, std::vector<int>& p, int n)
{
    auto at = [&](int i, int j) -> T& { return a[std::size_t(i * n + j)]; };
    std::iota(p.begin(), p.end(), 0);
    for (int k = 0; k < n - 1; ++k) {
        int q = k;
        for (int i = k + 1; i < n; ++i)
            if (std::fabs(at(p[i], k)) > std::fabs(at(p[q], k))) q = i;
        std::swap(p[k], p[q]);
        const T r = T(1) / at(p[k], k);
        for (int i = k + 1; i < n; ++i) at(p[i], k) = at(p[i], k) * r;
        for (int i = k + 1; i < n; ++i)
            for (int j = k + 1; j < n; ++j) at(p[i], j) = at(p[i], j) - at(p[i], k) * at(p[k], j);
    }
}

template <class T>
std::vector<T> reference_solve(const std::vector<T>& a, const std::vector<int>& p, const std::vector<T>& b, int n)
{
    auto at = [&](int i, int j) { return a[std::size_t(p[i] * n + j)]; };
    std::vector<T> x(std::size_t(n), T(0));
    const bool written = n >= 3 && n <= 6;
    for (int i = 0; i < n; ++i) {
        T v = b[std::size_t(p[i])];
        if (written) {
            for (int j = i - 1; j >= 0; --j) v = v - at(i, j) * x[j];
        } else if (i > 0) {
            T s = 0;
            for (int j = 0; j < i; ++j) s = s + at(i, j) * x[j];
            v = v - s;
        }
        x[i] = v;
    }
    for (int i = n - 1; i >= 0; --i) {
        if (written) {
            T v = x[i];
            for (int j = n - 1; j > i; --j) v = v - at(i, j) * x[j];
            x[i] = v * (T(1) / at(i, i));
        } else {
            T s = 0;
            for (int j = i + 1; j < n; ++j) s = s + at(i, j) * x[j];
            x[i] = (i == n - 1 ? x[i] : x[i] - s) / at(i, i);
        }
    }
    return x;
}

TYPED_TEST(LuTest, ArithmeticMatchesTheReferenceBitForBit)
{
    using T = TypeParam;
    constexpr int count = 20;
    for (int n : {1, 2, 3, 4, 5, 6, 7, 8}) {
        SCOPED_TRACE("n=" + std::to_string(n));
        Objects<T> a(Desc::Contig, count, n, n, 100 + n), d(Desc::Contig, count, n, n, 1), b(Desc::Contig, count, 1, n, 2),
            x(Desc::Contig, count, 1, n, 3);
        std::vector<int> index = std::vector<int>(std::size_t(n * count));
        ASSERT_EQ(decomp(a, index.data(), d, n, count), kelOk);
        ASSERT_EQ(solve_mava(d, index.data(), b, x, n, count), kelOk);
        for (int k = 0; k < count; ++k) {
            std::vector<T> ra, rb;
            std::vector<int> rp = std::vector<int>(std::size_t(n));
            for (int i = 0; i < n; ++i) {
                rb.push_back(b.at(k, i));
                for (int j = 0; j < n; ++j) ra.push_back(a.at(k, i, j));
            }
            reference_lu(ra, rp, n);
            const std::vector<T> rx = reference_solve(ra, rp, rb, n);
            for (int i = 0; i < n; ++i) {
                ASSERT_EQ(index[std::size_t(k * n + i)], rp[std::size_t(i)]);
                ASSERT_TRUE(kt::same_bits(x.at(k, i), rx[std::size_t(i)])) << "object " << k << " x" << i;
                for (int j = 0; j < n; ++j) ASSERT_TRUE(kt::same_bits(d.at(k, i, j), ra[std::size_t(i * n + j)]));
            }
        }
    }
}

// Column 0 holds magnitudes 1, 3, 3, 3...: the first of the equal candidates
// wins (row 1); with 3, 3, ... the top row stays.
TYPED_TEST(LuTest, PivotTiesKeepTheEarliestCandidate)
{
    using T = TypeParam;
    for (int n : {2, 3, 4, 6, 7}) {
        for (bool topTies : {false, true}) {
            SCOPED_TRACE("n=" + std::to_string(n) + (topTies ? " top ties" : " later ties"));
            Objects<T> a(Desc::Contig, 1, n, n), d(Desc::Contig, 1, n, n);
            for (int i = 0; i < n; ++i)
                for (int j = 0; j < n; ++j) a.at(0, i, j) = j == 0 ? T(i % 2 ? -3 : 3) : T(i == j ? 5 : 0);
            if (!topTies) a.at(0, 0, 0) = 1;
            std::vector<int> index = std::vector<int>(std::size_t(n));
            ASSERT_EQ(decomp_one(a, index.data(), d, n), kelOk);
            EXPECT_EQ(index[0], topTies ? 0 : 1);
        }
    }
}

// Tiny pivots: orders 3 to 6 accept them down to twice the smallest normal
// number, other orders need more than the machine epsilon.
TYPED_TEST(LuTest, WrittenOutOrdersAcceptTinyPivotsTheGeneralOrdersReject)
{
    using T = TypeParam;
    const T tiny = sizeof(T) == 4 ? T(1e-30) : T(1e-300);
    const T eps = std::numeric_limits<T>::epsilon(), tau = 2 * std::numeric_limits<T>::min();
    struct Case {
        const char* what;
        int n, from, to;  // diagonal entries from..to-1 are the pivot under test, the others 1
        T pivot;
        kelStatus expected;
    };
    const Case cases[] = {
        {"order 3, pivots 1e-30 (1e-300)", 3, 0, 3, tiny, kelOk},
        {"the same padded to order 7 with an identity block", 7, 0, 3, tiny, kelErrSingular},
        {"order 6, first pivot tau", 6, 0, 1, tau, kelOk},
        {"order 5, last pivot tau", 5, 4, 5, tau, kelOk},
        {"order 4, last pivot below tau", 4, 3, 4, tau / 2, kelErrSingular},
        {"order 3, first pivot below tau", 3, 0, 1, tau / 2, kelErrSingular},
        {"order 1, epsilon", 1, 0, 1, eps, kelErrSingular},
        {"order 1, just above epsilon", 1, 0, 1, eps * (1 + eps), kelOk},
        {"order 2, last pivot epsilon", 2, 1, 2, eps, kelErrSingular},
        {"order 2, last pivot twice epsilon", 2, 1, 2, 2 * eps, kelOk},
        {"order 8, last pivot 1e-30 (1e-300)", 8, 7, 8, tiny, kelErrSingular},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        Objects<T> a(Desc::Strided, 1, c.n, c.n), d(Desc::Strided, 1, c.n, c.n);
        for (int i = 0; i < c.n; ++i)
            for (int j = 0; j < c.n; ++j) a.at(0, i, j) = i != j ? T(0) : (i >= c.from && i < c.to) ? c.pivot : T(1);
        std::vector<int> index = std::vector<int>(std::size_t(c.n));
        EXPECT_EQ(decomp_one(a, index.data(), d, c.n), c.expected);
    }
}

// A failed written-out decomposition writes only the rows it finished; the
// general worker has copied the whole matrix before it fails.
TYPED_TEST(LuTest, FailedDecompositionFootprint)
{
    using T = TypeParam;
    for (int n : {4, 7}) {
        SCOPED_TRACE("n=" + std::to_string(n));
        Objects<T> a(Desc::Contig, 1, n, n, 1), d(Desc::Contig, 1, n, n, 2), d0(Desc::Contig, 1, n, n, 2);
        for (int i = 0; i < n; ++i) a.at(0, i, n - 1) = 0;  // singular only at the last pivot, if at all
        for (int j = 0; j < n; ++j) a.at(0, n - 1, j) = 0;
        std::vector<int> index(std::size_t(n), -1);
        ASSERT_EQ(decomp_one(a, index.data(), d, n), kelErrSingular);
        const int last = index[std::size_t(n - 1)];
        for (int j = 0; j < n; ++j) {
            if (n == 4)
                EXPECT_TRUE(kt::same_bits(d.at(0, last, j), d0.at(0, last, j))) << "last row written, column " << j;
            else
                EXPECT_EQ(d.at(0, last, j), T(0));
        }
    }
    // A zero first column fails at once: the written-out path leaves the destination alone.
    Objects<T> a(Desc::Contig, 1, 5, 5), d(Desc::Contig, 1, 5, 5);
    for (int i = 0; i < 5; ++i) a.at(0, i, 0) = 0;
    const auto before = d.snapshot();
    int index[5];
    EXPECT_EQ(decomp_one(a, index, d, 5), kelErrSingular);
    EXPECT_TRUE(d.unchanged_since(before));
}

// The strided array form with a general element stride gives every matrix of
// order outside 3..6 the first index block; every other form advances it.
TYPED_TEST(LuTest, SharedIndexBlockOfTheGeneralStrideArrayForm)
{
    using T = TypeParam;
    struct Case {
        Desc desc;
        int n;
        bool shared;
    };
    const Case cases[] = {{Desc::Strided, 2, true},  {Desc::Strided, 7, true},  {Desc::Strided, 1, true},
                          {Desc::Strided, 3, false}, {Desc::Contig, 2, false},  {Desc::ListS2, 2, false},
                          {Desc::Pointer, 7, false}};
    constexpr int count = 3;
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(kt::name(c.desc)) + " n=" + std::to_string(c.n));
        Objects<T> a(c.desc, count, c.n, c.n, 5), d(c.desc, count, c.n, c.n);
        make_well_conditioned(a, c.n, 9);
        std::vector<int> index(std::size_t(c.n * count), -7);
        ASSERT_EQ(decomp(a, index.data(), d, c.n, count), kelOk);
        for (int k = 0; k < count; ++k) {
            Objects<T> ak(Desc::Contig, 1, c.n, c.n), dk(Desc::Contig, 1, c.n, c.n);
            for (int i = 0; i < c.n; ++i)
                for (int j = 0; j < c.n; ++j) ak.at(0, i, j) = a.at(k, i, j);
            std::vector<int> own = std::vector<int>(std::size_t(c.n));
            ASSERT_EQ(decomp_one(ak, own.data(), dk, c.n), kelOk);
            if (c.shared && k < count - 1) continue;  // overwritten by the next matrix
            const int block = c.shared ? 0 : k;
            for (int i = 0; i < c.n; ++i) EXPECT_EQ(index[std::size_t(block * c.n + i)], own[std::size_t(i)]);
        }
        if (c.shared) {
            for (std::size_t e = std::size_t(c.n); e < index.size(); ++e) EXPECT_EQ(index[e], -7);
        }
    }
}

TYPED_TEST(LuTest, InPlaceEqualsOutOfPlace)
{
    using T = TypeParam;
    constexpr int count = 2;
    for (Desc desc : kAllDescs)
        for (int n = 1; n <= 8; ++n) {
            SCOPED_TRACE(std::string(kt::name(desc)) + " n=" + std::to_string(n));
            Objects<T> a(desc, count, n, n, 3 + n), d(desc, count, n, n);
            std::vector<int> i1(std::size_t(n * count), 0), i2(i1.size(), 0);
            const kelStatus out = decomp(a, i1.data(), d, n, count);
            EXPECT_EQ(decomp(a, i2.data(), a, n, count), out);
            EXPECT_EQ(i1, i2);
            for (int k = 0; k < count; ++k)
                for (int i = 0; i < n; ++i)
                    for (int j = 0; j < n; ++j) ASSERT_TRUE(kt::same_bits(a.at(k, i, j), d.at(k, i, j)));
        }
}

// An array stops at its first singular matrix: those before it are done,
// those after it untouched.
TYPED_TEST(LuTest, ArrayStopsAtTheFirstSingularMatrix)
{
    using T = TypeParam;
    kt::Threads serial(1);
    constexpr int count = 5, bad = 2;
    for (Desc desc : kAllDescs)
        for (int n : {2, 4, 7}) {
            SCOPED_TRACE(std::string(kt::name(desc)) + " n=" + std::to_string(n));
            Objects<T> a(desc, count, n, n, 8), d(desc, count, n, n, 9);
            make_well_conditioned(a, n, 4);
            for (int i = 0; i < n; ++i)
                for (int j = 0; j < n; ++j) a.at(bad, i, j) = 0;
            std::vector<T> dBefore;
            for (int i = 0; i < n; ++i)
                for (int j = 0; j < n; ++j) dBefore.push_back(d.at(bad + 1, i, j));
            const bool shared = shared_block(desc, n);
            std::vector<int> index(std::size_t(n * count), -7);
            ASSERT_EQ(decomp(a, index.data(), d, n, count), kelErrSingular);
            for (int k = 0; k < bad && !shared; ++k) expect_factor(a, d, k, index.data() + k * n, n);
            for (int i = 0; i < n; ++i)
                for (int j = 0; j < n; ++j) EXPECT_TRUE(kt::same_bits(d.at(bad + 1, i, j), dBefore[std::size_t(i * n + j)]));
            for (std::size_t e = std::size_t((bad + 1) * n); e < index.size(); ++e) EXPECT_EQ(index[e], -7);
        }
}

// Serial and parallel runs of every array form give the same bits.
TYPED_TEST(LuTest, ParallelRunsMatchSerialRuns)
{
    using T = TypeParam;
    struct Case {
        int n, count;
    };
    for (Case c : {Case{4, 100}, Case{7, 31}, Case{3, 201}}) {
        for (Desc desc : kAllDescs) {
            SCOPED_TRACE(std::string(kt::name(desc)) + " n=" + std::to_string(c.n));
            const int n = c.n, count = c.count;
            std::vector<T> results[2];
            std::vector<int> indices[2];
            for (int threads : {1, 2}) {
                kt::Threads scope(threads);
                Objects<T> a(desc, count, n, n, 1), d(desc, count, n, n, 2), b(desc, count, 1, n, 3),
                    x(desc, count, 1, n, 4), y(desc, count, 1, n, 5);
                Objects<T> f(single_form(desc), 1, n, n, 6);
                make_well_conditioned(a, n, 2);
                make_well_conditioned(f, n, 3);
                std::vector<int> index(std::size_t(n * count), 0), fIndex(std::size_t(n), 0);
                ASSERT_EQ(decomp(a, index.data(), d, n, count), kelOk);
                if (shared_block(desc, n)) refactor_each(a, index.data(), d, n);
                ASSERT_EQ(solve_mava(d, index.data(), b, x, n, count), kelOk);
                ASSERT_EQ(decomp_one(f, fIndex.data(), f, n), kelOk);
                ASSERT_EQ(solve_mva(f, fIndex.data(), b, y, n, count), kelOk);
                for (int k = 0; k < count; ++k)
                    for (int i = 0; i < n; ++i) {
                        results[threads - 1].push_back(x.at(k, i));
                        results[threads - 1].push_back(y.at(k, i));
                        for (int j = 0; j < n; ++j) results[threads - 1].push_back(d.at(k, i, j));
                    }
                indices[threads - 1] = index;
            }
            ASSERT_EQ(indices[0], indices[1]);
            for (std::size_t e = 0; e < results[0].size(); ++e) ASSERT_TRUE(kt::same_bits(results[0][e], results[1][e]));
        }
    }
}

// Where an array goes parallel, seen through a call from inside an active
// region that allows no further level: a parallel call then runs only the
// first thread's block and leaves the last object unwritten.
TYPED_TEST(LuTest, ParallelThresholds)
{
    using T = TypeParam;
    enum Op { Decomp, Mva, Mava };
    struct Case {
        const char* what;
        Op op;
        int n, count;
        bool parallel;
    };
    const Case cases[] = {
        {"decomposition 4*4*62 = 992", Decomp, 4, 62, false}, {"decomposition 4*4*63 = 1008", Decomp, 4, 63, true},
        {"mva 3*(3+2*115) = 699", Mva, 3, 115, false},        {"mva 3*(3+2*116) = 705", Mva, 3, 116, true},
        {"mva 3*(3+2*117) = 711", Mva, 3, 117, true},         {"mava 4*6*50 = 1200", Mava, 4, 50, false},
        {"mava 4*6*51 = 1224", Mava, 4, 51, true},
    };
    kt::Threads two(2);
    const int savedLevels = omp_get_max_active_levels();
    omp_set_max_active_levels(1);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        Objects<T> a(Desc::Contig, c.count, c.n, c.n, 1), d(Desc::Contig, c.count, c.n, c.n, 2),
            b(Desc::Contig, c.count, 1, c.n, 3), x(Desc::Contig, c.count, 1, c.n, 4);
        make_well_conditioned(a, c.n, 5);
        std::vector<int> index = std::vector<int>(std::size_t(c.n * c.count));
        for (int k = 0; k < c.count; ++k) std::iota(index.begin() + k * c.n, index.begin() + (k + 1) * c.n, 0);
        const int last = c.count - 1;
        const T before = c.op == Decomp ? d.at(last, 0, 0) : x.at(last, 0);
        kelStatus status = kelErrFail;
        bool outer = false;
#pragma omp parallel num_threads(2)
        {
#pragma omp master
            {
                outer = omp_get_num_threads() == 2;
                status = c.op == Decomp ? decomp(a, index.data(), d, c.n, c.count)
                         : c.op == Mva  ? solve_mva(a, index.data(), b, x, c.n, c.count)
                                        : solve_mava(a, index.data(), b, x, c.n, c.count);
            }
        }
        if (!outer) {
            omp_set_max_active_levels(savedLevels);
            GTEST_SKIP() << "no second thread for the outer region";
        }
        EXPECT_EQ(status, kelOk);
        const T after = c.op == Decomp ? d.at(last, 0, 0) : x.at(last, 0);
        EXPECT_EQ(kt::same_bits(before, after), c.parallel) << "last object written: " << !kt::same_bits(before, after);
    }
    omp_set_max_active_levels(savedLevels);
}

// Argument checks: the first failing group decides, and nothing is written.
TYPED_TEST(LuTest, ArgumentChecksInOrder)
{
    using T = TypeParam;
    constexpr int n = 3, count = 2, s = int(sizeof(T));
    Objects<T> a(Desc::Contig, count, n, n), d(Desc::Contig, count, n, n), v(Desc::Contig, count, 1, n);
    Objects<T> ap(Desc::Pointer, count, n, n), dp(Desc::Pointer, count, n, n), vp(Desc::Pointer, count, 1, n);
    Objects<T> al(Desc::List, count, n, n), dl(Desc::List, count, n, n), vl(Desc::List, count, 1, n);
    std::vector<int> idx(std::size_t(n * count), 0);
    int* ix = idx.data();
    T* A = a.base();
    T* D = d.base();
    T* V = v.base();
    const int ro = a.rowStride(), ob = a.objStride(), vo = v.objStride();
    struct Case {
        const char* what;
        std::function<kelStatus()> call;
        kelStatus expected;
    };
    const Case cases[] = {
        {"ma: null index before count 0", [&] { return Lu<T>::ma(A, ob, ro, s, nullptr, D, ob, ro, s, n, 0); }, kelErrNullPointer},
        {"ma: count 0 before order 0", [&] { return Lu<T>::ma(A, ob, ro, s, ix, D, ob, ro, s, 0, 0); }, kelErrCount},
        {"ma: order 0 before stride 2", [&] { return Lu<T>::ma(A, ob, ro, 2, ix, D, ob, ro, s, 0, count); }, kelErrSize},
        {"ma: zero object stride", [&] { return Lu<T>::ma(A, 0, ro, s, ix, D, ob, ro, s, n, count); }, kelErrStride},
        {"ma_P: object stride 6 before shift 2", [&] { return Lu<T>::ma_P(ap.table(), 2, 6, ix, dp.table(), 0, dp.objStride(), n, count); }, kelErrStride},
        {"ma_P: negative shift", [&] { return Lu<T>::ma_P(ap.table(), -s, ap.objStride(), ix, dp.table(), 0, dp.objStride(), n, count); }, kelErrShift},
        {"ma_L: stride 2 before shift 2", [&] { return Lu<T>::ma_L(al.table(), 2, al.rowStride(), 2, ix, dl.table(), 0, dl.rowStride(), s, n, count); }, kelErrStride},
        {"ma_L: shift 2", [&] { return Lu<T>::ma_L(al.table(), 0, al.rowStride(), s, ix, dl.table(), 2, dl.rowStride(), s, n, count); }, kelErrShift},
        {"m: order 0 before stride 3", [&] { return Lu<T>::m(A, ro, 3, ix, D, ro, s, 0); }, kelErrSize},
        {"m: negative row stride", [&] { return Lu<T>::m(A, -ro, s, ix, D, ro, s, n); }, kelErrStride},
        {"m_P: null destination", [&] { return Lu<T>::m_P(ap.table(), 0, ix, nullptr, 0, n); }, kelErrNullPointer},
        {"m_P: negative shift", [&] { return Lu<T>::m_P(ap.table(), 0, ix, dp.table(), -s, n); }, kelErrShift},
        {"mv: null right-hand side", [&] { return Lu<T>::mv(A, ro, s, ix, nullptr, s, V, s, n); }, kelErrNullPointer},
        {"mv: null index", [&] { return Lu<T>::mv(A, ro, s, nullptr, V, s, V, s, n); }, kelErrNullPointer},
        {"mv_P: order 0 before shift 2", [&] { return Lu<T>::mv_P(ap.table(), 0, ix, vp.table(), 2, vp.table(), 0, 0); }, kelErrSize},
        {"mva: count 0 before order 0", [&] { return Lu<T>::mva(A, ro, s, ix, V, vo, s, V, vo, s, 0, 0); }, kelErrCount},
        {"mva: element stride 6", [&] { return Lu<T>::mva(A, ro, s, ix, V, vo, s, V, vo, s + 2, n, count); }, kelErrStride},
        {"mva_P: object stride 0 before shift 2", [&] { return Lu<T>::mva_P(ap.table(), 2, ix, vp.table(), 0, 0, vp.table(), 0, vp.objStride(), n, count); }, kelErrStride},
        {"mva_P: factor shift 2", [&] { return Lu<T>::mva_P(ap.table(), 2, ix, vp.table(), 0, vp.objStride(), vp.table(), 0, vp.objStride(), n, count); }, kelErrShift},
        {"mva_L: null list", [&] { return Lu<T>::mva_L(A, ro, s, ix, nullptr, 0, s, vl.table(), 0, s, n, count); }, kelErrNullPointer},
        {"mva_L: shift -8", [&] { return Lu<T>::mva_L(A, ro, s, ix, vl.table(), -8, s, vl.table(), 0, s, n, count); }, kelErrShift},
        {"mava: zero factor object stride", [&] { return Lu<T>::mava(A, 0, ro, s, ix, V, vo, s, V, vo, s, n, count); }, kelErrStride},
        {"mava_P: count 0 before shift 2", [&] { return Lu<T>::mava_P(ap.table(), 2, ap.objStride(), ix, vp.table(), 0, vp.objStride(), vp.table(), 0, vp.objStride(), n, 0); }, kelErrCount},
        {"mava_L: factor shift 2", [&] { return Lu<T>::mava_L(al.table(), 2, al.rowStride(), s, ix, vl.table(), 0, s, vl.table(), 0, s, n, count); }, kelErrShift},
    };
    const std::vector<std::vector<unsigned char>> before = {d.snapshot(),  v.snapshot(),  dp.snapshot(),
                                                            vp.snapshot(), dl.snapshot(), vl.snapshot()};
    for (const Case& c : cases) EXPECT_EQ(c.call(), c.expected) << c.what;
    const Objects<T>* outs[] = {&d, &v, &dp, &vp, &dl, &vl};
    int o = 0;
    for (const auto& snap : before) EXPECT_TRUE(outs[o++]->unchanged_since(snap));
    EXPECT_TRUE(std::all_of(idx.begin(), idx.end(), [](int e) { return e == 0; }));
}

}  // namespace
