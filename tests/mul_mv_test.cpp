// Mul with a vector or a constant operand: bit-exact results in every
// description and size, argument checks, the parallel thresholds, special
// constants and the aligned / unaligned 32f matrix-by-constant paths.
#include <omp.h>

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

// The 32f or 64f member of an operation, as a function pointer.
#define KT_MT(T, M, TT, SUF) (tr ? KT_PICK(T, TT, SUF) : KT_PICK(T, M, SUF))



// A single operand of a call keeps the strided form in the list description.

// --- matrix-vector ----------------------------------------------------------------------

enum class Mv { mv, mva, mav, mava };
const char* name(Mv k) { return k == Mv::mv ? "mv" : k == Mv::mva ? "mva" : k == Mv::mav ? "mav" : "mava"; }
bool matrix_array(Mv k) { return k == Mv::mav || k == Mv::mava; }
bool vector_array(Mv k) { return k == Mv::mva || k == Mv::mava; }

template <class T>
struct MvCall {
    Mv kind;
    bool tr;
    Desc form;
    int w, h, n, count;
    Objects<T> A, X, Y;
    MvCall(Mv k, bool t, Desc f, int w_, int h_, int n_, int c, unsigned seed = 1)
        : kind(k), tr(t), form(f), w(w_), h(h_), n(n_), count(k == Mv::mv ? 1 : c),
          A(matrix_array(k) ? f : single_form(f), matrix_array(k) ? count : 1, h, w, seed),
          X(vector_array(k) ? f : single_form(f), vector_array(k) ? count : 1, 1, n, seed + 1),
          Y(k == Mv::mv ? single_form(f) : f, count, 1, t ? w : h, seed + 2)
    {
    }

    kelStatus run()
    {
        const bool P = form == Desc::Pointer, L = is_list(form);
        switch (kind) {
        case Mv::mv:
            if (P)
                return KT_MT(T, kelmMul_mv, kelmMul_tv, _P)(A.table(), A.shift(), w, h, X.table(), X.shift(), n,
                                                            Y.table(), Y.shift());
            return KT_MT(T, kelmMul_mv, kelmMul_tv, )(A.base(), A.rowStride(), A.elemStride(), w, h, X.base(),
                                                      X.elemStride(), n, Y.base(), Y.elemStride());
        case Mv::mva:
            if (P)
                return KT_MT(T, kelmMul_mva, kelmMul_tva, _P)(A.table(), A.shift(), w, h, X.table(), X.shift(),
                                                              X.objStride(), n, Y.table(), Y.shift(), Y.objStride(),
                                                              count);
            if (L)
                return KT_MT(T, kelmMul_mva, kelmMul_tva, _L)(A.base(), A.rowStride(), A.elemStride(), w, h,
                                                              X.table(), X.shift(), X.elemStride(), n, Y.table(),
                                                              Y.shift(), Y.elemStride(), count);
            return KT_MT(T, kelmMul_mva, kelmMul_tva, )(A.base(), A.rowStride(), A.elemStride(), w, h, X.base(),
                                                        X.objStride(), X.elemStride(), n, Y.base(), Y.objStride(),
                                                        Y.elemStride(), count);
        case Mv::mav:
            if (P)
                return KT_MT(T, kelmMul_mav, kelmMul_tav, _P)(A.table(), A.shift(), A.objStride(), w, h, X.table(),
                                                              X.shift(), n, Y.table(), Y.shift(), Y.objStride(), count);
            if (L)
                return KT_MT(T, kelmMul_mav, kelmMul_tav, _L)(A.table(), A.shift(), A.rowStride(), A.elemStride(), w,
                                                              h, X.base(), X.elemStride(), n, Y.table(), Y.shift(),
                                                              Y.elemStride(), count);
            return KT_MT(T, kelmMul_mav, kelmMul_tav, )(A.base(), A.objStride(), A.rowStride(), A.elemStride(), w, h,
                                                        X.base(), X.elemStride(), n, Y.base(), Y.objStride(),
                                                        Y.elemStride(), count);
        case Mv::mava:
            if (P)
                return KT_MT(T, kelmMul_mava, kelmMul_tava, _P)(A.table(), A.shift(), A.objStride(), w, h,
                                                                X.table(), X.shift(), X.objStride(), n, Y.table(),
                                                                Y.shift(), Y.objStride(), count);
            if (L)
                return KT_MT(T, kelmMul_mava, kelmMul_tava, _L)(A.table(), A.shift(), A.rowStride(), A.elemStride(),
                                                                w, h, X.table(), X.shift(), X.elemStride(), n,
                                                                Y.table(), Y.shift(), Y.elemStride(), count);
            return KT_MT(T, kelmMul_mava, kelmMul_tava, )(A.base(), A.objStride(), A.rowStride(), A.elemStride(), w,
                                                          h, X.base(), X.objStride(), X.elemStride(), n, Y.base(),
                                                          Y.objStride(), Y.elemStride(), count);
        }
        return kelErrFail;
    }

