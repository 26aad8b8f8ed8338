// Saxpy, LComb and Gaxpy: bit-exact results in every member, description and
// length, Gaxpy's sum against Mul mv, argument checks (Gaxpy's size
// agreement) and the parallel thresholds.
#include <omp.h>

#include <functional>
#include <limits>
#include <string>
#include <type_traits>

#include "support.h"

namespace {

using kt::Desc;
using kt::is_list;
using kt::kAllForms;
using kt::single_form;
using kt::Objects;



// --- Saxpy and LComb -------------------------------------------------------------------

enum class Sk { saxpy_vv, saxpy_vav, saxpy_vva, saxpy_vava, lcomb_vv, lcomb_vav, lcomb_vava };
const char* name(Sk k)
{
    const char* n[] = {"Saxpy vv", "Saxpy vav", "Saxpy vva", "Saxpy vava", "LComb vv", "LComb vav", "LComb vava"};
    return n[int(k)];
}
bool single(Sk k) { return k == Sk::saxpy_vv || k == Sk::lcomb_vv; }
bool lcomb(Sk k) { return k >= Sk::lcomb_vv; }
bool x_array(Sk k) { return k == Sk::saxpy_vav || k == Sk::saxpy_vava || k == Sk::lcomb_vav || k == Sk::lcomb_vava; }
bool y_array(Sk k) { return k == Sk::saxpy_vva || k == Sk::saxpy_vava || k == Sk::lcomb_vava; }

template <class T>
struct ScaledCall {
    Sk kind;
    Desc form;
    int n, count;
    T a, b;
    Objects<T> X, Y, D;
    ScaledCall(Sk k, Desc f, int n_, int c, T a_ = T(1.375), T b_ = T(-0.8125), unsigned seed = 1)
        : kind(k), form(f), n(n_), count(single(k) ? 1 : c), a(a_), b(b_),
          X(x_array(k) ? f : single_form(f), x_array(k) ? count : 1, 1, n, seed),
          Y(y_array(k) ? f : single_form(f), y_array(k) ? count : 1, 1, n, seed + 1),
          D(single(k) ? single_form(f) : f, count, 1, n, seed + 2)
    {
    }

