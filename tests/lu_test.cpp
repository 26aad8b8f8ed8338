// LUDecomp and LUBackSubst: factors that reconstruct the matrix and solutions
// with small residuals in every description, identical bits however the work
// is run, the pivot and threshold rules, the shared index block of the
// general-stride strided array form, and where arrays go parallel.
#include <omp.h>

#include <algorithm>
#include <limits>
#include <numeric>

#include "support.h"

namespace {

using kt::Desc;
using kt::is_list;
using kt::kAllForms;
using kt::single_form;
using kt::Objects;

template <class T>
struct Lu;
#define KELM_LU_TABLE(T, S)                                                                                        \
    template <>                                                                                                    \
    struct Lu<T> {                                                                                                 \
        static constexpr auto m = kelmLUDecomp_m_##S, m_P = kelmLUDecomp_m_##S##_P;                               \
        static constexpr auto ma = kelmLUDecomp_ma_##S, ma_P = kelmLUDecomp_ma_##S##_P, ma_L = kelmLUDecomp_ma_##S##_L; \
        static constexpr auto mv = kelmLUBackSubst_mv_##S, mv_P = kelmLUBackSubst_mv_##S##_P;                     \
        static constexpr auto mva = kelmLUBackSubst_mva_##S, mva_P = kelmLUBackSubst_mva_##S##_P,                 \
                              mva_L = kelmLUBackSubst_mva_##S##_L;                                                 \
        static constexpr auto mava = kelmLUBackSubst_mava_##S, mava_P = kelmLUBackSubst_mava_##S##_P,             \
                              mava_L = kelmLUBackSubst_mava_##S##_L;                                               \
    };
KELM_LU_TABLE(float, 32f)
KELM_LU_TABLE(double, 64f)
#undef KELM_LU_TABLE

constexpr Desc kAllDescs[] = {Desc::Contig, Desc::Strided, Desc::Pointer, Desc::List, Desc::ListS2};
// A list call's single operands (the mva factor) keep the strided description.
// The strided array form with a general element stride keeps one index block for orders outside 3..6.
bool shared_block(Desc d, int n) { return d == Desc::Strided && (n < 3 || n > 6); }

template <class T>
kelStatus decomp(Objects<T>& a, int* ix, Objects<T>& d, int n, int count)
{
    if (a.desc() == Desc::Pointer)
        return Lu<T>::ma_P(a.table(), a.shift(), a.objStride(), ix, d.table(), d.shift(), d.objStride(), n, count);
    if (is_list(a.desc()))
        return Lu<T>::ma_L(a.table(), a.shift(), a.rowStride(), a.elemStride(), ix, d.table(), d.shift(), d.rowStride(),
                           d.elemStride(), n, count);
    return Lu<T>::ma(a.base(), a.objStride(), a.rowStride(), a.elemStride(), ix, d.base(), d.objStride(), d.rowStride(),
                     d.elemStride(), n, count);
}

// Object k alone, through the single-matrix entries (strided or pointer).
template <class T>
kelStatus decomp_one(Objects<T>& a, int* ix, Objects<T>& d, int n, int k = 0)
{
    const int s = int(sizeof(T));
    if (a.desc() == Desc::Pointer) return Lu<T>::m_P(a.table(), a.shift() + k * a.objStride(), ix, d.table(), d.shift() + k * d.objStride(), n);
    return Lu<T>::m(a.base() + k * a.objStride() / s, a.rowStride(), a.elemStride(), ix, d.base() + k * d.objStride() / s,
                    d.rowStride(), d.elemStride(), n);
}

template <class T>
kelStatus solve_mava(Objects<T>& f, const int* ix, Objects<T>& b, Objects<T>& x, int n, int count)
{
    if (f.desc() == Desc::Pointer)
        return Lu<T>::mava_P(f.table(), f.shift(), f.objStride(), ix, b.table(), b.shift(), b.objStride(), x.table(),
                             x.shift(), x.objStride(), n, count);
    if (is_list(f.desc()))
        return Lu<T>::mava_L(f.table(), f.shift(), f.rowStride(), f.elemStride(), ix, b.table(), b.shift(), b.elemStride(),
                             x.table(), x.shift(), x.elemStride(), n, count);
    return Lu<T>::mava(f.base(), f.objStride(), f.rowStride(), f.elemStride(), ix, b.base(), b.objStride(), b.elemStride(),
                       x.base(), x.objStride(), x.elemStride(), n, count);
}

// One factor f (in single_form of the vectors' description) for every vector.
template <class T>
kelStatus solve_mva(Objects<T>& f, const int* ix, Objects<T>& b, Objects<T>& x, int n, int count)
{
    if (b.desc() == Desc::Pointer)
        return Lu<T>::mva_P(f.table(), f.shift(), ix, b.table(), b.shift(), b.objStride(), x.table(), x.shift(),
                            x.objStride(), n, count);
    if (is_list(b.desc()))
        return Lu<T>::mva_L(f.base(), f.rowStride(), f.elemStride(), ix, b.table(), b.shift(), b.elemStride(), x.table(),
                            x.shift(), x.elemStride(), n, count);
    return Lu<T>::mva(f.base(), f.rowStride(), f.elemStride(), ix, b.base(), b.objStride(), b.elemStride(), x.base(),
                      x.objStride(), x.elemStride(), n, count);
}

template <class T>
kelStatus solve_mv(Objects<T>& f, const int* ix, Objects<T>& b, Objects<T>& x, int n)
{
    if (f.desc() == Desc::Pointer) return Lu<T>::mv_P(f.table(), f.shift(), ix, b.table(), b.shift(), x.table(), x.shift(), n);
    return Lu<T>::mv(f.base(), f.rowStride(), f.elemStride(), ix, b.base(), b.elemStride(), x.base(), x.elemStride(), n);
}

// Random entries plus 10 on a random permutation: well conditioned, with
// pivots seldom on the diagonal.
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

// The index block is a permutation and P*A = L*U.
template <class T>
void expect_factor(Objects<T>& a, Objects<T>& d, int k, const int* ix, int n)
{
    std::vector<int> sorted(ix, ix + n);
    std::sort(sorted.begin(), sorted.end());
    for (int i = 0; i < n; ++i) ASSERT_EQ(sorted[std::size_t(i)], i) << "object " << k;
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) {
            double lu = 0, scale = 1;
            for (int q = 0; q <= std::min(i, j); ++q) {
                const double t = (q == i ? 1.0 : double(d.at(k, ix[i], q))) * double(d.at(k, ix[q], j));
                lu += t, scale += std::fabs(t);
            }
            ASSERT_NEAR(lu, double(a.at(k, ix[i], j)), tol<T>() * n * scale) << "object " << k << " (" << i << ", " << j << ")";
        }
}