    // Sum from zero, products in ascending k, in T.
    T expected(int k, int i)
    {
        const int ka = matrix_array(kind) ? k : 0, kx = vector_array(kind) ? k : 0;
        T s = T(0);
        for (int j = 0; j < n; ++j) s = s + (tr ? A.at(ka, j, i) : A.at(ka, i, j)) * X.at(kx, j);
        return s;
    }

    // Every result element bit-exact, nothing else touched.
    void expect_results()
    {
        for (int k = 0; k < count; ++k)
            for (int i = 0; i < (tr ? w : h); ++i)
                ASSERT_TRUE(kt::same_bits(Y.at(k, i), expected(k, i))) << "object " << k << " element " << i;
        EXPECT_TRUE(Y.canaries_intact());
    }
};

template <class T>
void check_matrix_vector_sizes()
{
    for (Mv kind : {Mv::mv, Mv::mva, Mv::mav, Mv::mava})
        for (bool tr : {false, true})
            for (Desc f : kAllForms) {
                if (kind == Mv::mv && is_list(f)) continue;
                for (int w = 1; w <= 7; ++w)
                    for (int h = 1; h <= 7; ++h) {
                        SCOPED_TRACE(testing::Message() << (tr ? "t" : "m") << name(kind) + 1 << " " << kt::type_name<T>()
                                                        << " " << kt::name(f) << " w " << w << " h " << h);
                        MvCall<T> c(kind, tr, f, w, h, tr ? h : w, 11, unsigned(w * 8 + h));  // 11: blocks of eight and of four, and a rest
                        const auto a = c.A.snapshot(), x = c.X.snapshot();
                        ASSERT_EQ(c.run(), kelOk);
                        c.expect_results();
                        EXPECT_TRUE(c.A.unchanged_since(a) && c.X.unchanged_since(x));
                    }
            }
}

TEST(MulMatrixVector, EverySizeAndDescription32f) { check_matrix_vector_sizes<float>(); }
TEST(MulMatrixVector, EverySizeAndDescription64f) { check_matrix_vector_sizes<double>(); }

// Products that are all -0 must still give +0: the sum starts at zero.
template <class T>
void check_negative_zero_rows()
{
    for (int n : {2, 3, 4, 5, 6, 7})
        for (Desc f : {Desc::Contig, Desc::Strided, Desc::Pointer, Desc::List})
            for (bool tr : {false, true}) {
                MvCall<T> c(Mv::mava, tr, f, n, n, n, 9);  // a block of eight and one more
                for (int k = 0; k < 9; ++k)
                    for (int j = 0; j < n; ++j) {
                        c.X.at(k, j) = T(0);
                        for (int i = 0; i < n; ++i) c.A.at(k, i, j) = T(-1) - T(i + j);
                    }
                ASSERT_EQ(c.run(), kelOk);
                for (int k = 0; k < 9; ++k)
                    for (int i = 0; i < n; ++i)
                        EXPECT_TRUE(kt::same_bits(c.Y.at(k, i), T(0))) << kt::name(f) << " n " << n << " tr " << tr;
            }
}

TEST(MulMatrixVector, SumStartsFromPositiveZero)
{
    check_negative_zero_rows<float>();
    check_negative_zero_rows<double>();
}

// --- by constant --------------------------------------------------------------------------

enum class Bc { mc, mac, vc, vac, vca, vaca };
const char* name(Bc k)
{
    const char* n[] = {"mc", "mac", "vc", "vac", "vca", "vaca"};
    return n[int(k)];
}
bool is_matrix(Bc k) { return k == Bc::mc || k == Bc::mac; }
bool source_array(Bc k) { return k == Bc::mac || k == Bc::vac || k == Bc::vaca; }
bool constant_array(Bc k) { return k == Bc::vca || k == Bc::vaca; }
bool single(Bc k) { return k == Bc::mc || k == Bc::vc; }