    kelStatus run()
    {
        const bool P = form == Desc::Pointer, L = is_list(form);
        switch (kind) {
        case Sk::saxpy_vv:
            if (P) return KT_PICK(T, kelmSaxpy_vv, _P)(X.table(), X.shift(), a, Y.table(), Y.shift(), D.table(), D.shift(), n);
            return KT_PICK(T, kelmSaxpy_vv, )(X.base(), X.elemStride(), a, Y.base(), Y.elemStride(), D.base(),
                                              D.elemStride(), n);
        case Sk::saxpy_vav:
            if (P)
                return KT_PICK(T, kelmSaxpy_vav, _P)(X.table(), X.shift(), X.objStride(), a, Y.table(), Y.shift(),
                                                     D.table(), D.shift(), D.objStride(), n, count);
            if (L)
                return KT_PICK(T, kelmSaxpy_vav, _L)(X.table(), X.shift(), X.elemStride(), a, Y.base(), Y.elemStride(),
                                                     D.table(), D.shift(), D.elemStride(), n, count);
            return KT_PICK(T, kelmSaxpy_vav, )(X.base(), X.objStride(), X.elemStride(), a, Y.base(), Y.elemStride(),
                                               D.base(), D.objStride(), D.elemStride(), n, count);
        case Sk::saxpy_vva:
            if (P)
                return KT_PICK(T, kelmSaxpy_vva, _P)(X.table(), X.shift(), a, Y.table(), Y.shift(), Y.objStride(),
                                                     D.table(), D.shift(), D.objStride(), n, count);
            if (L)
                return KT_PICK(T, kelmSaxpy_vva, _L)(X.base(), X.elemStride(), a, Y.table(), Y.shift(), Y.elemStride(),
                                                     D.table(), D.shift(), D.elemStride(), n, count);
            return KT_PICK(T, kelmSaxpy_vva, )(X.base(), X.elemStride(), a, Y.base(), Y.objStride(), Y.elemStride(),
                                               D.base(), D.objStride(), D.elemStride(), n, count);
        case Sk::saxpy_vava:
            if (P)
                return KT_PICK(T, kelmSaxpy_vava, _P)(X.table(), X.shift(), X.objStride(), a, Y.table(), Y.shift(),
                                                      Y.objStride(), D.table(), D.shift(), D.objStride(), n, count);
            if (L)
                return KT_PICK(T, kelmSaxpy_vava, _L)(X.table(), X.shift(), X.elemStride(), a, Y.table(), Y.shift(),
                                                      Y.elemStride(), D.table(), D.shift(), D.elemStride(), n, count);
            return KT_PICK(T, kelmSaxpy_vava, )(X.base(), X.objStride(), X.elemStride(), a, Y.base(), Y.objStride(),
                                                Y.elemStride(), D.base(), D.objStride(), D.elemStride(), n, count);
        case Sk::lcomb_vv:
            if (P)
                return KT_PICK(T, kelmLComb_vv, _P)(X.table(), X.shift(), a, Y.table(), Y.shift(), b, D.table(),
                                                    D.shift(), n);
            return KT_PICK(T, kelmLComb_vv, )(X.base(), X.elemStride(), a, Y.base(), Y.elemStride(), b, D.base(),
                                              D.elemStride(), n);
        case Sk::lcomb_vav:
            if (P)
                return KT_PICK(T, kelmLComb_vav, _P)(X.table(), X.shift(), X.objStride(), a, Y.table(), Y.shift(), b,
                                                     D.table(), D.shift(), D.objStride(), n, count);
            if (L)
                return KT_PICK(T, kelmLComb_vav, _L)(X.table(), X.shift(), X.elemStride(), a, Y.base(), Y.elemStride(),
                                                     b, D.table(), D.shift(), D.elemStride(), n, count);
            return KT_PICK(T, kelmLComb_vav, )(X.base(), X.objStride(), X.elemStride(), a, Y.base(), Y.elemStride(), b,
                                               D.base(), D.objStride(), D.elemStride(), n, count);
        case Sk::lcomb_vava:
            if (P)
                return KT_PICK(T, kelmLComb_vava, _P)(X.table(), X.shift(), X.objStride(), a, Y.table(), Y.shift(),
                                                      Y.objStride(), b, D.table(), D.shift(), D.objStride(), n, count);
            if (L)
                return KT_PICK(T, kelmLComb_vava, _L)(X.table(), X.shift(), X.elemStride(), a, Y.table(), Y.shift(),
                                                      Y.elemStride(), b, D.table(), D.shift(), D.elemStride(), n,
                                                      count);
            return KT_PICK(T, kelmLComb_vava, )(X.base(), X.objStride(), X.elemStride(), a, Y.base(), Y.objStride(),
                                                Y.elemStride(), b, D.base(), D.objStride(), D.elemStride(), n, count);
        }
        return kelErrFail;
    }

    T expected(int k, int i)
    {
        const T x = X.at(x_array(kind) ? k : 0, i), y = Y.at(y_array(kind) ? k : 0, i);
        return lcomb(kind) ? x * a + y * b : x * a + y;
    }

