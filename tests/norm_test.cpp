// Norms and trace: every description and type against plain references,
// the kept summation orders, the estimate-based 32f root, argument checks in
// each member's order, and the parallel thresholds.
#include <gtest/gtest.h>
#include <omp.h>

#include <cmath>
#include <functional>
#include <limits>
#include <vector>

#include "support.h"

namespace {

using kt::Desc;

enum class Op { L2, Frob, Trace };
const char* op_name(Op op) { return op == Op::L2 ? "L2Norm" : op == Op::Frob ? "FrobNorm" : "Trace"; }

template <class T>
struct Api;
#define KT_NORM_API(T, S)                                                                                        \
    template <>                                                                                                  \
    struct Api<T> {                                                                                              \
        static constexpr auto l2 = kelmL2Norm_v_##S, l2P = kelmL2Norm_v_##S##_P;                                \
        static constexpr auto l2a = kelmL2Norm_va_##S, l2aP = kelmL2Norm_va_##S##_P, l2aL = kelmL2Norm_va_##S##_L; \
        static constexpr auto fr = kelmFrobNorm_m_##S, frP = kelmFrobNorm_m_##S##_P;                            \
        static constexpr auto fra = kelmFrobNorm_ma_##S, fraP = kelmFrobNorm_ma_##S##_P,                        \
                              fraL = kelmFrobNorm_ma_##S##_L;                                                    \
        static constexpr auto tr = kelmTrace_m_##S, trP = kelmTrace_m_##S##_P;                                  \
        static constexpr auto tra = kelmTrace_ma_##S, traP = kelmTrace_ma_##S##_P, traL = kelmTrace_ma_##S##_L;  \
    };
KT_NORM_API(float, 32f)
KT_NORM_API(double, 64f)

constexpr Desc kAll[] = {Desc::Contig, Desc::Strided, Desc::Pointer, Desc::List, Desc::ListS2};

// The objects of one call: h x w (vectors: h = 1, w = len; trace: w = h).
template <class T>
kelStatus run_array(Op op, kt::Objects<T>& o, int h, int w, T* dst)
{
    using A = Api<T>;
    const int n = o.count();
    const bool strided = o.desc() == Desc::Contig || o.desc() == Desc::Strided;
    if (o.desc() == Desc::Pointer) {
        if (op == Op::L2) return A::l2aP(o.table(), o.shift(), o.objStride(), dst, w, n);
        if (op == Op::Frob) return A::fraP(o.table(), o.shift(), o.objStride(), w, h, dst, n);
        return A::traP(o.table(), o.shift(), o.objStride(), w, dst, n);
    }
    if (strided) {
        if (op == Op::L2) return A::l2a(o.base(), o.objStride(), o.elemStride(), dst, w, n);
        if (op == Op::Frob) return A::fra(o.base(), o.objStride(), o.rowStride(), o.elemStride(), w, h, dst, n);
        return A::tra(o.base(), o.objStride(), o.rowStride(), o.elemStride(), w, dst, n);
    }
    if (op == Op::L2) return A::l2aL(o.table(), o.shift(), o.elemStride(), dst, w, n);
    if (op == Op::Frob) return A::fraL(o.table(), o.shift(), o.rowStride(), o.elemStride(), w, h, dst, n);
    return A::traL(o.table(), o.shift(), o.rowStride(), o.elemStride(), w, dst, n);
}

// Object k through the single-object form (strided or pointer descriptions).
template <class T>
kelStatus run_single(Op op, kt::Objects<T>& o, int k, int h, int w, T* dst)
{
    using A = Api<T>;
    if (o.desc() == Desc::Pointer) {
        const int shift = o.shift() + k * o.objStride();
        if (op == Op::L2) return A::l2P(o.table(), shift, dst, w);
        if (op == Op::Frob) return A::frP(o.table(), shift, w, h, dst);
        return A::trP(o.table(), shift, w, dst);
    }
    T* p = &o.at(k, 0, 0);
    if (op == Op::L2) return A::l2(p, o.elemStride(), dst, w);
    if (op == Op::Frob) return A::fr(p, o.rowStride(), o.elemStride(), w, h, dst);
    return A::tr(p, o.rowStride(), o.elemStride(), w, dst);
}

// The defined results, written plainly.  Exact except for the estimate-based
// root (contiguous 32f vectors of length 3..6), where *tol is set.
template <class T>
T reference(Op op, kt::Objects<T>& o, int k, int h, int w, double* tol)
{
    *tol = 0;
    if (op == Op::Trace) {
        auto d = [&](int i) { return o.at(k, i, i); };
        if (w == 3) return d(0) + d(1) + d(2);
        if (w == 4) return d(0) + d(1) + d(2) + d(3);
        if (w == 5) return d(4) + d(0) + d(1) + d(2) + d(3);
        T s = 0;
        for (int i = 0; i < w; ++i) s = s + d(i);
        return s;
    }
    const bool fast32 = op == Op::L2 && sizeof(T) == 4 && o.desc() == Desc::Contig;
    if (fast32 && w >= 11) {
        T p[4] = {0, 0, 0, 0};
        for (int j = 0; j < w; ++j) p[j % 4] = p[j % 4] + o.at(k, j) * o.at(k, j);
        return std::sqrt((p[0] + p[1]) + (p[2] + p[3]));
    }
    T s = o.at(k, 0, 0) * o.at(k, 0, 0);
    for (int e = 1; e < h * w; ++e) s = s + o.at(k, e / w, e % w) * o.at(k, e / w, e % w);
    const T r = std::sqrt(s);
    if (fast32 && w >= 3 && w <= 6) *tol = 4e-7 * r;
    return r;
}

struct Shape {
    Op op;
    int h, w;
};

std::vector<Shape> shapes()
{
    std::vector<Shape> v;
    for (int len : {1, 2, 3, 4, 5, 6, 7, 10, 11, 12, 13, 19}) v.push_back({Op::L2, 1, len});
    for (int n : {1, 2, 3, 4, 5, 6, 7}) v.push_back({Op::Frob, n, n});
    for (auto hw : {std::pair{2, 5}, {4, 3}, {6, 1}}) v.push_back({Op::Frob, hw.first, hw.second});
    for (int n : {1, 2, 3, 4, 5, 6, 7, 9}) v.push_back({Op::Trace, n, n});
    return v;
}

template <class T>
void matches_reference()
{
    for (const Shape& s : shapes())
        for (Desc d : kAll)
            for (int count : {1, 3, 4, 9, 21}) {  // 21: two blocks of eight, one of four, one alone
                SCOPED_TRACE(testing::Message() << op_name(s.op) << " " << kt::type_name<T>() << " " << kt::name(d)
                                                << " " << s.h << "x" << s.w << " count " << count);
                kt::Objects<T> o(d, count, s.h, s.w, unsigned(s.h * 131 + s.w * 7 + count + int(d)));
                const auto before = o.snapshot();
                std::vector<T> got(std::size_t(count) + 1, T(-77));
                ASSERT_EQ(run_array(s.op, o, s.h, s.w, got.data()), kelOk);
                EXPECT_EQ(got[std::size_t(count)], T(-77));
                EXPECT_TRUE(o.unchanged_since(before));
                EXPECT_TRUE(o.canaries_intact());
                for (int k = 0; k < count; ++k) {
                    double tol;
                    const T want = reference(s.op, o, k, s.h, s.w, &tol);
                    if (tol > 0) EXPECT_NEAR(got[k], want, tol) << "k=" << k;
                    else EXPECT_TRUE(kt::same_bits(got[k], want)) << "k=" << k << " " << got[k] << " " << want;
                    if (d == Desc::List || d == Desc::ListS2) continue;  // no single-object list form
                    T one = T(-77);
                    ASSERT_EQ(run_single(s.op, o, k, s.h, s.w, &one), kelOk);
                    EXPECT_TRUE(kt::same_bits(one, got[k])) << "single k=" << k;
                }
            }
}

TEST(Norm, MatchesReferenceEveryDescription32f) { matches_reference<float>(); }
TEST(Norm, MatchesReferenceEveryDescription64f) { matches_reference<double>(); }

// One object with the given elements, through description d.
template <class T>
T one_value(Op op, Desc d, int h, int w, std::vector<double> e)
{
    kt::Objects<T> o(d, 1, h, w);
    for (int i = 0; i < h * w; ++i) o.at(0, i / w, i % w) = T(e[std::size_t(i)]);
    T r = T(-77);
    EXPECT_EQ(run_array(op, o, h, w, &r), kelOk);
    return r;
}

template <class T>
void special_values()
{
    const double inf = std::numeric_limits<double>::infinity();
    for (Desc d : kAll) {
        SCOPED_TRACE(testing::Message() << kt::type_name<T>() << " " << kt::name(d));
        // The estimate path keeps 0 and infinity exact; squares are not scaled.
        for (int len : {3, 4, 5, 6, 8, 12}) {
            EXPECT_TRUE(kt::same_bits(one_value<T>(Op::L2, d, 1, len, std::vector<double>(len, 0.0)), T(0)));
            std::vector<double> big(std::size_t(len), 1e200);
            big[0] = sizeof(T) == 4 ? 2e19 : 1e200;  // squares overflow, the norm does not fit the sum
            EXPECT_EQ(one_value<T>(Op::L2, d, 1, len, big), T(inf)) << len;
            // Squares in the subnormal range (32f): the estimate of their sum is unusable.
            std::vector<double> tiny(std::size_t(len), sizeof(T) == 4 ? 1e-21 : 1e-170);
            const T sq = T(tiny[0]) * T(tiny[0]);
            T sum = sq;
            for (int j = 1; j < len; ++j) sum = sum + sq;
            EXPECT_NEAR(one_value<T>(Op::L2, d, 1, len, tiny), std::sqrt(sum), 1e-6 * std::sqrt(sum)) << len;
        }
        EXPECT_EQ(one_value<T>(Op::Frob, d, 2, 2, {3e30, 0, 0, 4e30}), sizeof(T) == 4 ? T(inf) : T(5e30));
        // (3, 4, 0): exactly 5 on the correctly rounded paths, within the estimate's error on the other.
        const T five = one_value<T>(Op::L2, d, 1, 3, {3, 4, 0});
        if (sizeof(T) == 4 && d == Desc::Contig) EXPECT_NEAR(five, 5.0f, 4e-6f);
        else EXPECT_EQ(five, T(5));
        // Size 5 adds the last diagonal element first: (-1e8 + 1e8) + 1 + 1 + 1.
        std::vector<double> m(25, 0.0);
        const double diag[5] = {1e8, 1, 1, 1, -1e8};
        for (int i = 0; i < 5; ++i) m[std::size_t(i * 6)] = diag[i];
        EXPECT_EQ(one_value<T>(Op::Trace, d, 5, 5, m), T(3));
        // Sizes 3..5 start from d0, the others from +0: all-negative-zero diagonals differ.
        for (int n : {1, 2, 3, 4, 5, 6, 7}) {
            std::vector<double> z(std::size_t(n * n), -0.0);
            const T want = n >= 3 && n <= 5 ? T(-0.0) : T(0.0);
            EXPECT_TRUE(kt::same_bits(one_value<T>(Op::Trace, d, n, n, z), want)) << n;
        }
    }
}

TEST(Norm, SpecialValues32f) { special_values<float>(); }
TEST(Norm, SpecialValues64f) { special_values<double>(); }

// The running sum of the general trace lives in the destination: a
// destination that is the matrix's own next diagonal element sees it.
TEST(Norm, TraceKeepsRunningSumInDestination)
{
    float m[4] = {1, 0, 0, 2};  // 2x2: d0 = 1, d1 = m[3]
    ASSERT_EQ(kelmTrace_m_32f(m, 8, 4, 2, &m[3]), kelOk);
    EXPECT_EQ(m[3], 2.0f);  // dst = 0; dst = dst + d0 = 1; dst = dst + d1 (now 1) = 2
    // 6x6 (written out) and 7x7, the destination on d1: 0, d0, 2·d0, 2·d0 + d2, ...
    for (int n : {6, 7}) {
        std::vector<double> a(std::size_t(n * n), 0.0);
        for (int i = 0; i < n; ++i) a[std::size_t(i * (n + 1))] = i + 1;
        double want = 2;  // d0 + d0
        for (int i = 2; i < n; ++i) want += i + 1;
        ASSERT_EQ(kelmTrace_m_64f(a.data(), 8 * n, 8, n, &a[std::size_t(n + 1)]), kelOk);
        EXPECT_EQ(a[std::size_t(n + 1)], want) << n;
    }
}

// Arrays larger than the caches take the walkers that request lines ahead;
// one thread, so that a single kernel call sees the whole array.
template <class T>
void large_arrays()
{
    kt::Threads one(1);
    for (const Shape s : {Shape{Op::Trace, 3, 3}, Shape{Op::Trace, 4, 4}, Shape{Op::Frob, 4, 4}, Shape{Op::Frob, 5, 5}}) {
        const int count = int((std::size_t(5) << 20) / (sizeof(T) * std::size_t(s.h * s.w))) + 3;
        SCOPED_TRACE(testing::Message() << op_name(s.op) << " " << kt::type_name<T>() << " " << s.h << " count " << count);
        kt::Objects<T> o(Desc::Contig, count, s.h, s.w, unsigned(count));
        std::vector<T> got(std::size_t(count), T(-77));
        ASSERT_EQ(run_array(s.op, o, s.h, s.w, got.data()), kelOk);
        for (int k = 0; k < count; ++k) {
            double tol;
            ASSERT_TRUE(kt::same_bits(got[k], reference(s.op, o, k, s.h, s.w, &tol))) << k;
        }
    }
}

TEST(Norm, LargeArrays32f) { large_arrays<float>(); }
TEST(Norm, LargeArrays64f) { large_arrays<double>(); }

// Serial when the work measure is at most the member's limit, parallel above.
// Inside an active region the runtime refuses to fork and a parallel run does
// only its first block: that shows which path ran.
struct Limit {
    Op op;
    Desc desc;
    int per;  // work per object
    int limit32, limit64;
};

template <class T>
void thresholds()
{
    const Limit limits[] = {
        {Op::L2, Desc::Contig, 3, 1500, 1500},    {Op::L2, Desc::Pointer, 5, 1500, 1500},
        {Op::L2, Desc::ListS2, 4, 1500, 1500},    {Op::Frob, Desc::Contig, 4, 2500, 1800},
        {Op::Frob, Desc::Strided, 4, 1800, 1500}, {Op::Frob, Desc::List, 4, 1600, 1600},
        {Op::Frob, Desc::ListS2, 4, 1600, 1600},  {Op::Frob, Desc::Pointer, 4, 1500, 2500},
        {Op::Trace, Desc::Contig, 4, 3600, 3600}, {Op::Trace, Desc::Pointer, 3, 3600, 3600},
        {Op::Trace, Desc::List, 5, 3600, 3600}};
    kt::Threads two(2);
    for (const Limit& l : limits) {
        const int limit = sizeof(T) == 4 ? l.limit32 : l.limit64;
        // Work per object is l.per in every case: L2 len, FrobNorm h*w, Trace size.
        const int h = l.op == Op::Frob ? 2 : l.op == Op::L2 ? 1 : l.per;
        const int w = l.op == Op::Frob ? l.per / 2 : l.per;
        const int per = l.per;
        for (int count : {limit / per, limit / per + 1}) {
            SCOPED_TRACE(testing::Message() << op_name(l.op) << " " << kt::type_name<T>() << " " << kt::name(l.desc)
                                            << " count " << count);
            kt::Objects<T> o(l.desc, count, h, w, unsigned(count));
            std::vector<T> full(std::size_t(count), T(-77)), nested(std::size_t(count), T(-77));
            ASSERT_EQ(run_array(l.op, o, h, w, full.data()), kelOk);
            const int saved = omp_get_max_active_levels();
            omp_set_max_active_levels(1);
            kelStatus st = kelErrFail;
#pragma omp parallel num_threads(2)
            if (omp_get_thread_num() == 0) st = run_array(l.op, o, h, w, nested.data());
            omp_set_max_active_levels(saved);
            ASSERT_EQ(st, kelOk);
            const bool parallel = count * per > limit;
            const int done = parallel ? (count + 1) / 2 : count;
            for (int k = 0; k < count; ++k)
                ASSERT_TRUE(kt::same_bits(nested[k], k < done ? full[k] : T(-77))) << k;
        }
    }
}

TEST(Norm, ThresholdsDecideParallel32f) { thresholds<float>(); }
TEST(Norm, ThresholdsDecideParallel64f) { thresholds<double>(); }

}  // namespace