template <class T>
struct BcCall {
    Bc kind;
    bool tr;  // tc, tac: width and height are the result's, the source is stored transposed
    Desc form;
    int w, h, count;
    T val;
    Objects<T> S, C, D;
    BcCall(Bc k, bool t, Desc f, int w_, int h_, int c, T v = T(1.75), unsigned seed = 1)
        : kind(k), tr(t), form(f), w(w_), h(is_matrix(k) ? h_ : 1), count(single(k) ? 1 : c), val(v),
          S(source_array(k) ? f : single_form(f), source_array(k) ? count : 1, t ? w : h, t ? h : w, seed),
          C(f == Desc::Pointer ? Desc::Strided : f, count, 1, 1, seed + 1),
          D(single(k) ? single_form(f) : f, count, h, w, seed + 2)
    {
    }

    kelStatus run()
    {
        const bool P = form == Desc::Pointer, L = is_list(form);
        switch (kind) {
        case Bc::mc:
            if (P) return KT_MT(T, kelmMul_mc, kelmMul_tc, _P)(S.table(), S.shift(), val, D.table(), D.shift(), w, h);
            return KT_MT(T, kelmMul_mc, kelmMul_tc, )(S.base(), S.rowStride(), S.elemStride(), val, D.base(),
                                                      D.rowStride(), D.elemStride(), w, h);
        case Bc::mac:
            if (P)
                return KT_MT(T, kelmMul_mac, kelmMul_tac, _P)(S.table(), S.shift(), S.objStride(), val, D.table(),
                                                              D.shift(), D.objStride(), w, h, count);
            if (L)
                return KT_MT(T, kelmMul_mac, kelmMul_tac, _L)(S.table(), S.shift(), S.rowStride(), S.elemStride(), val,
                                                              D.table(), D.shift(), D.rowStride(), D.elemStride(), w, h,
                                                              count);
            return KT_MT(T, kelmMul_mac, kelmMul_tac, )(S.base(), S.objStride(), S.rowStride(), S.elemStride(), val,
                                                        D.base(), D.objStride(), D.rowStride(), D.elemStride(), w, h,
                                                        count);
        case Bc::vc:
            if (P) return KT_PICK(T, kelmMul_vc, _P)(S.table(), S.shift(), val, D.table(), D.shift(), w);
            return KT_PICK(T, kelmMul_vc, )(S.base(), S.elemStride(), val, D.base(), D.elemStride(), w);
        case Bc::vac:
            if (P)
                return KT_PICK(T, kelmMul_vac, _P)(S.table(), S.shift(), S.objStride(), val, D.table(), D.shift(),
                                                   D.objStride(), w, count);
            if (L)
                return KT_PICK(T, kelmMul_vac, _L)(S.table(), S.shift(), S.elemStride(), val, D.table(), D.shift(),
                                                   D.elemStride(), w, count);
            return KT_PICK(T, kelmMul_vac, )(S.base(), S.objStride(), S.elemStride(), val, D.base(), D.objStride(),
                                             D.elemStride(), w, count);
        case Bc::vca:
            if (P)
                return KT_PICK(T, kelmMul_vca, _P)(S.table(), S.shift(), C.base(), C.objStride(), D.table(), D.shift(),
                                                   D.objStride(), w, count);
            if (L)
                return KT_PICK(T, kelmMul_vca, _L)(S.base(), S.elemStride(), C.table(), C.shift(), D.table(),
                                                   D.shift(), D.elemStride(), w, count);
            return KT_PICK(T, kelmMul_vca, )(S.base(), S.elemStride(), C.base(), C.objStride(), D.base(),
                                             D.objStride(), D.elemStride(), w, count);
        case Bc::vaca:
            if (P)
                return KT_PICK(T, kelmMul_vaca, _P)(S.table(), S.shift(), S.objStride(), C.base(), C.objStride(),
                                                    D.table(), D.shift(), D.objStride(), w, count);
            if (L)
                return KT_PICK(T, kelmMul_vaca, _L)(S.table(), S.shift(), S.elemStride(), C.table(), C.shift(),
                                                    D.table(), D.shift(), D.elemStride(), w, count);
            return KT_PICK(T, kelmMul_vaca, )(S.base(), S.objStride(), S.elemStride(), C.base(), C.objStride(),
                                              D.base(), D.objStride(), D.elemStride(), w, count);
        }
        return kelErrFail;
    }