// |A x - b| small against |A| |x| + |b|.
template <class T>
void expect_solution(Objects<T>& a, int ka, Objects<T>& b, Objects<T>& x, int kb, int n)
{
    for (int i = 0; i < n; ++i) {
        double r = -double(b.at(kb, i)), scale = std::fabs(r);
        for (int j = 0; j < n; ++j) {
            const double t = double(a.at(ka, i, j)) * double(x.at(kb, j));
            r += t, scale += std::fabs(t);
        }
        ASSERT_LE(std::fabs(r), tol<T>() * n * scale) << "vector " << kb << " row " << i;
    }
}

template <class T>
class LuTest : public ::testing::Test {};
using Types = ::testing::Types<float, double>;
TYPED_TEST_SUITE(LuTest, Types);

// Every description, orders 1 to 9, on one and on two threads (the counts
// pass every threshold from order 3 on): the factors reconstruct, the
// solutions solve, decomposition in place gives the same bits, and every run
// gives the bits of the serial contiguous one.
TYPED_TEST(LuTest, EveryDescriptionAndThreadCountFactorsSolvesAndAgrees)
{
    using T = TypeParam;
    constexpr int count = 130;
    for (int n = 1; n <= 9; ++n) {
        std::vector<T> reference;
        for (Desc desc : kAllDescs)
            for (int threads : {1, 2}) {
                SCOPED_TRACE(std::string(kt::name(desc)) + " n=" + std::to_string(n) + " threads=" + std::to_string(threads));
                kt::Threads scope(threads);
                Objects<T> a(desc, count, n, n, 10 + n), d(desc, count, n, n, 20), b(desc, count, 1, n, 30),
                    x(desc, count, 1, n, 40), y(desc, count, 1, n, 50), inPlace(desc, count, n, n, 10 + n);
                make_well_conditioned(a, n, 7u * n);
                make_well_conditioned(inPlace, n, 7u * n);
                std::vector<int> ix(std::size_t(n * count), -7), ix2(ix);
                ASSERT_EQ(decomp(a, ix.data(), d, n, count), kelOk);
                ASSERT_EQ(decomp(inPlace, ix2.data(), inPlace, n, count), kelOk);
                EXPECT_EQ(ix, ix2);
                if (shared_block(desc, n)) {  // each matrix overwrote the permutation of the one before
                    const std::vector<int> block0(ix.begin(), ix.begin() + n);
                    if (threads == 1) {
                        EXPECT_TRUE(std::all_of(ix.begin() + n, ix.end(), [](int e) { return e == -7; }));
                    }
                    for (int k = 0; k < count; ++k) ASSERT_EQ(decomp_one(a, ix.data() + k * n, d, n, k), kelOk);
                    if (threads == 1) {
                        EXPECT_TRUE(std::equal(block0.begin(), block0.end(), ix.end() - n));
                    }
                }
                for (int k = 0; k < count; ++k) expect_factor(a, d, k, ix.data() + k * n, n);
                ASSERT_EQ(solve_mava(d, ix.data(), b, x, n, count), kelOk);
                for (int k = 0; k < count; ++k) expect_solution(a, k, b, x, k, n);

                // One factor for every vector (mva) and for one (m, mv).
                const Desc fd = single_form(desc);
                Objects<T> a1(fd, 1, n, n, 60 + n), f1(fd, 1, n, n, 70), b1(fd, 1, 1, n, 80), x1(fd, 1, 1, n, 90);
                make_well_conditioned(a1, n, 3);
                std::vector<int> ix1(std::size_t(n), -7);
                ASSERT_EQ(decomp_one(a1, ix1.data(), f1, n), kelOk);
                expect_factor(a1, f1, 0, ix1.data(), n);
                ASSERT_EQ(solve_mva(f1, ix1.data(), b, y, n, count), kelOk);
                for (int k = 0; k < count; ++k) expect_solution(a1, 0, b, y, k, n);
                ASSERT_EQ(solve_mv(f1, ix1.data(), b1, x1, n), kelOk);
                expect_solution(a1, 0, b1, x1, 0, n);
                for (auto* o : {&d, &x, &y, &inPlace, &f1, &x1}) EXPECT_TRUE(o->canaries_intact());

                std::vector<T> bits;
                for (int k = 0; k < count; ++k)
                    for (int i = 0; i < n; ++i) {
                        bits.insert(bits.end(), {x.at(k, i), y.at(k, i), x1.at(0, i)});
                        for (int j = 0; j < n; ++j) bits.insert(bits.end(), {d.at(k, i, j), inPlace.at(k, i, j), f1.at(0, i, j)});
                    }
                if (reference.empty()) reference = bits;
                for (std::size_t e = 0; e < bits.size(); ++e) ASSERT_TRUE(kt::same_bits(bits[e], reference[e])) << e;
            }
    }
}

