// DotProduct and CrossProduct: bit-exact results in every description, length
// and summation path, the alignment-dependent 32f single-pair order, in-place
// cross products, argument checks and the parallel thresholds.
#include <omp.h>

#include <cstdint>
#include <functional>
#include <limits>
#include <type_traits>

#include "support.h"

namespace {

using kt::Desc;
using kt::is_list;
using kt::kAllForms;
using kt::single_form;
using kt::Objects;



// --- reference sums ------------------------------------------------------------------

template <class T>
T from_zero(const std::vector<T>& p)
{
    T s = T(0);
    for (T v : p) s = s + v;
    return s;
}

template <class T>
T left_to_right(const std::vector<T>& p)
{
    T s = p[0];
    for (std::size_t j = 1; j < p.size(); ++j) s = s + p[j];
    return s;
}

// Long contiguous pairs: 32f peels up to a 16-byte aligned second vector into
// lane 0 and runs two four-lane sums over blocks of eight; 64f runs two
// two-lane sums over blocks of four.
template <class T>
T blocked(const std::vector<T>& p, std::uintptr_t yAddress)
{
    const int n = int(p.size());
    int j = 0;
    if constexpr (std::is_same_v<T, float>) {
        float P[4] = {0, 0, 0, 0}, Q[4] = {0, 0, 0, 0};
        if (const int mis = int(yAddress & 15))
            for (; j < (16 - mis) / 4; ++j) P[0] = P[0] + p[j];
        for (; j + 8 <= n; j += 8)
            for (int l = 0; l < 4; ++l) P[l] = P[l] + p[j + l], Q[l] = Q[l] + p[j + 4 + l];
        float S[4];
        for (int l = 0; l < 4; ++l) S[l] = P[l] + Q[l];
        float s = (S[0] + S[1]) + (S[2] + S[3]);
        for (; j < n; ++j) s = s + p[j];
        return s;
    } else {
        double P[2] = {0, 0}, Q[2] = {0, 0};
        for (; j + 4 <= n; j += 4)
            for (int l = 0; l < 2; ++l) P[l] = P[l] + p[j + l], Q[l] = Q[l] + p[j + 2 + l];
        double s = (P[0] + Q[0]) + (P[1] + Q[1]);
        for (; j < n; ++j) s = s + p[j];
        return s;
    }
}

// --- dot products --------------------------------------------------------------------

enum class Dk { vv, vav, vava };
const char* name(Dk k) { return k == Dk::vv ? "vv" : k == Dk::vav ? "vav" : "vava"; }

template <class T>
struct DotCall {
    Dk kind;
    Desc form;
    int n, count;
    Objects<T> X, Y, D;  // D: one scalar per object, back to back
    DotCall(Dk k, Desc f, int n_, int c, unsigned seed = 1)
        : kind(k), form(f), n(n_), count(k == Dk::vv ? 1 : c), X(k == Dk::vv ? single_form(f) : f, count, 1, n, seed),
          Y(k == Dk::vava ? f : single_form(f), k == Dk::vava ? count : 1, 1, n, seed + 1), D(Desc::Contig, count, 1, 1)
    {
    }

    kelStatus run() { return run_to(D.base()); }
    kelStatus run_to(T* dst)
    {
        const bool P = form == Desc::Pointer, L = is_list(form);
        switch (kind) {
        case Dk::vv:
            if (P) return KT_PICK(T, kelmDotProduct_vv, _P)(X.table(), X.shift(), Y.table(), Y.shift(), dst, n);
            return KT_PICK(T, kelmDotProduct_vv, )(X.base(), X.elemStride(), Y.base(), Y.elemStride(), dst, n);
        case Dk::vav:
            if (P)
                return KT_PICK(T, kelmDotProduct_vav, _P)(X.table(), X.shift(), X.objStride(), Y.table(), Y.shift(), dst,
                                                          n, count);
            if (L)
                return KT_PICK(T, kelmDotProduct_vav, _L)(X.table(), X.shift(), X.elemStride(), Y.base(),
                                                          Y.elemStride(), dst, n, count);
            return KT_PICK(T, kelmDotProduct_vav, )(X.base(), X.objStride(), X.elemStride(), Y.base(), Y.elemStride(),
                                                    dst, n, count);
        case Dk::vava:
            if (P)
                return KT_PICK(T, kelmDotProduct_vava, _P)(X.table(), X.shift(), X.objStride(), Y.table(), Y.shift(),
                                                           Y.objStride(), dst, n, count);
            if (L)
                return KT_PICK(T, kelmDotProduct_vava, _L)(X.table(), X.shift(), X.elemStride(), Y.table(), Y.shift(),
                                                           Y.elemStride(), dst, n, count);
            return KT_PICK(T, kelmDotProduct_vava, )(X.base(), X.objStride(), X.elemStride(), Y.base(),
                                                     Y.objStride(), Y.elemStride(), dst, n, count);
        }
        return kelErrFail;
    }