    T expected(int k, int i, int j)
    {
        const int ks = source_array(kind) ? k : 0;
        const T c = constant_array(kind) ? C.at(k, 0) : val;
        return (tr ? S.at(ks, j, i) : S.at(ks, i, j)) * c;
    }

    void expect_results()
    {
        for (int k = 0; k < count; ++k)
            for (int i = 0; i < h; ++i)
                for (int j = 0; j < w; ++j)
                    ASSERT_TRUE(kt::same_bits(D.at(k, i, j), expected(k, i, j)))
                        << "object " << k << " element " << i << "," << j;
        EXPECT_TRUE(D.canaries_intact());
    }
};

template <class T>
void check_by_constant_sizes()
{
    for (Bc kind : {Bc::mc, Bc::mac, Bc::vc, Bc::vac, Bc::vca, Bc::vaca})
        for (bool tr : {false, true}) {
            if (tr && !is_matrix(kind)) continue;
            for (Desc f : kAllForms) {
                if (single(kind) && is_list(f)) continue;
                for (int w = 1; w <= 7; ++w)
                    for (int h = 1; h <= (is_matrix(kind) ? 7 : 1); ++h) {
                        SCOPED_TRACE(testing::Message() << (tr ? "t" : "") << name(kind) << " " << kt::type_name<T>()
                                                        << " " << kt::name(f) << " w " << w << " h " << h);
                        BcCall<T> c(kind, tr, f, w, h, 3, T(-1.375), unsigned(w * 8 + h));
                        const auto s = c.S.snapshot();
                        ASSERT_EQ(c.run(), kelOk);
                        c.expect_results();
                        EXPECT_TRUE(c.S.unchanged_since(s));
                    }
            }
        }
}

TEST(MulByConstant, EverySizeAndDescription32f) { check_by_constant_sizes<float>(); }
TEST(MulByConstant, EverySizeAndDescription64f) { check_by_constant_sizes<double>(); }

// Each result is one plain product: zero constants give signed zeros and NaN
// for infinite sources, infinite and NaN constants propagate.
template <class T>
void check_special_constants()
{
    const T inf = std::numeric_limits<T>::infinity(), nan = std::numeric_limits<T>::quiet_NaN();
    for (T val : {T(0), T(-0.0), inf, -inf, nan})
        for (Bc kind : {Bc::mac, Bc::vac, Bc::vc})
            for (Desc f : {Desc::Contig, Desc::Strided, Desc::List})
                for (int n : {4, 5}) {
                    if (single(kind) && is_list(f)) continue;
                    BcCall<T> c(kind, false, f, n, n, 3, val);
                    c.S.at(0, 0, 0) = inf;
                    c.S.at(0, 0, 1) = T(-0.0);
                    c.S.at(c.S.count() - 1, c.h - 1, n - 1) = -inf;
                    ASSERT_EQ(c.run(), kelOk);
                    c.expect_results();
                    if (val == T(0)) {
                        EXPECT_TRUE(std::isnan(c.D.at(0, 0, 0)));
                    }
                    if (val != val) {
                        EXPECT_TRUE(std::isnan(c.D.at(0, 0, 2)));
                    }
                }
}

TEST(MulByConstant, ZeroInfiniteAndNaNConstants)
{
    check_special_constants<float>();
    check_special_constants<double>();
}