// The arithmetic is part of the interface.  Elimination: one reciprocal per
// pivot, then a[i][j] - l*a[k][j].  Back substitution: running sums from zero
// and divisions, except orders 3 to 6, which subtract term by term from the
// highest column down and multiply by reciprocals.
TYPED_TEST(LuTest, ArithmeticIsTheDocumentedOneBitForBit)
{
    using T = TypeParam;
    constexpr int count = 20;
    for (int n = 1; n <= 8; ++n) {
        SCOPED_TRACE("n=" + std::to_string(n));
        Objects<T> a(Desc::Contig, count, n, n, 100 + n), d(Desc::Contig, count, n, n), b(Desc::Contig, count, 1, n, 2),
            x(Desc::Contig, count, 1, n, 3);
        std::vector<int> ix(std::size_t(n * count), 0);
        ASSERT_EQ(decomp(a, ix.data(), d, n, count), kelOk);
        ASSERT_EQ(solve_mava(d, ix.data(), b, x, n, count), kelOk);
        const bool written = n >= 3 && n <= 6;
        for (int k = 0; k < count; ++k) {
            std::vector<int> p(std::size_t(n), 0);
            std::iota(p.begin(), p.end(), 0);
            auto u = [&](int i, int j) -> T& { return a.at(k, p[std::size_t(i)], j); };  // eliminated in place
            for (int c = 0; c < n - 1; ++c) {
                int q = c;
                for (int i = c + 1; i < n; ++i) q = std::fabs(u(i, c)) > std::fabs(u(q, c)) ? i : q;
                std::swap(p[std::size_t(c)], p[std::size_t(q)]);
                const T r = T(1) / u(c, c);
                for (int i = c + 1; i < n; ++i) u(i, c) = u(i, c) * r;
                for (int i = c + 1; i < n; ++i)
                    for (int j = c + 1; j < n; ++j) u(i, j) = u(i, j) - u(i, c) * u(c, j);
            }
            std::vector<T> v(std::size_t(n), T(0));
            auto w = [&](int j) { return v[std::size_t(j)]; };
            for (int i = 0; i < n; ++i) {  // forward
                T e = b.at(k, p[std::size_t(i)]), s = 0;
                if (written) {
                    for (int j = i - 1; j >= 0; --j) e = e - u(i, j) * w(j);
                } else if (i > 0) {
                    for (int j = 0; j < i; ++j) s = s + u(i, j) * w(j);
                    e = e - s;
                }
                v[std::size_t(i)] = e;
            }
            for (int i = n - 1; i >= 0; --i) {  // backward
                T e = w(i), s = 0;
                if (written) {
                    for (int j = n - 1; j > i; --j) e = e - u(i, j) * w(j);
                    v[std::size_t(i)] = e * (T(1) / u(i, i));
                } else {
                    for (int j = i + 1; j < n; ++j) s = s + u(i, j) * w(j);
                    v[std::size_t(i)] = (i == n - 1 ? e : e - s) / u(i, i);
                }
            }
            for (int i = 0; i < n; ++i) {
                ASSERT_EQ(ix[std::size_t(k * n + i)], p[std::size_t(i)]);
                ASSERT_TRUE(kt::same_bits(x.at(k, i), v[std::size_t(i)])) << "object " << k << " x" << i;
                for (int j = 0; j < n; ++j) ASSERT_TRUE(kt::same_bits(d.at(k, i, j), a.at(k, i, j)));
            }
        }
    }
}