    T expected(int k)
    {
        const int ky = kind == Dk::vava ? k : 0;
        std::vector<T> p;
        for (int j = 0; j < n; ++j) p.push_back(X.at(k, j) * Y.at(ky, j));
        if (kind != Dk::vv) return n == 4 ? (p[0] + p[1]) + (p[2] + p[3]) : from_zero(p);
        if (form != Desc::Contig) return from_zero(p);
        if (n >= 3 && n <= 6) return left_to_right(p);
        const auto y = reinterpret_cast<std::uintptr_t>(&Y.at(0, 0));
        return n <= 10 || y % sizeof(T) ? from_zero(p) : blocked(p, y);
    }

    void expect_results()
    {
        for (int k = 0; k < count; ++k)
            ASSERT_TRUE(kt::same_bits(D.at(k, 0), expected(k))) << "object " << k;
        EXPECT_TRUE(D.canaries_intact());
    }
};

template <class T>
void check_dot_lengths()
{
    for (Dk kind : {Dk::vv, Dk::vav, Dk::vava})
        for (Desc f : kAllForms) {
            if (kind == Dk::vv && is_list(f)) continue;
            for (int n : {1, 2, 3, 4, 5, 6, 7, 10, 11, 12, 16, 19, 27, 40})
                for (unsigned seed : {1u, 2u}) {
                    SCOPED_TRACE(testing::Message() << name(kind) << " " << kt::type_name<T>() << " " << kt::name(f)
                                                    << " n " << n << " seed " << seed);
                    DotCall<T> c(kind, f, n, 7, seed * 100 + unsigned(n));
                    const auto x = c.X.snapshot(), y = c.Y.snapshot();
                    ASSERT_EQ(c.run(), kelOk);
                    c.expect_results();
                    EXPECT_TRUE(c.X.unchanged_since(x) && c.Y.unchanged_since(y));
                }
        }
}

TEST(DotProduct, EveryLengthAndDescription32f) { check_dot_lengths<float>(); }
TEST(DotProduct, EveryLengthAndDescription64f) { check_dot_lengths<double>(); }

// Long contiguous 32f pairs: the number of peeled products follows the second
// vector's address (0 to 3), then blocks of eight, then the tail.  Values of
// very different magnitude make every order give different bits.
TEST(DotProduct, LongPairOrderFollowsTheSecondVectorsAlignment32f)
{
    alignas(16) float xs[64], ys[64];
    for (int n : {11, 12, 19, 27}) {
        for (int i = 0; i < 64; ++i) {
            xs[i] = float((i * 7919) % 23 - 11) * (i % 3 == 0 ? 1.0e4f : 1.0f) + 0.1f * float(i);
            ys[i] = float((i * 104729) % 19 - 9) * (i % 4 == 1 ? 3.0e-3f : 1.0f) + 0.7f;
        }
        for (int off = 0; off < 4; ++off) {
            const float* y = ys + off;  // 0, 4, 8, 12 mod 16
            std::vector<float> p;
            for (int j = 0; j < n; ++j) p.push_back(xs[j] * y[j]);
            float r = -1;
            ASSERT_EQ(kelmDotProduct_vv_32f(xs, 4, y, 4, &r, n), kelOk);
            EXPECT_TRUE(kt::same_bits(r, blocked(p, reinterpret_cast<std::uintptr_t>(y)))) << n << " " << off;
            if (n == 11 && off == 2) {  // two peeled, one block, one trailing element
                float P0 = (0.0f + p[0]) + p[1];
                float P[4] = {P0 + p[2], 0.0f + p[3], 0.0f + p[4], 0.0f + p[5]};
                float Q[4] = {0.0f + p[6], 0.0f + p[7], 0.0f + p[8], 0.0f + p[9]};
                float s = ((P[0] + Q[0]) + (P[1] + Q[1])) + ((P[2] + Q[2]) + (P[3] + Q[3]));
                EXPECT_TRUE(kt::same_bits(r, s + p[10]));
            }
        }
    }
}

// The array kernels add length-4 products in pairs, whatever the alignment of
// the destination; the single-pair kernel adds them left to right.
template <class T>
void check_length4_arrays_at_every_destination_offset()
{
    for (Desc f : {Desc::Contig, Desc::List}) {
        DotCall<T> c(Dk::vava, f, 4, 11, 5);
        for (int off = 0; off < 4; ++off) {
            alignas(32) T out[16];
            std::fill(std::begin(out), std::end(out), T(-7));
            ASSERT_EQ(c.run_to(out + off), kelOk);
            for (int k = 0; k < 11; ++k) ASSERT_TRUE(kt::same_bits(out[off + k], c.expected(k))) << off << " " << k;
            for (int e = 0; e < 16; ++e)
                if (e < off || e >= off + 11) {
                    EXPECT_EQ(out[e], T(-7));
                }
        }
    }
}

TEST(DotProduct, LengthFourArraysAtAnyDestinationAlignment)
{
    check_length4_arrays_at_every_destination_offset<float>();
    check_length4_arrays_at_every_destination_offset<double>();
}

// --- cross products ------------------------------------------------------------------

enum class Ck { vv, vav, vva, vava };
const char* name(Ck k)
{
    const char* n[] = {"vv", "vav", "vva", "vava"};
    return n[int(k)];
}

template <class T>
struct CrossCall {
    Ck kind;
    Desc form;
    int count;
    Objects<T> X, Y, D;
    static bool x_array(Ck k) { return k == Ck::vav || k == Ck::vava; }
    static bool y_array(Ck k) { return k == Ck::vva || k == Ck::vava; }
    CrossCall(Ck k, Desc f, int c, unsigned seed = 1)
        : kind(k), form(f), count(k == Ck::vv ? 1 : c), X(x_array(k) ? f : single_form(f), x_array(k) ? count : 1, 1, 3, seed),
          Y(y_array(k) ? f : single_form(f), y_array(k) ? count : 1, 1, 3, seed + 1),
          D(k == Ck::vv ? single_form(f) : f, count, 1, 3, seed + 2)
    {
    }