// The contiguous 32f matrix-by-constant kernel takes aligned accesses when
// bases and strides are multiples of 16 bytes, unaligned ones otherwise; the
// exported kernels run the same code.  All give the plain products.
TEST(MulByConstant, AlignedAndUnalignedPathsAgree32f)
{
    for (int n = 3; n <= 6; ++n) {
        const int count = 5, row = (n * 4 + 15) / 16 * 16;  // padded rows: every row 16-byte aligned
        for (const auto& layout :
             {std::pair<int, int>{row, n * row}, {row, n * row + 16}, {n * 4, n * n * 4}, {row + 4, n * (row + 4)}})
            for (int offset : {0, 4, 8, 12}) {
                const int rs = layout.first, os = layout.second;
                alignas(16) float src[6 * 32 * 5 + 8], dst[6 * 32 * 5 + 8], ref[6 * 32 * 5 + 8];
                for (std::size_t e = 0; e < std::size(src); ++e) src[e] = float(int(e % 23) - 11) / 8.0f;
                for (std::size_t e = 0; e < std::size(dst); ++e) dst[e] = ref[e] = -99.0f;
                const float val = 1.0f / 3.0f;
                float* s = src + offset / 4;
                float* d = dst + offset / 4;
                for (int k = 0; k < count; ++k)
                    for (int i = 0; i < n; ++i)
                        for (int j = 0; j < n; ++j) ref[offset / 4 + (k * os + i * rs) / 4 + j] = s[(k * os + i * rs) / 4 + j] * val;
                SCOPED_TRACE(testing::Message() << "order " << n << " row " << rs << " offset " << offset);
                ASSERT_EQ(kelmMul_mac_32f(s, os, rs, 4, val, d, os, rs, 4, n, n, count), kelOk);
                EXPECT_EQ(std::memcmp(dst, ref, sizeof dst), 0);
                std::fill(std::begin(dst), std::end(dst), -99.0f);
                using Asm = kelStatus (*)(const kel32f*, int, int, kel32f, kel32f*, int, int, int);
                const Asm asms[] = {ownmMul_mac_32f_3x3_ASM, ownmMul_mac_32f_4x4_ASM, ownmMul_mac_32f_5x5_ASM,
                                    ownmMul_mac_32f_6x6_ASM};
                ASSERT_EQ(asms[n - 3](s, os, rs, val, d, os, rs, count), kelOk);
                EXPECT_EQ(std::memcmp(dst, ref, sizeof dst), 0);
            }
    }
}

// Densely packed 64f arrays are one run of products whatever the alignment
// of source and destination.
TEST(MulByConstant, DenseRunsAtAnyAlignment64f)
{
    for (int n : {1, 3, 4, 5})
        for (int srcOff : {0, 1})
            for (int dstOff : {0, 1}) {
                const int count = 7, elems = n * n * count;
                alignas(16) double src[5 * 5 * 7 + 2], dst[5 * 5 * 7 + 2];
                for (int e = 0; e < elems + 1; ++e) src[e] = double(e % 13) - 6.5, dst[e] = -99.0;
                dst[elems + 1] = -99.0;
                const double* s = src + srcOff;
                double* d = dst + dstOff;
                ASSERT_EQ(kelmMul_mac_64f(s, n * n * 8, n * 8, 8, -0.75, d, n * n * 8, n * 8, 8, n, n, count), kelOk);
                for (int e = 0; e < elems; ++e) ASSERT_TRUE(kt::same_bits(d[e], s[e] * -0.75)) << n << " " << e;
                EXPECT_EQ(dst[dstOff ? 0 : elems], -99.0);
                EXPECT_EQ(dst[elems + 1], -99.0);
            }
}

TEST(MulByConstant, ExportedGeneralStrideAndPointerKernels32f)
{
    using S2 = kelStatus (*)(const kel32f*, int, int, int, kel32f, kel32f*, int, int, int, int);
    const S2 s2[] = {ownmMul_mac_32f_3x3_S2_ASM, ownmMul_mac_32f_4x4_S2_ASM, ownmMul_mac_32f_5x5_S2_ASM,
                     ownmMul_mac_32f_6x6_S2_ASM};
    for (int n = 3; n <= 6; ++n) {
        BcCall<float> c(Bc::mac, false, Desc::Strided, n, n, 4, 2.5f);
        ASSERT_EQ(s2[n - 3](c.S.base(), c.S.objStride(), c.S.rowStride(), c.S.elemStride(), c.val, c.D.base(),
                            c.D.objStride(), c.D.rowStride(), c.D.elemStride(), c.count),
                  kelOk);
        c.expect_results();
        BcCall<float> p(Bc::mac, false, Desc::Pointer, n, n + 1, 4, 2.5f);
        ASSERT_EQ(ownkelmMul_mac_32f_P_ASM(p.S.table(), p.S.shift(), p.S.objStride(), p.val, p.D.table(), p.D.shift(),
                                           p.D.objStride(), n, n + 1, p.count),
                  kelOk);
        p.expect_results();
    }
}