// Column 0 holds magnitudes 1, 3, 3, 3...: the first of the equal candidates
// (row 1) wins; with 3, 3, 3... the top row stays.
TYPED_TEST(LuTest, PivotTiesKeepTheEarliestCandidate)
{
    using T = TypeParam;
    for (int n : {2, 3, 4, 6, 7})
        for (bool topTies : {false, true}) {
            Objects<T> a(Desc::Contig, 1, n, n), d(Desc::Contig, 1, n, n);
            for (int i = 0; i < n; ++i)
                for (int j = 0; j < n; ++j) a.at(0, i, j) = j == 0 ? T(i % 2 ? -3 : 3) : T(i == j ? 5 : 0);
            if (!topTies) a.at(0, 0, 0) = 1;
            std::vector<int> ix(std::size_t(n), 0);
            ASSERT_EQ(decomp_one(a, ix.data(), d, n), kelOk);
            EXPECT_EQ(ix[0], topTies ? 0 : 1) << "n=" << n;
        }
}

// Orders 3 to 6 accept pivots down to twice the smallest normal number (tau);
// the general orders need more than the machine epsilon.
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
        {"order 1, epsilon", 1, 0, 1, eps, kelErrSingular},
        {"order 1, just above epsilon", 1, 0, 1, eps * (1 + eps), kelOk},
        {"order 2, last pivot epsilon", 2, 1, 2, eps, kelErrSingular},
        {"order 8, last pivot 1e-30 (1e-300)", 8, 7, 8, tiny, kelErrSingular},
    };
    for (const Case& c : cases) {
        Objects<T> a(Desc::Strided, 1, c.n, c.n), d(Desc::Strided, 1, c.n, c.n);
        for (int i = 0; i < c.n; ++i)
            for (int j = 0; j < c.n; ++j) a.at(0, i, j) = i != j ? T(0) : (i >= c.from && i < c.to) ? c.pivot : T(1);
        std::vector<int> ix(std::size_t(c.n), 0);
        EXPECT_EQ(decomp_one(a, ix.data(), d, c.n), c.expected) << c.what;
    }
}