    kelStatus run()
    {
        const bool P = form == Desc::Pointer, L = is_list(form);
        switch (kind) {
        case Ck::vv:
            if (P) return KT_PICK(T, kelmCrossProduct_vv, _P)(X.table(), X.shift(), Y.table(), Y.shift(), D.table(), D.shift());
            return KT_PICK(T, kelmCrossProduct_vv, )(X.base(), X.elemStride(), Y.base(), Y.elemStride(), D.base(),
                                                     D.elemStride());
        case Ck::vav:
            if (P)
                return KT_PICK(T, kelmCrossProduct_vav, _P)(X.table(), X.shift(), X.objStride(), Y.table(), Y.shift(),
                                                            D.table(), D.shift(), D.objStride(), count);
            if (L)
                return KT_PICK(T, kelmCrossProduct_vav, _L)(X.table(), X.shift(), X.elemStride(), Y.base(),
                                                            Y.elemStride(), D.table(), D.shift(), D.elemStride(), count);
            return KT_PICK(T, kelmCrossProduct_vav, )(X.base(), X.objStride(), X.elemStride(), Y.base(), Y.elemStride(),
                                                      D.base(), D.objStride(), D.elemStride(), count);
        case Ck::vva:
            if (P)
                return KT_PICK(T, kelmCrossProduct_vva, _P)(X.table(), X.shift(), Y.table(), Y.shift(), Y.objStride(),
                                                            D.table(), D.shift(), D.objStride(), count);
            if (L)
                return KT_PICK(T, kelmCrossProduct_vva, _L)(X.base(), X.elemStride(), Y.table(), Y.shift(),
                                                            Y.elemStride(), D.table(), D.shift(), D.elemStride(), count);
            return KT_PICK(T, kelmCrossProduct_vva, )(X.base(), X.elemStride(), Y.base(), Y.objStride(), Y.elemStride(),
                                                      D.base(), D.objStride(), D.elemStride(), count);
        case Ck::vava:
            if (P)
                return KT_PICK(T, kelmCrossProduct_vava, _P)(X.table(), X.shift(), X.objStride(), Y.table(), Y.shift(),
                                                             Y.objStride(), D.table(), D.shift(), D.objStride(), count);
            if (L)
                return KT_PICK(T, kelmCrossProduct_vava, _L)(X.table(), X.shift(), X.elemStride(), Y.table(),
                                                             Y.shift(), Y.elemStride(), D.table(), D.shift(),
                                                             D.elemStride(), count);
            return KT_PICK(T, kelmCrossProduct_vava, )(X.base(), X.objStride(), X.elemStride(), Y.base(),
                                                       Y.objStride(), Y.elemStride(), D.base(), D.objStride(),
                                                       D.elemStride(), count);
        }
        return kelErrFail;
    }