    void expect_results()
    {
        for (int k = 0; k < count; ++k)
            for (int i = 0; i < n; ++i)
                ASSERT_TRUE(kt::same_bits(D.at(k, i), expected(k, i))) << "object " << k << " element " << i;
        EXPECT_TRUE(D.canaries_intact());
    }
};

const Sk kAllScaled[] = {Sk::saxpy_vv,  Sk::saxpy_vav, Sk::saxpy_vva, Sk::saxpy_vava,
                         Sk::lcomb_vv,  Sk::lcomb_vav, Sk::lcomb_vava};

template <class T>
void check_scaled_lengths()
{
    for (Sk kind : kAllScaled)
        for (Desc f : kAllForms) {
            if (single(kind) && is_list(f)) continue;
            for (int n : {1, 2, 3, 4, 5, 6, 7, 17})
                for (int count : {1, 6}) {
                    SCOPED_TRACE(testing::Message() << name(kind) << " " << kt::type_name<T>() << " " << kt::name(f)
                                                    << " n " << n << " count " << count);
                    ScaledCall<T> c(kind, f, n, count, T(1.375), T(-0.8125), unsigned(n * 8 + count));
                    const auto x = c.X.snapshot(), y = c.Y.snapshot();
                    ASSERT_EQ(c.run(), kelOk);
                    c.expect_results();
                    EXPECT_TRUE(c.X.unchanged_since(x) && c.Y.unchanged_since(y));
                }
        }
}

TEST(SaxpyLComb, EveryMemberLengthAndDescription32f) { check_scaled_lengths<float>(); }
TEST(SaxpyLComb, EveryMemberLengthAndDescription64f) { check_scaled_lengths<double>(); }

// a = 0 leaves y (0 * x is a signed zero or, for an infinite x, NaN); LComb
// with a = b = 1 is the element-wise sum, one rounding per element.
template <class T>
void check_special_scales()
{
    const T inf = std::numeric_limits<T>::infinity();
    for (Desc f : {Desc::Contig, Desc::Strided, Desc::List}) {
        ScaledCall<T> s(Sk::saxpy_vava, f, 5, 9, T(0));
        s.X.at(3, 2) = inf;
        ASSERT_EQ(s.run(), kelOk);
        s.expect_results();
        for (int k = 0; k < 9; ++k)
            for (int i = 0; i < 5; ++i)
                if (k == 3 && i == 2)
                    EXPECT_TRUE(std::isnan(s.D.at(k, i)));
                else
                    EXPECT_EQ(s.D.at(k, i), s.Y.at(k, i));
        ScaledCall<T> l(Sk::lcomb_vav, f, 4, 9, T(1), T(1));
        ASSERT_EQ(l.run(), kelOk);
        for (int k = 0; k < 9; ++k)
            for (int i = 0; i < 4; ++i) EXPECT_TRUE(kt::same_bits(l.D.at(k, i), T(l.X.at(k, i) + l.Y.at(0, i))));
    }
}

TEST(SaxpyLComb, ZeroAndUnitScales)
{
    check_special_scales<float>();
    check_special_scales<double>();
}

// Densely packed arrays run as one stream of elements; the destination may be
// either source there.
template <class T>
void check_packed_in_place()
{
    for (int n : {3, 4, 7}) {
        const int count = 13;
        std::vector<T> x(std::size_t(n) * count), y(x.size());
        for (std::size_t e = 0; e < x.size(); ++e) x[e] = T(int(e % 11) - 5) / T(4), y[e] = T(int(e % 7) - 3) / T(8);
        const std::vector<T> x0 = x, y0 = y;
        const int es = int(sizeof(T)), os = n * es;
        ASSERT_EQ(KT_PICK(T, kelmSaxpy_vava, )(x.data(), os, es, T(3), y.data(), os, es, y.data(), os, es, n, count), kelOk);
        ASSERT_EQ(KT_PICK(T, kelmLComb_vava, )(x.data(), os, es, T(0.5), y0.data(), os, es, T(2), x.data(), os, es, n,
                                              count),
                  kelOk);
        for (std::size_t e = 0; e < x.size(); ++e) {
            EXPECT_TRUE(kt::same_bits(y[e], T(x0[e] * T(3) + y0[e])));
            EXPECT_TRUE(kt::same_bits(x[e], T(x0[e] * T(0.5) + y0[e] * T(2))));
        }
    }
}

TEST(SaxpyLComb, PackedArraysInPlace)
{
    check_packed_in_place<float>();
    check_packed_in_place<double>();
}

// --- Gaxpy ---------------------------------------------------------------------------

enum class Gk { mv, mva, mvav };
const char* name(Gk k) { return k == Gk::mv ? "mv" : k == Gk::mva ? "mva" : "mvav"; }

template <class T>
struct GaxpyCall {
    Gk kind;
    Desc form;
    int w, h, count;
    Objects<T> A, X, Z, D;
    GaxpyCall(Gk k, Desc f, int w_, int h_, int c, unsigned seed = 1)
        : kind(k), form(f), w(w_), h(h_), count(k == Gk::mv ? 1 : c), A(single_form(f), 1, h, w, seed),
          X(k == Gk::mv ? single_form(f) : f, count, 1, w, seed + 1),
          Z(k == Gk::mva ? f : single_form(f), k == Gk::mva ? count : 1, 1, h, seed + 2),
          D(k == Gk::mv ? single_form(f) : f, count, 1, h, seed + 3)
    {
    }