// --- parallel runs --------------------------------------------------------------------------

// Large arrays on two threads give the same bits as on one.
TEST(MulParallel, ArraysAboveTheThresholdsMatchTheReference)
{
    kt::Threads two(2);
    for (Desc f : kAllForms) {
        for (Mv kind : {Mv::mva, Mv::mav, Mv::mava})
            for (auto wh : {std::pair<int, int>{3, 3}, {4, 4}, {3, 5}}) {
                MvCall<float> c(kind, false, f, wh.first, wh.second, wh.first, 801);
                ASSERT_EQ(c.run(), kelOk);
                c.expect_results();
                MvCall<double> d(kind, true, f, wh.first, wh.second, wh.second, 801);
                ASSERT_EQ(d.run(), kelOk);
                d.expect_results();
            }
        for (Bc kind : {Bc::mac, Bc::vac, Bc::vca, Bc::vaca}) {
            BcCall<float> c(kind, false, f, 4, 4, 1001);
            ASSERT_EQ(c.run(), kelOk);
            c.expect_results();
            BcCall<double> d(kind, kind == Bc::mac, f, 3, 5, 1001);
            ASSERT_EQ(d.run(), kelOk);
            d.expect_results();
        }
    }
}



template <class T>
kt::Probe mv_probe(const char* what, Mv kind, bool tr, Desc f, int w, int h, int threshold, std::function<int(int)> work)
{
    return {what, threshold, work, [=](int count, bool& usable) {
                MvCall<T> c(kind, tr, f, w, h, tr ? h : w, count);
                c.Y.at(count - 1, 0) = std::numeric_limits<T>::quiet_NaN();
                kt::run_in_busy_team([&] { c.run(); }, usable);
                return std::isnan(c.Y.at(count - 1, 0));
            }};
}

template <class T>
kt::Probe bc_probe(const char* what, Bc kind, bool tr, Desc f, int w, int h, int threshold, std::function<int(int)> work)
{
    return {what, threshold, work, [=](int count, bool& usable) {
                BcCall<T> c(kind, tr, f, w, h, count);
                c.D.at(count - 1, 0, 0) = std::numeric_limits<T>::quiet_NaN();
                kt::run_in_busy_team([&] { c.run(); }, usable);
                return std::isnan(c.D.at(count - 1, 0, 0));
            }};
}