    void expect_results()
    {
        for (int k = 0; k < count; ++k) {
            const int kx = x_array(kind) ? k : 0, ky = y_array(kind) ? k : 0;
            const T a0 = X.at(kx, 0), a1 = X.at(kx, 1), a2 = X.at(kx, 2);
            const T b0 = Y.at(ky, 0), b1 = Y.at(ky, 1), b2 = Y.at(ky, 2);
            const T r[3] = {a1 * b2 - a2 * b1, a2 * b0 - a0 * b2, a0 * b1 - a1 * b0};
            for (int i = 0; i < 3; ++i) ASSERT_TRUE(kt::same_bits(D.at(k, i), r[i])) << "object " << k << " " << i;
        }
        EXPECT_TRUE(D.canaries_intact());
    }
};

template <class T>
void check_cross_descriptions()
{
    for (Ck kind : {Ck::vv, Ck::vav, Ck::vva, Ck::vava})
        for (Desc f : kAllForms) {
            if (kind == Ck::vv && is_list(f)) continue;
            for (int count : {1, 5, 8}) {
                SCOPED_TRACE(testing::Message() << name(kind) << " " << kt::type_name<T>() << " " << kt::name(f)
                                                << " count " << count);
                CrossCall<T> c(kind, f, count, unsigned(count));
                const auto x = c.X.snapshot(), y = c.Y.snapshot();
                ASSERT_EQ(c.run(), kelOk);
                c.expect_results();
                EXPECT_TRUE(c.X.unchanged_since(x) && c.Y.unchanged_since(y));
            }
        }
}

TEST(CrossProduct, EveryMemberAndDescription32f) { check_cross_descriptions<float>(); }
TEST(CrossProduct, EveryMemberAndDescription64f) { check_cross_descriptions<double>(); }

template <class T>
void check_cross_in_place()
{
    const T a[3] = {T(1.5), T(-2.25), T(3.125)}, b[3] = {T(-0.5), T(4.75), T(2.0)};
    const T r[3] = {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
    for (int onto : {0, 1}) {
        T x[3] = {a[0], a[1], a[2]}, y[3] = {b[0], b[1], b[2]};
        T* d = onto == 0 ? x : y;
        ASSERT_EQ(KT_PICK(T, kelmCrossProduct_vv, )(x, int(sizeof(T)), y, int(sizeof(T)), d, int(sizeof(T))), kelOk);
        for (int i = 0; i < 3; ++i) EXPECT_TRUE(kt::same_bits(d[i], r[i])) << "onto source " << onto + 1 << " " << i;
    }
}

TEST(CrossProduct, ContiguousPairMayWriteOverEitherSource)
{
    check_cross_in_place<float>();
    check_cross_in_place<double>();
}

// Arrays of contiguous vectors run several objects at a time and read each
// object as four elements; the gaps between objects must come out untouched,
// the last object of an array as exact as the others, and an array written
// over its first source must equal a fresh run.
template <class T>
void check_cross_vector_blocks()
{
    std::mt19937 g(7);
    std::uniform_real_distribution<double> u(-4.0, 4.0);
    for (int stride : {3, 4, 6})
        for (int count : {8, 9, 16, 17, 23}) {
            SCOPED_TRACE(testing::Message() << kt::type_name<T>() << " stride " << stride << " count " << count);
            const std::size_t n = std::size_t(stride) * std::size_t(count);
            std::vector<T> x(n), y(n), d(n, T(-7.0));
            for (std::size_t i = 0; i < n; ++i) x[i] = T(u(g)), y[i] = T(u(g));
            std::vector<T> want = d;
            for (int k = 0; k < count; ++k) {
                const T* a = &x[std::size_t(k * stride)];
                const T* b = &y[std::size_t(k * stride)];
                T* r = &want[std::size_t(k * stride)];
                r[0] = a[1] * b[2] - a[2] * b[1], r[1] = a[2] * b[0] - a[0] * b[2], r[2] = a[0] * b[1] - a[1] * b[0];
            }
            const int os = stride * int(sizeof(T)), es = int(sizeof(T));
            ASSERT_EQ(KT_PICK(T, kelmCrossProduct_vava, )(x.data(), os, es, y.data(), os, es, d.data(), os, es, count), kelOk);
            for (std::size_t i = 0; i < n; ++i) ASSERT_TRUE(kt::same_bits(d[i], want[i])) << "element " << i;
            for (int k = 0; k < count; ++k)
                for (int i = 3; i < stride; ++i) want[std::size_t(k * stride + i)] = x[std::size_t(k * stride + i)];
            ASSERT_EQ(KT_PICK(T, kelmCrossProduct_vava, )(x.data(), os, es, y.data(), os, es, x.data(), os, es, count), kelOk);
            for (std::size_t i = 0; i < n; ++i) ASSERT_TRUE(kt::same_bits(x[i], want[i])) << "in place, element " << i;
        }
}

TEST(CrossProduct, ContiguousArraysInBlocksKeepGapsAndLastObject)
{
    check_cross_vector_blocks<float>();
    check_cross_vector_blocks<double>();
}

// --- parallel runs -------------------------------------------------------------------

TEST(DotCrossParallel, LargeArraysMatchTheReferenceOnTwoThreads)
{
    kt::Threads two(2);
    for (Desc f : kAllForms) {
        for (Dk kind : {Dk::vav, Dk::vava})
            for (int n : {3, 4, 9}) {
                DotCall<float> c(kind, f, n, 1601);
                ASSERT_EQ(c.run(), kelOk);
                c.expect_results();
                DotCall<double> d(kind, f, n, 1601);
                ASSERT_EQ(d.run(), kelOk);
                d.expect_results();
            }
        for (Ck kind : {Ck::vav, Ck::vva, Ck::vava}) {
            CrossCall<float> c(kind, f, 2001);
            ASSERT_EQ(c.run(), kelOk);
            c.expect_results();
            CrossCall<double> d(kind, f, 2001);
            ASSERT_EQ(d.run(), kelOk);
            d.expect_results();
        }
    }
}



template <class T>
kt::Probe dot_probe(Dk kind, Desc f, int n, int threshold)
{
    const std::string what = std::string("dot ") + name(kind) + " " + kt::type_name<T>() + " " + kt::name(f);
    auto work = [=](int c) { return kind == Dk::vav ? n * c + n : 2 * n * c; };
    return {what, threshold, work, [=](int count, bool& usable) {
                DotCall<T> c(kind, f, n, count);
                c.D.at(count - 1, 0) = std::numeric_limits<T>::quiet_NaN();
                kt::run_in_busy_team([&] { c.run(); }, usable);
                return std::isnan(c.D.at(count - 1, 0));
            }};
}

template <class T>
kt::Probe cross_probe(Ck kind, Desc f)
{
    const std::string what = std::string("cross ") + name(kind) + " " + kt::type_name<T>() + " " + kt::name(f);
    auto work = [=](int c) { return kind == Ck::vava ? 3 * c : 2 * c + 1; };
    return {what, 3000, work, [=](int count, bool& usable) {
                CrossCall<T> c(kind, f, count);
                c.D.at(count - 1, 0) = std::numeric_limits<T>::quiet_NaN();
                kt::run_in_busy_team([&] { c.run(); }, usable);
                return std::isnan(c.D.at(count - 1, 0));
            }};
}

void check_probes(const std::vector<kt::Probe>& probes)
{
    KT_EXPECT_THRESHOLD_EDGES(probes);
}

TEST(DotCrossParallel, ThresholdsByMemberDescriptionAndPath)
{
    check_probes({
        dot_probe<float>(Dk::vav, Desc::Contig, 5, 5000),
        dot_probe<double>(Dk::vav, Desc::Contig, 5, 3500),
        dot_probe<float>(Dk::vava, Desc::Strided, 4, 2620),
        dot_probe<double>(Dk::vava, Desc::Strided, 4, 2000),
        dot_probe<float>(Dk::vav, Desc::List, 3, 2400),
        dot_probe<double>(Dk::vava, Desc::List, 3, 4200),
        dot_probe<float>(Dk::vava, Desc::ListS2, 7, 2400),
        dot_probe<double>(Dk::vav, Desc::ListS2, 7, 3300),
        dot_probe<float>(Dk::vava, Desc::Pointer, 4, 2400),
        dot_probe<double>(Dk::vav, Desc::Pointer, 4, 2000),
        cross_probe<float>(Ck::vav, Desc::Contig),  // 1499 serial, 1500 parallel
        cross_probe<double>(Ck::vva, Desc::Strided),
        cross_probe<float>(Ck::vava, Desc::Pointer),
        cross_probe<double>(Ck::vava, Desc::ListS2),
        cross_probe<float>(Ck::vva, Desc::List),
    });
}


}  // namespace