    kelStatus run(int xLen, int zLen)
    {
        const bool P = form == Desc::Pointer, L = is_list(form);
        switch (kind) {
        case Gk::mv:
            if (P)
                return KT_PICK(T, kelmGaxpy_mv, _P)(A.table(), A.shift(), w, h, X.table(), X.shift(), xLen, Z.table(),
                                                    Z.shift(), zLen, D.table(), D.shift());
            return KT_PICK(T, kelmGaxpy_mv, )(A.base(), A.rowStride(), A.elemStride(), w, h, X.base(), X.elemStride(),
                                              xLen, Z.base(), Z.elemStride(), zLen, D.base(), D.elemStride());
        case Gk::mva:
            if (P)
                return KT_PICK(T, kelmGaxpy_mva, _P)(A.table(), A.shift(), w, h, X.table(), X.shift(), X.objStride(),
                                                     xLen, Z.table(), Z.shift(), Z.objStride(), zLen, D.table(),
                                                     D.shift(), D.objStride(), count);
            if (L)
                return KT_PICK(T, kelmGaxpy_mva, _L)(A.base(), A.rowStride(), A.elemStride(), w, h, X.table(),
                                                     X.shift(), X.elemStride(), xLen, Z.table(), Z.shift(),
                                                     Z.elemStride(), zLen, D.table(), D.shift(), D.elemStride(), count);
            return KT_PICK(T, kelmGaxpy_mva, )(A.base(), A.rowStride(), A.elemStride(), w, h, X.base(), X.objStride(),
                                               X.elemStride(), xLen, Z.base(), Z.objStride(), Z.elemStride(), zLen,
                                               D.base(), D.objStride(), D.elemStride(), count);
        case Gk::mvav:
            if (P)
                return KT_PICK(T, kelmGaxpy_mvav, _P)(A.table(), A.shift(), w, h, X.table(), X.shift(), X.objStride(),
                                                      xLen, Z.table(), Z.shift(), zLen, D.table(), D.shift(),
                                                      D.objStride(), count);
            if (L)
                return KT_PICK(T, kelmGaxpy_mvav, _L)(A.base(), A.rowStride(), A.elemStride(), w, h, X.table(),
                                                      X.shift(), X.elemStride(), xLen, Z.base(), Z.elemStride(), zLen,
                                                      D.table(), D.shift(), D.elemStride(), count);
            return KT_PICK(T, kelmGaxpy_mvav, )(A.base(), A.rowStride(), A.elemStride(), w, h, X.base(), X.objStride(),
                                                X.elemStride(), xLen, Z.base(), Z.elemStride(), zLen, D.base(),
                                                D.objStride(), D.elemStride(), count);
        }
        return kelErrFail;
    }
    kelStatus run() { return run(w, h); }

    // The sum of products from zero in ascending k, then z.
    T expected(int k, int i)
    {
        T s = T(0);
        for (int j = 0; j < w; ++j) s = s + A.at(0, i, j) * X.at(k, j);
        return s + Z.at(kind == Gk::mva ? k : 0, i);
    }

