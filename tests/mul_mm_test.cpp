// Matrix-matrix products: every member against an ascending-k reference in
// every description, the check order, and the parallel decision.
#include <gtest/gtest.h>
#include <omp.h>

#include <functional>
#include <limits>
#include <tuple>
#include <vector>

#include "kelm.h"
#include "support.h"

namespace {

using kt::Desc;
template <class T>
using Obj = kt::Objects<T>;

enum class Form { S, P, L };

// Argument groups of one operand, as the entries take them.
template <class T, Form F, bool Arr>
auto src_args(Obj<T>& o, int w, int h)
{
    if constexpr (F == Form::P) {
        if constexpr (Arr) return std::make_tuple(o.table(), o.shift(), o.objStride(), w, h);
        else return std::make_tuple(o.table(), o.shift(), w, h);
    } else if constexpr (F == Form::L && Arr) {
        return std::make_tuple(o.table(), o.shift(), o.rowStride(), o.elemStride(), w, h);
    } else if constexpr (Arr) {
        return std::make_tuple(o.base(), o.objStride(), o.rowStride(), o.elemStride(), w, h);
    } else {
        return std::make_tuple(o.base(), o.rowStride(), o.elemStride(), w, h);
    }
}

template <class T, Form F, bool Arr>
auto dst_args(Obj<T>& o)
{
    if constexpr (F == Form::P) {
        if constexpr (Arr) return std::make_tuple(o.table(), o.shift(), o.objStride());
        else return std::make_tuple(o.table(), o.shift());
    } else if constexpr (F == Form::L) {
        return std::make_tuple(o.table(), o.shift(), o.rowStride(), o.elemStride());
    } else if constexpr (Arr) {
        return std::make_tuple(o.base(), o.objStride(), o.rowStride(), o.elemStride());
    } else {
        return std::make_tuple(o.base(), o.rowStride(), o.elemStride());
    }
}

struct Dims {
    int w1, h1, w2, h2, count;
};

template <class T>
using Call = std::function<kelStatus(Obj<T>&, Obj<T>&, Obj<T>&, const Dims&)>;

template <class T, Form F, bool A1, bool A2, class Fn>
Call<T> bind(Fn f)
{
    return [f](Obj<T>& a, Obj<T>& b, Obj<T>& c, const Dims& d) {
        auto args = std::tuple_cat(src_args<T, F, A1>(a, d.w1, d.h1), src_args<T, F, A2>(b, d.w2, d.h2),
                                   dst_args<T, F, A1 || A2>(c));
        if constexpr (A1 || A2) return std::apply(f, std::tuple_cat(args, std::make_tuple(d.count)));
        else return std::apply(f, args);
    };
}

template <class T>
struct Calls {
    Call<T> s, p, l;  // l empty for single pairs
};

struct Case {
    const char* name;
    bool tr1, tr2, a1, a2;
    Calls<float> f32;
    Calls<double> f64;
    template <class T>
    const Calls<T>& calls() const
    {
        if constexpr (sizeof(T) == 4) return f32;
        else return f64;
    }
};

#define PAIR_CASE(NM, TR1, TR2)                                                                            \
    Case{#NM, TR1, TR2, false, false,                                                                     \
         {bind<float, Form::S, false, false>(kelmMul_##NM##_32f),                                         \
          bind<float, Form::P, false, false>(kelmMul_##NM##_32f_P), {}},                                  \
         {bind<double, Form::S, false, false>(kelmMul_##NM##_64f),                                        \
          bind<double, Form::P, false, false>(kelmMul_##NM##_64f_P), {}}}
#define ARRAY_CASE(NM, TR1, TR2, A1, A2)                                                                    \
    Case{#NM, TR1, TR2, A1, A2,                                                                             \
         {bind<float, Form::S, A1, A2>(kelmMul_##NM##_32f), bind<float, Form::P, A1, A2>(kelmMul_##NM##_32f_P), \
          bind<float, Form::L, A1, A2>(kelmMul_##NM##_32f_L)},                                             \
         {bind<double, Form::S, A1, A2>(kelmMul_##NM##_64f), bind<double, Form::P, A1, A2>(kelmMul_##NM##_64f_P), \
          bind<double, Form::L, A1, A2>(kelmMul_##NM##_64f_L)}}

const std::vector<Case>& cases()
{
    static const std::vector<Case> all = {
        PAIR_CASE(mm, false, false),           PAIR_CASE(mt, false, true),
        PAIR_CASE(tm, true, false),            PAIR_CASE(tt, true, true),
        ARRAY_CASE(mam, false, false, 1, 0),   ARRAY_CASE(mat, false, true, 1, 0),
        ARRAY_CASE(tam, true, false, 1, 0),    ARRAY_CASE(tat, true, true, 1, 0),
        ARRAY_CASE(mma, false, false, 0, 1),   ARRAY_CASE(mta, false, true, 0, 1),
        ARRAY_CASE(tma, true, false, 0, 1),    ARRAY_CASE(tta, true, true, 0, 1),
        ARRAY_CASE(mama, false, false, 1, 1),  ARRAY_CASE(mata, false, true, 1, 1),
        ARRAY_CASE(tama, true, false, 1, 1),   ARRAY_CASE(tata, true, true, 1, 1),
    };
    return all;
}

// One call laid out in a description: operands sized from op(A) m x kk and
// op(B) kk x n, stored transposed where the letter says so.
template <class T>
struct Setup {
    const Case& c;
    Desc desc;
    int m, kk, n, count;
    Dims dims;
    Obj<T> a, b, d;

    static Desc single_desc(Desc arr) { return arr == Desc::List ? Desc::Contig : arr == Desc::ListS2 ? Desc::Strided : arr; }
    static Obj<T> make(bool arr, Desc desc, int count, int h, int w, unsigned seed)
    {
        return Obj<T>(arr ? desc : single_desc(desc), arr ? count : 1, h, w, seed);
    }
    Setup(const Case& cs, Desc ds, int m_, int k_, int n_, int cnt, unsigned seed = 7)
        : c(cs), desc(ds), m(m_), kk(k_), n(n_), count(cs.a1 || cs.a2 ? cnt : 1),
          dims{cs.tr1 ? m_ : k_, cs.tr1 ? k_ : m_, cs.tr2 ? k_ : n_, cs.tr2 ? n_ : k_, count},
          a(make(cs.a1, ds, count, dims.h1, dims.w1, seed)),
          b(make(cs.a2, ds, count, dims.h2, dims.w2, seed + 1)),
          d(make(cs.a1 || cs.a2, ds, count, m_, n_, seed + 2))
    {
    }
    T opa(int k, int i, int j) { return c.tr1 ? a.at(c.a1 ? k : 0, j, i) : a.at(c.a1 ? k : 0, i, j); }
    T opb(int k, int i, int j) { return c.tr2 ? b.at(c.a2 ? k : 0, j, i) : b.at(c.a2 ? k : 0, i, j); }
    T& opa_ref(int k, int i, int j) { return c.tr1 ? a.at(c.a1 ? k : 0, j, i) : a.at(c.a1 ? k : 0, i, j); }
    T& opb_ref(int k, int i, int j) { return c.tr2 ? b.at(c.a2 ? k : 0, j, i) : b.at(c.a2 ? k : 0, i, j); }
    T expected(int o, int i, int j)
    {
        T s = T(0);
        for (int k = 0; k < kk; ++k) s = s + opa(o, i, k) * opb(o, k, j);
        return s;
    }
    kelStatus run()
    {
        const Calls<T>& f = c.calls<T>();
        const Call<T>& call = desc == Desc::Pointer ? f.p : (desc == Desc::List || desc == Desc::ListS2) ? f.l : f.s;
        return call(a, b, d, dims);
    }
    // Row 0 of op(A) zero and column 0 of op(B) negative: every product of
    // c(0, 0) is -0, and a sum started from +0 must give +0.
    void plant_negative_zero()
    {
        for (int o = 0; o < count; ++o)
            for (int k = 0; k < kk; ++k) {
                opa_ref(o, 0, k) = T(0);
                T& y = opb_ref(o, k, 0);
                y = y > 0 ? -y : y - T(0.5);
            }
    }
};

template <class T>
class MulMM : public ::testing::Test {};
using Types = ::testing::Types<float, double>;
TYPED_TEST_SUITE(MulMM, Types);

std::vector<Desc> descs_of(const Case& c)
{
    if (c.a1 || c.a2) return {Desc::Contig, Desc::Strided, Desc::Pointer, Desc::List, Desc::ListS2};
    return {Desc::Contig, Desc::Strided, Desc::Pointer};
}

// Square orders 1 to 7 (the written-out orders and both sides of them) and
// rectangular shapes that leave partial column blocks and row blocks.
const int kShapes[][3] = {{1, 1, 1}, {2, 2, 2}, {3, 3, 3}, {4, 4, 4}, {5, 5, 5}, {6, 6, 6}, {7, 7, 7},
                          {2, 3, 5}, {5, 3, 2}, {4, 6, 4}, {3, 4, 7}, {7, 1, 6}, {1, 5, 9}, {6, 2, 3},
                          {3, 3, 4}, {4, 4, 3}};

TYPED_TEST(MulMM, MatchesAscendingSumInEveryDescription)
{
    using T = TypeParam;
    for (const Case& c : cases())
        for (Desc desc : descs_of(c))
            for (const auto& sh : kShapes) {
                SCOPED_TRACE(::testing::Message() << "kelmMul_" << c.name << "_" << kt::type_name<T>() << " "
                                                  << kt::name(desc) << " " << sh[0] << "x" << sh[1] << "x" << sh[2]);
                Setup<T> s(c, desc, sh[0], sh[1], sh[2], 3);
                s.plant_negative_zero();
                const auto srcA = s.a.snapshot(), srcB = s.b.snapshot();
                ASSERT_EQ(s.run(), kelOk);
                bool same = true;
                for (int o = 0; o < s.count && same; ++o)
                    for (int i = 0; i < s.m; ++i)
                        for (int j = 0; j < s.n; ++j)
                            if (!kt::same_bits(s.d.at(o, i, j), s.expected(o, i, j))) {
                                ADD_FAILURE() << "object " << o << " element (" << i << ", " << j << "): "
                                              << s.d.at(o, i, j) << " vs " << s.expected(o, i, j);
                                same = false;
                                break;
                            }
                EXPECT_TRUE(s.d.canaries_intact());
                EXPECT_TRUE(s.a.unchanged_since(srcA) && s.b.unchanged_since(srcB));
            }
}

// op(A) 2x3 from A stored 3 wide and 2 high, op(B) = transpose of B stored
// 3 wide and 5 high: C is 5 wide and 2 high.
TYPED_TEST(MulMM, TransposedSecondOperandUsesStoredSizes)
{
    using T = TypeParam;
    constexpr int e = sizeof(T);
    const T A[6] = {1, 2, 3, 4, 5, 6};
    T B[15], C[10] = {};
    for (int i = 0; i < 15; ++i) B[i] = T(i);
    kelStatus st;
    if constexpr (e == 4) st = kelmMul_mt_32f(A, 3 * e, e, 3, 2, B, 3 * e, e, 3, 5, C, 5 * e, e);
    else st = kelmMul_mt_64f(A, 3 * e, e, 3, 2, B, 3 * e, e, 3, 5, C, 5 * e, e);
    ASSERT_EQ(st, kelOk);
    for (int i = 0; i < 2; ++i)
        for (int j = 0; j < 5; ++j)
            EXPECT_EQ(C[i * 5 + j], A[i * 3] * B[j * 3] + A[i * 3 + 1] * B[j * 3 + 1] + A[i * 3 + 2] * B[j * 3 + 2]);
}

// The parallel decision: W = (h1 (w1 + w2) + w2 h2) count for mama; with
// 1x1 times 2x1 operands W = 5 count, so count = limit / 5 sits exactly at
// the limit.  Called from inside an active region, where the runtime refuses
// to fork, a parallel run does its first block only: that shows which path
// ran.  Results of both runs equal the reference.
TYPED_TEST(MulMM, ThresholdDecidesParallelAtWorkAboveLimit)
{
    using T = TypeParam;
    const Case& c = cases()[12];  // mama
    ASSERT_STREQ(c.name, "mama");
    struct Limit {
        Desc desc;
        int limit;
    };
    const std::vector<Limit> limits = {{Desc::Contig, sizeof(T) == 4 ? 2500 : 3600},
                                       {Desc::Strided, 1440},
                                       {Desc::List, 3600},
                                       {Desc::ListS2, 1440},
                                       {Desc::Pointer, 1440}};
    kt::Threads two(2);
    const int savedLevels = omp_get_max_active_levels();
    omp_set_max_active_levels(1);
    for (const Limit& l : limits)
        for (int count : {l.limit / 5, l.limit / 5 + 1}) {
            SCOPED_TRACE(::testing::Message() << kt::name(l.desc) << " count " << count);
            Setup<T> s(c, l.desc, 1, 1, 2, count);
            kelStatus st = kelErrFail;
#pragma omp parallel num_threads(2)
            {
                if (omp_get_thread_num() == 0) st = s.run();
            }
            ASSERT_EQ(st, kelOk);
            const bool parallel = count * 5 > l.limit;
            const int done = parallel ? (count + 1) / 2 : count;
            for (int o = 0; o < done; ++o)
                for (int j = 0; j < 2; ++j) ASSERT_TRUE(kt::same_bits(s.d.at(o, 0, j), s.expected(o, 0, j)));
            if (parallel) {
                Setup<T> untouched(c, l.desc, 1, 1, 2, count);
                EXPECT_TRUE(kt::same_bits(s.d.at(count - 1, 0, 1), untouched.d.at(count - 1, 0, 1)));
            }
        }
    omp_set_max_active_levels(savedLevels);

    // Outside any region both sides of the limit run in full, with equal bits.
    for (const Limit& l : limits)
        for (int count : {l.limit / 5, l.limit / 5 + 1}) {
            Setup<T> s(c, l.desc, 1, 1, 2, count);
            ASSERT_EQ(s.run(), kelOk);
            for (int o = 0; o < count; ++o)
                for (int j = 0; j < 2; ++j) ASSERT_TRUE(kt::same_bits(s.d.at(o, 0, j), s.expected(o, 0, j)));
        }
}

// Larger arrays through the parallel driver for every member and order 3 to
// 5 (the written-out array orders) and a general one.
TYPED_TEST(MulMM, ParallelRunsMatchReference)
{
    using T = TypeParam;
    kt::Threads two(2);
    for (const Case& c : cases()) {
        if (!(c.a1 || c.a2)) continue;
        for (Desc desc : descs_of(c))
            for (int order : {3, 4, 5, 7}) {
                SCOPED_TRACE(::testing::Message() << c.name << " " << kt::name(desc) << " order " << order);
                Setup<T> s(c, desc, order, order, order, 101);
                ASSERT_EQ(s.run(), kelOk);
                for (int o = 0; o < s.count; ++o)
                    for (int i = 0; i < order; ++i)
                        for (int j = 0; j < order; ++j)
                            ASSERT_TRUE(kt::same_bits(s.d.at(o, i, j), s.expected(o, i, j)));
                EXPECT_TRUE(s.d.canaries_intact());
            }
    }
}

}  // namespace

// The written-out orders work on several rows and columns per vector: an
// infinity or NaN planted in one object must reach exactly the elements whose
// sums take it, in every object of an odd-length run, whichever layout.
TYPED_TEST(MulMM, NonFiniteOperandsStayInTheirOwnElements)
{
    using T = TypeParam;
    const T inf = std::numeric_limits<T>::infinity(), nan = std::numeric_limits<T>::quiet_NaN();
    for (const Case& c : cases()) {
        if (c.tr1 || c.tr2) continue;
        for (Desc desc : {Desc::Contig, Desc::List, Desc::Strided})
            for (int n = 3; n <= 6; ++n) {
                SCOPED_TRACE(::testing::Message() << "kelmMul_" << c.name << "_" << kt::type_name<T>() << " "
                                                  << kt::name(desc) << " order " << n);
                if (desc == Desc::List && !(c.a1 || c.a2)) continue;
                Setup<T> s(c, desc, n, n, n, 5, unsigned(n));
                s.opa_ref(s.count - 1, n - 1, 0) = inf;
                s.opb_ref(s.count / 2, 0, n - 1) = nan;
                s.opa_ref(0, 1, n - 1) = -inf;
                ASSERT_EQ(s.run(), kelOk);
                for (int o = 0; o < s.count; ++o)
                    for (int i = 0; i < n; ++i)
                        for (int j = 0; j < n; ++j)
                            ASSERT_TRUE(kt::same_bits(s.d.at(o, i, j), s.expected(o, i, j)))
                                << "object " << o << " element (" << i << ", " << j << ")";
                EXPECT_TRUE(s.d.canaries_intact());
            }
    }
}
