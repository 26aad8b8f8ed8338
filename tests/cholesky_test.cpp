// CholeskyDecomp and CholeskyBackSubst: factors in the documented layout and
// arithmetic (bit for bit, except the four-lane 32f decomposition, whose
// estimated reciprocal square roots are held to a tolerance), solutions with
// small residuals, the untouched upper triangle, failures in the middle of
// arrays, the check order and where each member goes parallel.
#include <omp.h>

#include <algorithm>
#include <limits>

#include "support.h"

namespace {

using kt::Desc;
using kt::is_list;
using kt::kAllForms;
using kt::single_form;
using kt::Objects;

template <class T>
struct Chol;
#define KELM_CHOL_TABLE(T, S)                                                                                           \
    template <>                                                                                                         \
    struct Chol<T> {                                                                                                    \
        static constexpr auto m = kelmCholeskyDecomp_m_##S, m_P = kelmCholeskyDecomp_m_##S##_P;                        \
        static constexpr auto ma = kelmCholeskyDecomp_ma_##S, ma_P = kelmCholeskyDecomp_ma_##S##_P,                    \
                              ma_L = kelmCholeskyDecomp_ma_##S##_L;                                                     \
        static constexpr auto mv = kelmCholeskyBackSubst_mv_##S, mv_P = kelmCholeskyBackSubst_mv_##S##_P;              \
        static constexpr auto mva = kelmCholeskyBackSubst_mva_##S, mva_P = kelmCholeskyBackSubst_mva_##S##_P,          \
                              mva_L = kelmCholeskyBackSubst_mva_##S##_L;                                                \
        static constexpr auto mava = kelmCholeskyBackSubst_mava_##S, mava_P = kelmCholeskyBackSubst_mava_##S##_P,      \
                              mava_L = kelmCholeskyBackSubst_mava_##S##_L;                                              \
    };
KELM_CHOL_TABLE(float, 32f)
KELM_CHOL_TABLE(double, 64f)
#undef KELM_CHOL_TABLE

constexpr Desc kAllDescs[] = {Desc::Contig, Desc::Strided, Desc::Pointer, Desc::List, Desc::ListS2};
// The decomposition that runs four matrices at a time on estimated roots.
template <class T>
bool four_lane(Desc d, int n) { return sizeof(T) == 4 && d == Desc::Contig && n >= 3 && n <= 6; }

template <class T>
kelStatus decomp(Objects<T>& a, Objects<T>& d, int n, int count)
{
    if (a.desc() == Desc::Pointer)
        return Chol<T>::ma_P(a.table(), a.shift(), a.objStride(), d.table(), d.shift(), d.objStride(), n, count);
    if (is_list(a.desc()))
        return Chol<T>::ma_L(a.table(), a.shift(), a.rowStride(), a.elemStride(), d.table(), d.shift(), d.rowStride(),
                             d.elemStride(), n, count);
    return Chol<T>::ma(a.base(), a.objStride(), a.rowStride(), a.elemStride(), d.base(), d.objStride(), d.rowStride(),
                       d.elemStride(), n, count);
}

template <class T>
kelStatus decomp_one(Objects<T>& a, Objects<T>& d, int n)
{
    if (a.desc() == Desc::Pointer) return Chol<T>::m_P(a.table(), a.shift(), d.table(), d.shift(), n);
    return Chol<T>::m(a.base(), a.rowStride(), a.elemStride(), d.base(), d.rowStride(), d.elemStride(), n);
}

template <class T>
kelStatus solve_mava(Objects<T>& f, Objects<T>& b, Objects<T>& x, int n, int count)
{
    if (f.desc() == Desc::Pointer)
        return Chol<T>::mava_P(f.table(), f.shift(), f.objStride(), b.table(), b.shift(), b.objStride(), x.table(),
                               x.shift(), x.objStride(), n, count);
    if (is_list(f.desc()))
        return Chol<T>::mava_L(f.table(), f.shift(), f.rowStride(), f.elemStride(), b.table(), b.shift(), b.elemStride(),
                               x.table(), x.shift(), x.elemStride(), n, count);
    return Chol<T>::mava(f.base(), f.objStride(), f.rowStride(), f.elemStride(), b.base(), b.objStride(), b.elemStride(),
                         x.base(), x.objStride(), x.elemStride(), n, count);
}

// One factor f (in single_form of the vectors' description) for every vector.
template <class T>
kelStatus solve_mva(Objects<T>& f, Objects<T>& b, Objects<T>& x, int n, int count)
{
    if (b.desc() == Desc::Pointer)
        return Chol<T>::mva_P(f.table(), f.shift(), b.table(), b.shift(), b.objStride(), x.table(), x.shift(),
                              x.objStride(), n, count);
    if (is_list(b.desc()))
        return Chol<T>::mva_L(f.base(), f.rowStride(), f.elemStride(), b.table(), b.shift(), b.elemStride(), x.table(),
                              x.shift(), x.elemStride(), n, count);
    return Chol<T>::mva(f.base(), f.rowStride(), f.elemStride(), b.base(), b.objStride(), b.elemStride(), x.base(),
                        x.objStride(), x.elemStride(), n, count);
}

template <class T>
kelStatus solve_mv(Objects<T>& f, Objects<T>& b, Objects<T>& x, int n)
{
    if (f.desc() == Desc::Pointer) return Chol<T>::mv_P(f.table(), f.shift(), b.table(), b.shift(), x.table(), x.shift(), n);
    return Chol<T>::mv(f.base(), f.rowStride(), f.elemStride(), b.base(), b.elemStride(), x.base(), x.elemStride(), n);
}

// A = G*G^T + n*I in the lower triangle, NaN above it (never to be read).
template <class T>
void make_spd(Objects<T>& a, int n, unsigned seed)
{
    std::mt19937 rng(seed);
    std::uniform_real_distribution<double> u(-1.0, 1.0);
    std::vector<double> g(std::size_t(n * n));
    for (int k = 0; k < a.count(); ++k) {
        for (double& e : g) e = u(rng);
        for (int i = 0; i < n; ++i)
            for (int j = 0; j < n; ++j) {
                double s = i == j ? n : 0;
                for (int q = 0; q < n; ++q) s += g[std::size_t(i * n + q)] * g[std::size_t(j * n + q)];
                a.at(k, i, j) = j <= i ? T(s) : std::numeric_limits<T>::quiet_NaN();
            }
    }
}

// The documented arithmetic on one matrix: l (n*n, row-major, reciprocals on
// the diagonal) or the row at which it fails.
template <class T>
int reference_factor(Objects<T>& a, int k, int n, std::vector<T>& l)
{
    l.assign(std::size_t(n * n), T(0));
    auto L = [&](int i, int j) -> T& { return l[std::size_t(i * n + j)]; };
    for (int i = 0; i < n; ++i) {
        for (int j = 0; j < i; ++j) {
            T s = a.at(k, i, j);
            for (int q = 0; q < j; ++q) s = s - L(i, q) * L(j, q);
            L(i, j) = s * L(j, j);
        }
        T s = a.at(k, i, i);
        for (int q = 0; q < i; ++q) s = s - L(i, q) * L(i, q);
        if (!(s > 0)) return i;
        L(i, i) = T(1) / std::sqrt(s);
    }
    return n;
}

template <class T>
std::vector<T> reference_solve(Objects<T>& f, int kf, Objects<T>& b, int kb, int n)
{
    std::vector<T> x(std::size_t(n), T(0));
    for (int i = 0; i < n; ++i) {
        T s = b.at(kb, i);
        for (int q = 0; q < i; ++q) s = s - f.at(kf, i, q) * x[std::size_t(q)];
        x[std::size_t(i)] = s * f.at(kf, i, i);
    }
    for (int i = n - 1; i >= 0; --i) {
        T s = x[std::size_t(i)];
        for (int q = n - 1; q > i; --q) s = s - f.at(kf, q, i) * x[std::size_t(q)];
        x[std::size_t(i)] = s * f.at(kf, i, i);
    }
    return x;
}

template <class T>
double tol() { return sizeof(T) == 4 ? 2e-5 : 1e-13; }

// Rows 0..rows-1 of object k equal the reference: bit for bit, or within the
// estimate's tolerance.
template <class T>
void expect_rows(Objects<T>& d, int k, const std::vector<T>& l, int n, int rows, bool estimated)
{
    for (int i = 0; i < rows; ++i)
        for (int j = 0; j <= i; ++j) {
            const T got = d.at(k, i, j), want = l[std::size_t(i * n + j)];
            if (estimated) {
                ASSERT_NEAR(double(got), double(want), 1e-5 * std::max(1.0, std::fabs(double(want))))
                    << "object " << k << " (" << i << ", " << j << ")";
            } else {
                ASSERT_TRUE(kt::same_bits(got, want)) << "object " << k << " (" << i << ", " << j << ") " << got << " " << want;
            }
        }
}

// L*L^T = A (l[i][i] being the reciprocal) and A*x = b, to the type's precision.
template <class T>
void expect_reconstructs(Objects<T>& a, Objects<T>& d, int k, int n)
{
    auto l = [&](int i, int j) { return i == j ? 1 / double(d.at(k, i, i)) : double(d.at(k, i, j)); };
    for (int i = 0; i < n; ++i)
        for (int j = 0; j <= i; ++j) {
            double s = 0;
            for (int q = 0; q <= j; ++q) s += l(i, q) * l(j, q);
            ASSERT_NEAR(s, double(a.at(k, i, j)), tol<T>() * 4 * n * n) << "object " << k << " (" << i << ", " << j << ")";
        }
}

template <class T>
void expect_solves(Objects<T>& a, int ka, Objects<T>& b, Objects<T>& x, int kb, int n)
{
    for (int i = 0; i < n; ++i) {
        double r = -double(b.at(kb, i)), scale = std::fabs(r);
        for (int j = 0; j < n; ++j) {
            const double t = double(j <= i ? a.at(ka, i, j) : a.at(ka, j, i)) * double(x.at(kb, j));
            r += t, scale += std::fabs(t);
        }
        ASSERT_LE(std::fabs(r), tol<T>() * n * scale) << "vector " << kb << " row " << i;
    }
}

template <class T>
class CholeskyTest : public ::testing::Test {};
using Types = ::testing::Types<float, double>;
TYPED_TEST_SUITE(CholeskyTest, Types);

// Every description, orders 1 to 9, serial and on two threads (the counts
// pass every bound): factors in the documented arithmetic that reconstruct
// A, solutions in the documented arithmetic that solve, the upper triangle
// of the destination kept, in-place decomposition, and the same bits on
// every run.
TYPED_TEST(CholeskyTest, EveryDescriptionFactorsAndSolves)
{
    using T = TypeParam;
    for (int n = 1; n <= 9; ++n)
        for (Desc desc : kAllDescs) {
            const int count = n <= 4 ? 1001 : 401;
            std::vector<T> reference;
            for (int threads : {1, 2}) {
                SCOPED_TRACE(std::string(kt::name(desc)) + " n=" + std::to_string(n) + " threads=" + std::to_string(threads));
                kt::Threads scope(threads);
                const bool est = four_lane<T>(desc, n);
                Objects<T> a(desc, count, n, n), d(desc, count, n, n, 2), before(desc, count, n, n, 2),
                    inPlace(desc, count, n, n), b(desc, count, 1, n, 3), x(desc, count, 1, n, 4), y(desc, count, 1, n, 5);
                make_spd(a, n, 10u + n);
                make_spd(inPlace, n, 10u + n);
                ASSERT_EQ(decomp(a, d, n, count), kelOk);
                ASSERT_EQ(decomp(inPlace, inPlace, n, count), kelOk);
                std::vector<T> l;
                for (int k = 0; k < count; ++k) {
                    ASSERT_EQ(reference_factor(a, k, n, l), n);
                    expect_rows(d, k, l, n, n, est);
                    expect_reconstructs(a, d, k, n);
                    for (int i = 0; i < n; ++i)
                        for (int j = 0; j < n; ++j) {
                            ASSERT_TRUE(kt::same_bits(inPlace.at(k, i, j), j <= i ? d.at(k, i, j) : a.at(k, i, j)));
                            if (j > i) {
                                ASSERT_TRUE(kt::same_bits(d.at(k, i, j), before.at(k, i, j)));
                            }
                        }
                }
                ASSERT_EQ(solve_mava(d, b, x, n, count), kelOk);
                for (int k = 0; k < count; ++k) {
                    expect_solves(a, k, b, x, k, n);
                    const std::vector<T> want = reference_solve(d, k, b, k, n);
                    for (int i = 0; i < n; ++i) ASSERT_TRUE(kt::same_bits(x.at(k, i), want[std::size_t(i)])) << k;
                }

                // One factor for every vector (mva), and for one (m, mv).
                const Desc fd = single_form(desc);
                Objects<T> a1(fd, 1, n, n), f1(fd, 1, n, n, 7), b1(fd, 1, 1, n, 6), x1(fd, 1, 1, n, 8);
                make_spd(a1, n, 3);
                ASSERT_EQ(decomp_one(a1, f1, n), kelOk);
                ASSERT_EQ(reference_factor(a1, 0, n, l), n);
                expect_rows(f1, 0, l, n, n, false);
                ASSERT_EQ(solve_mva(f1, b, y, n, count), kelOk);
                ASSERT_EQ(solve_mv(f1, b1, x1, n), kelOk);
                for (int k = 0; k < count; ++k) {
                    const std::vector<T> want = reference_solve(f1, 0, b, k, n);
                    for (int i = 0; i < n; ++i) ASSERT_TRUE(kt::same_bits(y.at(k, i), want[std::size_t(i)])) << k;
                }
                expect_solves(a1, 0, b, y, count - 1, n);
                const std::vector<T> want1 = reference_solve(f1, 0, b1, 0, n);
                for (int i = 0; i < n; ++i) ASSERT_TRUE(kt::same_bits(x1.at(0, i), want1[std::size_t(i)]));
                for (auto* o : {&d, &inPlace, &x, &y, &f1, &x1}) EXPECT_TRUE(o->canaries_intact());

                std::vector<T> bits;
                for (int k = 0; k < count; ++k)
                    for (int i = 0; i < n; ++i) {
                        bits.insert(bits.end(), {x.at(k, i), y.at(k, i)});
                        for (int j = 0; j <= i; ++j) bits.push_back(d.at(k, i, j));
                    }
                if (reference.empty()) reference = bits;
                for (std::size_t e = 0; e < bits.size(); ++e) ASSERT_TRUE(kt::same_bits(bits[e], reference[e])) << e;
            }
        }
}

// The four-lane decomposition: count = 5 runs objects 0..3 as a group and
// object 4 on its own, with the same formulas, so equal matrices at 0 and 4
// give equal bits; both agree with 1/sqrt(s) to single-precision rounding.
TYPED_TEST(CholeskyTest, FourLaneGroupAndRemainderAgree)
{
    using T = TypeParam;
    for (int n = 3; n <= 6; ++n) {
        Objects<T> a(Desc::Contig, 5, n, n), d(Desc::Contig, 5, n, n);
        make_spd(a, n, 40u + n);
        for (int i = 0; i < n; ++i)
            for (int j = 0; j <= i; ++j) a.at(4, i, j) = a.at(0, i, j);
        ASSERT_EQ(decomp(a, d, n, 5), kelOk);
        std::vector<T> l;
        for (int k = 0; k < 5; ++k) {
            ASSERT_EQ(reference_factor(a, k, n, l), n);
            expect_rows(d, k, l, n, n, four_lane<T>(Desc::Contig, n));
        }
        for (int i = 0; i < n; ++i)
            for (int j = 0; j <= i; ++j) EXPECT_TRUE(kt::same_bits(d.at(0, i, j), d.at(4, i, j))) << "n=" << n;
    }
}

// n = 1: 4 gives 0.5; 0, a negative value and (outside the four-lane path) a
// NaN fail.  A zero diagonal value inside a larger matrix fails everywhere;
// a NaN passes the four-lane test.
TYPED_TEST(CholeskyTest, DiagonalTest)
{
    using T = TypeParam;
    const T nan = std::numeric_limits<T>::quiet_NaN();
    struct Case {
        T a00;
        kelStatus expected;
    };
    for (const Case& c : {Case{4, kelOk}, Case{0, kelErrNotPosDef}, Case{-1, kelErrNotPosDef}, Case{nan, kelErrNotPosDef}})
        for (Desc desc : kAllDescs) {
            Objects<T> a(desc, 3, 1, 1), d(desc, 3, 1, 1);
            for (int k = 0; k < 3; ++k) a.at(k, 0, 0) = k == 1 ? c.a00 : T(1);
            EXPECT_EQ(decomp(a, d, 1, 3), c.expected) << kt::name(desc) << " " << c.a00;
            if (c.expected == kelOk) {
                EXPECT_EQ(d.at(1, 0, 0), T(0.5));
            }
            if (!is_list(desc)) {
                Objects<T> s(single_form(desc), 1, 1, 1), e(single_form(desc), 1, 1, 1);
                s.at(0, 0, 0) = c.a00;
                EXPECT_EQ(decomp_one(s, e, 1), c.expected);
            }
        }
    for (int n = 3; n <= 7; ++n)
        for (Desc desc : {Desc::Contig, Desc::Strided}) {
            SCOPED_TRACE(std::string(kt::name(desc)) + " n=" + std::to_string(n));
            Objects<T> a(desc, 4, n, n), d(desc, 4, n, n);
            make_spd(a, n, 9);
            a.at(1, 1, 0) = 1, a.at(1, 0, 0) = 1, a.at(1, 1, 1) = 1;  // s = 1 - 1*1 = 0 in row 1
            EXPECT_EQ(decomp(a, d, n, 4), kelErrNotPosDef);
            make_spd(a, n, 9);
            a.at(2, 2, 2) = nan;
            EXPECT_EQ(decomp(a, d, n, 4), four_lane<T>(desc, n) ? kelOk : kelErrNotPosDef);
        }
}

// A matrix that fails at row 2, at object 2 or 5 of 7 (inside a full group
// of four, inside the short last group): the objects before it are complete,
// its finished rows (and, outside the four-lane estimate path, the entries
// left of the diagonal of row 2) are written, the objects after it are
// untouched.  The four-lane estimate path stops its whole group after row 1
// (a group of four, or the one remainder object).
TYPED_TEST(CholeskyTest, ArrayStopsAtTheFirstFailure)
{
    using T = TypeParam;
    kt::Threads serial(1);
    constexpr int count = 7, full = 4 * (count / 4);
    for (int bad : {2, 5})
        for (Desc desc : kAllDescs)
            for (int n : {3, 4, 6, 8}) {
                SCOPED_TRACE(std::string(kt::name(desc)) + " n=" + std::to_string(n) + " bad=" + std::to_string(bad));
                Objects<T> a(desc, count, n, n), d(desc, count, n, n, 9), untouched(desc, count, n, n, 9);
                make_spd(a, n, 4);
                a.at(bad, 2, 2) = -100;
                ASSERT_EQ(decomp(a, d, n, count), kelErrNotPosDef);
                std::vector<T> l;
                const bool est = four_lane<T>(desc, n);
                const int g0 = bad < full ? bad / 4 * 4 : bad, g1 = bad < full ? g0 + 4 : bad + 1;
                for (int k = 0; k < count; ++k) {
                    const int rows = est ? (k < g0 ? n : k < g1 ? 2 : 0) : k < bad ? n : k == bad ? 2 : 0;
                    ASSERT_EQ(reference_factor(a, k, n, l), k == bad ? 2 : n);
                    expect_rows(d, k, l, n, rows, est);
                    for (int i = rows; i < n; ++i)
                        for (int j = 0; j < n; ++j) {
                            const bool leftOfFailingDiagonal = !est && k == bad && i == 2 && j < 2;
                            const T want = leftOfFailingDiagonal ? l[std::size_t(i * n + j)] : untouched.at(k, i, j);
                            EXPECT_TRUE(kt::same_bits(d.at(k, i, j), want)) << k << " " << i << " " << j;
                        }
                }
            }
}

// Where each member goes parallel, on both sides of its bound, seen from
// inside an active region that allows no further level: a parallel call then
// does only the first thread's block and leaves the last object unwritten.
TYPED_TEST(CholeskyTest, ParallelBounds)
{
    using T = TypeParam;
    const bool f32 = sizeof(T) == 4;
    enum Op { Decomp, Mva, Mava };
    struct Member {
        Op op;
        Desc desc;
        int bound;
    };
    const Member members[] = {
        {Decomp, Desc::Contig, f32 ? 7500 : 2000}, {Decomp, Desc::Strided, f32 ? 7500 : 2000},
        {Decomp, Desc::List, f32 ? 2000 : 720},    {Decomp, Desc::ListS2, 2000},
        {Decomp, Desc::Pointer, 2000},             {Mva, Desc::Contig, f32 ? 1200 : 720},
        {Mva, Desc::Strided, f32 ? 1200 : 720},    {Mva, Desc::List, 720},
        {Mva, Desc::ListS2, 720},                  {Mva, Desc::Pointer, 720},
        {Mava, Desc::Contig, f32 ? 2050 : 1700},   {Mava, Desc::Strided, 1700},
        {Mava, Desc::List, 1700},                  {Mava, Desc::ListS2, 1700},
        {Mava, Desc::Pointer, f32 ? 1700 : 2050},
    };
    auto measure = [](Op op, int n, int count) {
        return op == Decomp ? n * n * count : op == Mva ? n * (n + 2 * count) : n * (n + 2) * count;
    };
    kt::Threads two(2);
    const int savedLevels = omp_get_max_active_levels();
    omp_set_max_active_levels(1);
    for (const Member& m : members)
        for (int n : {3, 4}) {
            int last = 1;  // the largest count at or below the bound
            while (measure(m.op, n, last + 1) <= m.bound) ++last;
            for (int count : {last, last + 1}) {
                const Desc fd = single_form(m.desc);
                Objects<T> a(m.desc, count, n, n), d(m.desc, count, n, n, 2), b(m.desc, count, 1, n, 3),
                    x(m.desc, count, 1, n, 4), a1(fd, 1, n, n);
                make_spd(a, n, 5);
                make_spd(a1, n, 5);
                T& lastOut = m.op == Decomp ? d.at(count - 1, 0, 0) : x.at(count - 1, 0);
                const T before = lastOut;
                kelStatus status = kelErrFail;
                int team = 0;
#pragma omp parallel num_threads(2)
#pragma omp master
                {
                    team = omp_get_num_threads();
                    status = m.op == Decomp ? decomp(a, d, n, count)
                             : m.op == Mva  ? solve_mva(a1, b, x, n, count)
                                            : solve_mava(a, b, x, n, count);
                }
                if (team != 2) {
                    omp_set_max_active_levels(savedLevels);
                    GTEST_SKIP() << "no second thread for the outer region";
                }
                EXPECT_EQ(status, kelOk);
                EXPECT_EQ(kt::same_bits(before, lastOut), measure(m.op, n, count) > m.bound)
                    << "op " << m.op << " " << kt::name(m.desc) << " n=" << n << " count=" << count;
            }
        }
    omp_set_max_active_levels(savedLevels);
}

}  // namespace