// An array stops at its first singular matrix: those before it are done,
// those after it untouched.  Written-out orders leave the rows they did not
// finish unwritten, so a zero matrix of order 4 leaves its destination alone.
TYPED_TEST(LuTest, ArrayStopsAtTheFirstSingularMatrix)
{
    using T = TypeParam;
    kt::Threads serial(1);
    constexpr int count = 5, bad = 2;
    for (Desc desc : kAllDescs)
        for (int n : {2, 4, 7}) {
            SCOPED_TRACE(std::string(kt::name(desc)) + " n=" + std::to_string(n));
            Objects<T> a(desc, count, n, n, 8), d(desc, count, n, n, 9), untouched(desc, count, n, n, 9);
            make_well_conditioned(a, n, 4);
            for (int i = 0; i < n; ++i)
                for (int j = 0; j < n; ++j) a.at(bad, i, j) = 0;
            std::vector<int> ix(std::size_t(n * count), -7);
            ASSERT_EQ(decomp(a, ix.data(), d, n, count), kelErrSingular);
            for (int k = 0; k < bad && !shared_block(desc, n); ++k) expect_factor(a, d, k, ix.data() + k * n, n);
            for (int k = n == 4 ? bad : bad + 1; k < count; ++k)
                for (int i = 0; i < n; ++i)
                    for (int j = 0; j < n; ++j) EXPECT_TRUE(kt::same_bits(d.at(k, i, j), untouched.at(k, i, j)));
            EXPECT_TRUE(std::all_of(ix.begin() + (bad + 1) * n, ix.end(), [](int e) { return e == -7; }));
        }
}

// Where an array goes parallel, seen from inside an active region that
// allows no further level: a parallel call then does only the first thread's
// block and leaves the last object unwritten.  The one-factor back
// substitution measures n*(n + 2*count).
TYPED_TEST(LuTest, ParallelThresholds)
{
    using T = TypeParam;
    enum Op { Decomp, Mva, Mava };
    struct Case {
        Op op;
        int n, count;
        bool parallel;
    };
    const Case cases[] = {{Decomp, 4, 62, false}, {Decomp, 4, 63, true}, {Mva, 3, 115, false}, {Mva, 3, 116, true},
                          {Mva, 3, 117, true},    {Mava, 4, 50, false},  {Mava, 4, 51, true}};
    kt::Threads two(2);
    const int savedLevels = omp_get_max_active_levels();
    omp_set_max_active_levels(1);
    for (const Case& c : cases) {
        Objects<T> a(Desc::Contig, c.count, c.n, c.n, 1), d(Desc::Contig, c.count, c.n, c.n, 2),
            b(Desc::Contig, c.count, 1, c.n, 3), x(Desc::Contig, c.count, 1, c.n, 4);
        make_well_conditioned(a, c.n, 5);
        std::vector<int> ix(std::size_t(c.n * c.count), 0);
        for (int k = 0; k < c.count; ++k) std::iota(ix.begin() + k * c.n, ix.begin() + (k + 1) * c.n, 0);
        T& last = c.op == Decomp ? d.at(c.count - 1, 0, 0) : x.at(c.count - 1, 0);
        const T before = last;
        kelStatus status = kelErrFail;
        int team = 0;
#pragma omp parallel num_threads(2)
#pragma omp master
        {
            team = omp_get_num_threads();
            status = c.op == Decomp ? decomp(a, ix.data(), d, c.n, c.count)
                     : c.op == Mva  ? solve_mva(a, ix.data(), b, x, c.n, c.count)
                                    : solve_mava(a, ix.data(), b, x, c.n, c.count);
        }
        if (team != 2) {
            omp_set_max_active_levels(savedLevels);
            GTEST_SKIP() << "no second thread for the outer region";
        }
        EXPECT_EQ(status, kelOk);
        EXPECT_EQ(kt::same_bits(before, last), c.parallel) << "op " << c.op << " n=" << c.n << " count=" << c.count;
    }
    omp_set_max_active_levels(savedLevels);
}

}  // namespace