    void expect_results()
    {
        for (int k = 0; k < count; ++k)
            for (int i = 0; i < h; ++i)
                ASSERT_TRUE(kt::same_bits(D.at(k, i), expected(k, i))) << "object " << k << " element " << i;
        EXPECT_TRUE(D.canaries_intact());
    }
};

template <class T>
void check_gaxpy_sizes()
{
    for (Gk kind : {Gk::mv, Gk::mva, Gk::mvav})
        for (Desc f : kAllForms) {
            if (kind == Gk::mv && is_list(f)) continue;
            for (int w = 1; w <= 7; ++w)
                for (int h = 1; h <= 7; ++h) {
                    SCOPED_TRACE(testing::Message() << "Gaxpy " << name(kind) << " " << kt::type_name<T>() << " "
                                                    << kt::name(f) << " w " << w << " h " << h);
                    GaxpyCall<T> c(kind, f, w, h, 7, unsigned(w * 8 + h));
                    const auto a = c.A.snapshot(), x = c.X.snapshot(), z = c.Z.snapshot();
                    ASSERT_EQ(c.run(), kelOk);
                    c.expect_results();
                    EXPECT_TRUE(c.A.unchanged_since(a) && c.X.unchanged_since(x) && c.Z.unchanged_since(z));
                }
        }
}

TEST(Gaxpy, EverySizeAndDescription32f) { check_gaxpy_sizes<float>(); }
TEST(Gaxpy, EverySizeAndDescription64f) { check_gaxpy_sizes<double>(); }

// The sum equals Mul mv's to the bit (z = 0 added last keeps it, except that
// -0 + 0 gives +0), also on long arrays that the kernel takes in runs.
template <class T>
void check_gaxpy_against_mul()
{
    for (int n : {3, 4, 5, 6, 9})
        for (Desc f : {Desc::Contig, Desc::Strided}) {
            GaxpyCall<T> c(Gk::mvav, f, n, n, 700, unsigned(n));
            for (int i = 0; i < n; ++i) c.Z.at(0, i) = T(0);
            ASSERT_EQ(c.run(), kelOk);
            Objects<T> y(f, 700, 1, n);
            ASSERT_EQ(KT_PICK(T, kelmMul_mva, )(c.A.base(), c.A.rowStride(), c.A.elemStride(), n, n, c.X.base(),
                                                c.X.objStride(), c.X.elemStride(), n, y.base(), y.objStride(),
                                                y.elemStride(), 700),
                      kelOk);
            for (int k = 0; k < 700; ++k)
                for (int i = 0; i < n; ++i)
                    ASSERT_TRUE(kt::same_bits(c.D.at(k, i), T(y.at(k, i) + T(0)))) << n << " " << k << " " << i;
        }
}

TEST(Gaxpy, SumIsMulMvs)
{
    check_gaxpy_against_mul<float>();
    check_gaxpy_against_mul<double>();
}

// --- parallel runs -------------------------------------------------------------------

TEST(SaxpyParallel, LargeArraysMatchTheReferenceOnTwoThreads)
{
    kt::Threads two(2);
    for (Desc f : kAllForms) {
        for (Sk kind : kAllScaled) {
            if (single(kind)) continue;
            ScaledCall<float> c(kind, f, 4, 1301);
            ASSERT_EQ(c.run(), kelOk);
            c.expect_results();
            ScaledCall<double> d(kind, f, 5, 1301);
            ASSERT_EQ(d.run(), kelOk);
            d.expect_results();
        }
        for (Gk kind : {Gk::mva, Gk::mvav}) {
            GaxpyCall<float> c(kind, f, 4, 4, 1301);
            ASSERT_EQ(c.run(), kelOk);
            c.expect_results();
            GaxpyCall<double> d(kind, f, 3, 5, 1301);
            ASSERT_EQ(d.run(), kelOk);
            d.expect_results();
        }
    }
}



template <class T>
kt::Probe scaled_probe(Sk kind, Desc f, int n, int threshold)
{
    const bool two = x_array(kind) && y_array(kind);
    auto work = [=](int c) { return two ? 3 * n * c : n * (2 * c + 1); };
    return {std::string(name(kind)) + " " + kt::type_name<T>() + " " + kt::name(f), threshold, work,
            [=](int count, bool& usable) {
                ScaledCall<T> c(kind, f, n, count);
                c.D.at(count - 1, 0) = std::numeric_limits<T>::quiet_NaN();
                kt::run_in_busy_team([&] { c.run(); }, usable);
                return std::isnan(c.D.at(count - 1, 0));
            }};
}

template <class T>
kt::Probe gaxpy_probe(Gk kind, Desc f, int w, int h, int threshold)
{
    auto work = [=](int c) { return kind == Gk::mva ? (w + 2 * h) * c : w * c + h + h * c; };
    return {std::string("Gaxpy ") + name(kind) + " " + kt::type_name<T>() + " " + kt::name(f), threshold, work,
            [=](int count, bool& usable) {
                GaxpyCall<T> c(kind, f, w, h, count);
                c.D.at(count - 1, 0) = std::numeric_limits<T>::quiet_NaN();
                kt::run_in_busy_team([&] { c.run(); }, usable);
                return std::isnan(c.D.at(count - 1, 0));
            }};
}

TEST(SaxpyParallel, ThresholdsByMemberDescriptionAndPath)
{
    const kt::Probe probes[] = {
        scaled_probe<float>(Sk::saxpy_vav, Desc::Contig, 10, 3000),  // count 150 (work 3010) goes parallel
        scaled_probe<double>(Sk::saxpy_vva, Desc::Contig, 3, 3000),
        scaled_probe<float>(Sk::saxpy_vav, Desc::Strided, 10, 2000),
        scaled_probe<double>(Sk::saxpy_vava, Desc::Strided, 4, 1200),
        scaled_probe<float>(Sk::saxpy_vva, Desc::List, 3, 1500),
        scaled_probe<double>(Sk::saxpy_vav, Desc::List, 3, 1000),
        scaled_probe<float>(Sk::saxpy_vav, Desc::ListS2, 3, 1000),
        scaled_probe<float>(Sk::saxpy_vva, Desc::ListS2, 3, 1500),
        scaled_probe<float>(Sk::saxpy_vava, Desc::ListS2, 3, 1000),
        scaled_probe<double>(Sk::saxpy_vva, Desc::ListS2, 3, 1000),
        scaled_probe<float>(Sk::saxpy_vava, Desc::Pointer, 4, 1200),
        scaled_probe<float>(Sk::lcomb_vav, Desc::Contig, 6, 4500),
        scaled_probe<double>(Sk::lcomb_vava, Desc::Strided, 6, 4500),
        scaled_probe<float>(Sk::lcomb_vava, Desc::ListS2, 5, 3750),
        scaled_probe<double>(Sk::lcomb_vav, Desc::ListS2, 5, 4500),
        scaled_probe<float>(Sk::lcomb_vav, Desc::Pointer, 5, 4500),
        gaxpy_probe<float>(Gk::mva, Desc::Contig, 3, 4, 7000),
        gaxpy_probe<double>(Gk::mvav, Desc::Contig, 3, 4, 5000),
        gaxpy_probe<float>(Gk::mvav, Desc::Strided, 4, 3, 5000),
        gaxpy_probe<float>(Gk::mva, Desc::List, 4, 4, 7000),
        gaxpy_probe<double>(Gk::mvav, Desc::List, 4, 4, 6000),
        gaxpy_probe<float>(Gk::mva, Desc::ListS2, 3, 3, 500),
        gaxpy_probe<double>(Gk::mva, Desc::ListS2, 3, 3, 5000),
        gaxpy_probe<float>(Gk::mvav, Desc::Pointer, 4, 4, 4500),
        gaxpy_probe<double>(Gk::mva, Desc::Pointer, 4, 4, 7000),
    };
    KT_EXPECT_THRESHOLD_EDGES(probes);
}


}  // namespace