TEST(MulParallel, ThresholdsByMemberDescriptionAndPath)
{
    auto mva = [](int w, int h) { return [=](int c) { return w * h + (w + h) * c; }; };
    auto mav = [](int w, int h) { return [=](int c) { return h * (w + 1) * c + w; }; };
    auto tav = [](int w, int h) { return [=](int c) { return w * (h + 1) * c + h; }; };
    auto mava = [](int w, int h) { return [=](int c) { return (w * (h + 1) + h) * c; }; };
    auto mac = [](int w, int h) { return [=](int c) { return 2 * w * h * c; }; };
    auto vac = [](int n) { return [=](int c) { return 2 * n * c; }; };
    auto vca = [](int n) { return [=](int c) { return n * c + n + c; }; };
    auto vaca = [](int n) { return [=](int c) { return 2 * n * c + c; }; };
    const kt::Probe probes[] = {
        mv_probe<float>("mva 32f contiguous", Mv::mva, false, Desc::Contig, 2, 2, 2500, mva(2, 2)),
        mv_probe<double>("mva 64f contiguous", Mv::mva, false, Desc::Contig, 2, 2, 3600, mva(2, 2)),
        mv_probe<float>("tva 32f general strides", Mv::mva, true, Desc::Strided, 2, 2, 1440, mva(2, 2)),
        mv_probe<float>("mva 32f list", Mv::mva, false, Desc::List, 2, 2, 3600, mva(2, 2)),
        mv_probe<double>("mva 64f list general", Mv::mva, false, Desc::ListS2, 2, 2, 1440, mva(2, 2)),
        mv_probe<float>("mva 32f pointer", Mv::mva, false, Desc::Pointer, 2, 2, 1440, mva(2, 2)),
        mv_probe<float>("mav 32f contiguous", Mv::mav, false, Desc::Contig, 3, 2, 2500, mav(3, 2)),
        mv_probe<float>("tav 32f contiguous", Mv::mav, true, Desc::Contig, 3, 2, 2500, tav(3, 2)),
        mv_probe<double>("tav 64f pointer", Mv::mav, true, Desc::Pointer, 3, 2, 1440, tav(3, 2)),
        mv_probe<double>("mava 64f contiguous", Mv::mava, false, Desc::Contig, 3, 2, 3600, mava(3, 2)),
        mv_probe<float>("tava 32f list general", Mv::mava, true, Desc::ListS2, 3, 2, 1440, mava(3, 2)),
        bc_probe<float>("vac 32f contiguous", Bc::vac, false, Desc::Contig, 5, 1, 2500, vac(5)),
        bc_probe<double>("vac 64f general strides", Bc::vac, false, Desc::Strided, 5, 1, 1440, vac(5)),
        bc_probe<float>("mac 32f contiguous", Bc::mac, false, Desc::Contig, 5, 5, 3500, mac(5, 5)),
        bc_probe<float>("mac 32f general strides", Bc::mac, false, Desc::Strided, 5, 5, 3500, mac(5, 5)),
        bc_probe<float>("mac 32f list", Bc::mac, false, Desc::List, 5, 5, 3500, mac(5, 5)),
        bc_probe<float>("mac 32f list general", Bc::mac, false, Desc::ListS2, 5, 5, 1500, mac(5, 5)),
        bc_probe<double>("tac 64f list general", Bc::mac, true, Desc::ListS2, 5, 5, 3500, mac(5, 5)),
        bc_probe<float>("mac 32f pointer", Bc::mac, false, Desc::Pointer, 5, 5, 1700, mac(5, 5)),
        bc_probe<float>("vca 32f contiguous", Bc::vca, false, Desc::Contig, 10, 1, 2100, vca(10)),
        bc_probe<double>("vca 64f general strides", Bc::vca, false, Desc::Strided, 10, 1, 2100, vca(10)),
        bc_probe<float>("vca 32f list", Bc::vca, false, Desc::List, 10, 1, 1200, vca(10)),
        bc_probe<float>("vca 32f pointer", Bc::vca, false, Desc::Pointer, 10, 1, 650, vca(10)),  // count 100 goes parallel
        bc_probe<double>("vaca 64f contiguous", Bc::vaca, false, Desc::Contig, 4, 1, 2100, vaca(4)),
        bc_probe<float>("vaca 32f list general", Bc::vaca, false, Desc::ListS2, 4, 1, 1200, vaca(4)),
        bc_probe<float>("vaca 32f pointer", Bc::vaca, false, Desc::Pointer, 4, 1, 650, vaca(4)),
    };
    KT_EXPECT_THRESHOLD_EDGES(probes);
}


}  // namespace

// Arrays of square matrices run several objects per vector: an odd count
// leaves a last object on its own, and an infinity or NaN planted in one
// object must reach only that object's sums.
template <class T>
void check_odd_runs_with_non_finite_values()
{
    const T inf = std::numeric_limits<T>::infinity(), nan = std::numeric_limits<T>::quiet_NaN();
    for (Mv kind : {Mv::mva, Mv::mav, Mv::mava})
        for (bool tr : {false, true})
            for (Desc f : {Desc::Contig, Desc::Strided, Desc::List})
                for (int n = 3; n <= 6; ++n) {
                    SCOPED_TRACE(testing::Message() << (tr ? "t" : "m") << name(kind) + 1 << " " << kt::type_name<T>()
                                                    << " " << kt::name(f) << " order " << n);
                    MvCall<T> c(kind, tr, f, n, n, n, 7, unsigned(n));
                    c.A.at(c.A.count() - 1, n - 1, 0) = inf;
                    c.X.at(c.X.count() / 2, n - 1) = nan;
                    c.A.at(0, 0, n - 1) = -inf;
                    ASSERT_EQ(c.run(), kelOk);
                    c.expect_results();
                }
}

TEST(MulMatrixVector, OddRunsKeepNonFiniteValuesInTheirObjects32f) { check_odd_runs_with_non_finite_values<float>(); }
TEST(MulMatrixVector, OddRunsKeepNonFiniteValuesInTheirObjects64f) { check_odd_runs_with_non_finite_values<double>(); }
