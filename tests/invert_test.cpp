// Invert: residuals and identical bits on every path, the order-3 closed form
// to the last bit, the singularity bounds, footprints, checks, parallel runs.
#include <cmath>
#include <limits>
#include <vector>

#include "support.h"

namespace {

using kt::Desc;
using kt::is_list;
using kt::kAllForms;
using kt::single_form;
using kt::Objects;

template <class T>
struct Inv;
#define KELM_INV_TABLE(T, S)                                                                              \
    template <>                                                                                           \
    struct Inv<T> {                                                                                       \
        static constexpr auto m = kelmInvert_m_##S, m_P = kelmInvert_m_##S##_P;                          \
        static constexpr auto ma = kelmInvert_ma_##S, ma_P = kelmInvert_ma_##S##_P, ma_L = kelmInvert_ma_##S##_L; \
    };
KELM_INV_TABLE(float, 32f)
KELM_INV_TABLE(double, 64f)
#undef KELM_INV_TABLE

constexpr Desc kAllDescs[] = {Desc::Contig, Desc::Strided, Desc::Pointer, Desc::List, Desc::ListS2};

template <class T>
T tiny() { return std::numeric_limits<T>::min(); }

// The whole array a into d through the array form of their description.
template <class T>
kelStatus invert(Objects<T>& a, Objects<T>& d, int n, int count, T* buf)
{
    if (a.desc() == Desc::Pointer)
        return Inv<T>::ma_P(a.table(), a.shift(), a.objStride(), buf, d.table(), d.shift(), d.objStride(), n, count);
    if (is_list(a.desc()))
        return Inv<T>::ma_L(a.table(), a.shift(), a.rowStride(), a.elemStride(), buf, d.table(), d.shift(),
                            d.rowStride(), d.elemStride(), n, count);
    return Inv<T>::ma(a.base(), a.objStride(), a.rowStride(), a.elemStride(), buf, d.base(), d.objStride(),
                      d.rowStride(), d.elemStride(), n, count);
}

template <class T>
kelStatus invert(Objects<T>& a, Objects<T>& d, int n)
{
    std::vector<T> buf(std::size_t(n) * (n + 1));
    return invert(a, d, n, a.count(), buf.data());
}

// Object k alone through the single-matrix entries (strided or pointer).
template <class T>
kelStatus invert_one(Objects<T>& a, Objects<T>& d, int n, int k)
{
    std::vector<T> buf(std::size_t(n) * (n + 1));
    if (a.desc() == Desc::Pointer)
        return Inv<T>::m_P(a.table(), a.shift() + k * a.objStride(), buf.data(), d.table(),
                           d.shift() + k * d.objStride(), n);
    return Inv<T>::m(&a.at(k, 0, 0), a.rowStride(), a.elemStride(), buf.data(), &d.at(k, 0, 0), d.rowStride(),
                     d.elemStride(), n);
}

// Random entries in [-4, 4] plus 2n on the diagonal: well conditioned.
template <class T>
void make_well_conditioned(Objects<T>& a, int n)
{
    for (int k = 0; k < a.count(); ++k)
        for (int i = 0; i < n; ++i) a.at(k, i, i) += T(a.at(k, i, i) < 0 ? -2 * n : 2 * n);
}

// Sets object k to f(i, j).
template <class T, class F>
void fill(Objects<T>& a, int k, int n, F f)
{
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) a.at(k, i, j) = T(f(i, j));
}

// |A X - I| against n |A| |X| eps, in max norms.
template <class T>
void expect_inverse(Objects<T>& a, Objects<T>& x, int k, int n)
{
    long double worst = 0, na = 0, nx = 0;
    for (int i = 0; i < n; ++i) {
        long double ra = 0, rx = 0;
        for (int j = 0; j < n; ++j) {
            long double s = i == j ? -1 : 0;
            for (int q = 0; q < n; ++q) s += (long double)a.at(k, i, q) * x.at(k, q, j);
            worst = std::max(worst, std::fabs(s));
            ra += std::fabs((long double)a.at(k, i, j));
            rx += std::fabs((long double)x.at(k, i, j));
        }
        na = std::max(na, ra), nx = std::max(nx, rx);
    }
    EXPECT_LE(double(worst), 4.0 * n * double(na * nx) * std::numeric_limits<T>::epsilon()) << "object " << k;
}

// Every description gives the contiguous call's bits, arrays (11 matrices: a
// full block of vectors and a short one) and single matrices alike.
template <class T>
void random_inverses()
{
    for (int n = 1; n <= 9; ++n) {
        const int count = 11;
        Objects<T> a0(Desc::Contig, count, n, n, unsigned(17 * n)), x0(Desc::Contig, count, n, n, 5);
        make_well_conditioned(a0, n);
        ASSERT_EQ(invert(a0, x0, n), kelOk);
        for (Desc desc : kAllDescs) {
            SCOPED_TRACE(testing::Message() << kt::type_name<T>() << " " << kt::name(desc) << " n=" << n);
            Objects<T> a(desc, count, n, n, unsigned(17 * n)), x(desc, count, n, n, 5), y(desc, count, n, n, 6);
            make_well_conditioned(a, n);
            const auto before = a.snapshot();
            ASSERT_EQ(invert(a, x, n), kelOk);
            EXPECT_TRUE(a.unchanged_since(before));
            EXPECT_TRUE(x.canaries_intact());
            for (int k = 0; k < count; ++k) {
                expect_inverse(a, x, k, n);
                const bool one = !is_list(desc);  // no single-matrix list form
                ASSERT_EQ(one ? invert_one(a, y, n, k) : kelOk, kelOk);
                for (int i = 0; i < n; ++i)
                    for (int j = 0; j < n; ++j) {
                        ASSERT_TRUE(kt::same_bits(x.at(k, i, j), x0.at(k, i, j))) << k;
                        ASSERT_TRUE(!one || kt::same_bits(x.at(k, i, j), y.at(k, i, j))) << k;
                    }
            }
        }
    }
}

TEST(Invert, RandomMatricesEveryDescriptionAndOrder32f) { random_inverses<float>(); }
TEST(Invert, RandomMatricesEveryDescriptionAndOrder64f) { random_inverses<double>(); }

// The order-3 closed form written out plainly: cofactors, the determinant
// down the first column from the bottom, signs by subtracting from 0.
template <class T>
void order3_bit_exact()
{
    for (Desc desc : kAllDescs) {
        SCOPED_TRACE(testing::Message() << kt::type_name<T>() << " " << kt::name(desc));
        Objects<T> a(desc, 10, 3, 3, 77), x(desc, 10, 3, 3, 78);
        ASSERT_EQ(invert(a, x, 3), kelOk);
        for (int k = 0; k < 10; ++k) {
            auto e = [&](int i, int j) { return a.at(k, i, j); };
            const T c00 = e(1, 1) * e(2, 2) - e(1, 2) * e(2, 1), t = e(0, 1) * e(1, 2) - e(0, 2) * e(1, 1);
            const T u = e(0, 1) * e(2, 2) - e(0, 2) * e(2, 1);
            const T r = T(1) / (e(2, 0) * t - e(1, 0) * u + e(0, 0) * c00);
            const T want[3][3] = {
                {c00 * r, (T(0) - u) * r, t * r},
                {(T(0) - (e(1, 0) * e(2, 2) - e(1, 2) * e(2, 0))) * r, (e(0, 0) * e(2, 2) - e(0, 2) * e(2, 0)) * r,
                 (T(0) - (e(0, 0) * e(1, 2) - e(0, 2) * e(1, 0))) * r},
                {(e(1, 0) * e(2, 1) - e(1, 1) * e(2, 0)) * r, (T(0) - (e(0, 0) * e(2, 1) - e(0, 1) * e(2, 0))) * r,
                 (e(0, 0) * e(1, 1) - e(0, 1) * e(1, 0)) * r}};
            for (int i = 0; i < 3; ++i)
                for (int j = 0; j < 3; ++j) ASSERT_TRUE(kt::same_bits(x.at(k, i, j), want[i][j])) << k << i << j;
        }
    }
}

TEST(Invert, Order3ClosedFormBitExact32f) { order3_bit_exact<float>(); }
TEST(Invert, Order3ClosedFormBitExact64f) { order3_bit_exact<double>(); }

// One matrix f(i, j) through desc: status and inverse.
template <class T, class F>
kelStatus invert_of(Desc desc, int n, F f, std::vector<T>* out = nullptr)
{
    Objects<T> a(desc, 1, n, n), x(desc, 1, n, n);
    fill(a, 0, n, f);
    const auto before = x.snapshot();
    const kelStatus s = invert(a, x, n);
    if (s != kelOk) {
        EXPECT_TRUE(x.unchanged_since(before)) << "a failing matrix writes nothing";
    }
    if (out)
        for (int i = 0; i < n; ++i)
            for (int j = 0; j < n; ++j) out->push_back(x.at(0, i, j));
    return s;
}

// diag(d, 1, ..., 1): determinant d in every path.
template <class T>
auto diag_first(T d)
{
    return [d](int i, int j) { return i != j ? T(0) : i == 0 ? d : T(1); };
}

TEST(Invert, OrderOne)
{
    for (Desc desc : kAllDescs) {
        std::vector<float> x;
        EXPECT_EQ(invert_of<float>(desc, 1, [](int, int) { return 0; }), kelErrSingular);
        EXPECT_EQ(invert_of<float>(desc, 1, [](int, int) { return 4; }, &x), kelOk);
        EXPECT_EQ(x[0], 0.25f);
        // |a| must exceed 2 * smallest normal: equality fails, as does NaN.
        EXPECT_EQ(invert_of<double>(desc, 1, [](int, int) { return -2 * tiny<double>(); }), kelErrSingular);
        EXPECT_EQ(invert_of<float>(desc, 1, [](int, int) { return NAN; }), kelErrSingular);
        EXPECT_EQ(invert_of<double>(desc, 1, [](int, int) { return -3 * tiny<double>(); }), kelOk);
    }
}

TEST(Invert, ClosedFormBoundsPerKernel)
{
    for (Desc desc : kAllDescs) {
        SCOPED_TRACE(kt::name(desc));
        // 54 * 2^-126 is about 6.35e-37: a 32f determinant of 5e-37 fails, 64f passes.
        EXPECT_EQ(invert_of<float>(desc, 3, diag_first(5e-37f)), kelErrSingular);
        EXPECT_EQ(invert_of<double>(desc, 3, diag_first(5e-37)), kelOk);
        // The contiguous 64f kernels of orders 3 and 4 use 4n^3 instead of 2n^3:
        // lists with unit strides included, pointer forms not.
        const bool contiguous = desc == Desc::Contig || desc == Desc::List;
        const kelStatus wide = contiguous ? kelErrSingular : kelOk;
        EXPECT_EQ(invert_of<double>(desc, 3, diag_first(2e-306)), wide);
        EXPECT_EQ(invert_of<double>(desc, 4, diag_first(4e-306)), wide);
        EXPECT_EQ(invert_of<double>(desc, 5, diag_first(251 * tiny<double>())), kelOk);
        EXPECT_EQ(invert_of<double>(desc, 5, diag_first(249 * tiny<double>())), kelErrSingular);
        // |det| == tau passes the closed forms, for both types and every order.
        for (int n = 3; n <= 6; ++n) {
            const int c = contiguous && n <= 4 ? 4 : 2;
            EXPECT_EQ(invert_of<double>(desc, n, diag_first(c * n * n * n * tiny<double>())), kelOk) << n;
            EXPECT_EQ(invert_of<double>(desc, n, diag_first(std::nextafter(c * n * n * n * tiny<double>(), 0.0))),
                      kelErrSingular) << n;
            EXPECT_EQ(invert_of<float>(desc, n, diag_first(2 * n * n * n * tiny<float>())), kelOk) << n;
            EXPECT_EQ(invert_of<float>(desc, n, [](int, int) { return 1; }), kelErrSingular) << n;
            EXPECT_EQ(invert_of<float>(desc, n, diag_first(NAN)), kelErrSingular) << n;
        }
    }
}

TEST(Invert, EliminationPath)
{
    for (Desc desc : kAllDescs) {
        SCOPED_TRACE(kt::name(desc));
        // A singular minor counts as tau(n), not 0: the 2x2 identity's inverse.
        std::vector<double> x;
        ASSERT_EQ(invert_of<double>(desc, 2, [](int i, int j) { return i == j; }, &x), kelOk);
        EXPECT_EQ(x, (std::vector<double>{1, -16 * tiny<double>(), -16 * tiny<double>(), 1}));
        std::vector<float> xf;
        ASSERT_EQ(invert_of<float>(desc, 2, [](int i, int j) { return i == j; }, &xf), kelOk);
        EXPECT_EQ(xf[1], -16 * tiny<float>());
        // A stopped minor still goes through its last diagonal entry u (tau*u
        // when |u| > tau): diag(1, ..., 1, 4) of order 7, 1/det = 1/4.
        x.clear();
        ASSERT_EQ(invert_of<double>(desc, 7, [](int i, int j) { return i != j ? 0 : i == 6 ? 4 : 1; }, &x), kelOk);
        const double tau7 = 686 * tiny<double>();
        EXPECT_EQ(x[1 * 7 + 0], -tau7);      // minor without row 0, column 1: u = 4
        EXPECT_EQ(x[6 * 7 + 5], -tau7 / 4);  // minor without row 5, column 6: u = 0
        EXPECT_EQ(x[6 * 7 + 6], 0.25);
        // A pivot of exactly tau passes, the final determinant at tau fails.
        const double tau2 = 16 * tiny<double>();
        EXPECT_EQ(invert_of<double>(desc, 2, [&](int i, int j) { return i != j ? 0 : i == 0 ? tau2 : 2; }), kelOk);
        EXPECT_EQ(invert_of<double>(desc, 2, [&](int i, int j) { return i != j ? 0 : i == 0 ? tau2 : 1; }),
                  kelErrSingular);
        // A pivot below tau stops the determinant even when the product would pass.
        EXPECT_EQ(invert_of<double>(desc, 7, [&](int i, int j) { return i != j ? 0 : i == 0 ? tau7 / 2 : 4; }),
                  kelErrSingular);
        EXPECT_EQ(invert_of<float>(desc, 8, [](int, int) { return 1; }), kelErrSingular);
    }
}

// A singular matrix in the middle of an array: the ones before are inverted,
// it and the ones after are left as they were.
template <class T>
void singular_in_the_middle()
{
    for (Desc desc : kAllDescs)
        for (int n : {2, 3, 4, 6, 7})
            for (int bad : {0, 5, 8, 12}) {
                SCOPED_TRACE(testing::Message() << kt::type_name<T>() << " " << kt::name(desc) << " n=" << n
                                                << " bad=" << bad);
                const int count = 13;
                Objects<T> a(desc, count, n, n, 21), x(desc, count, n, n, 22), ref(desc, count, n, n, 22);
                make_well_conditioned(a, n);
                ASSERT_EQ(invert(a, ref, n), kelOk);
                fill(a, bad, n, [](int i, int) { return i; });  // rank 1
                ASSERT_EQ(invert(a, x, n), kelErrSingular);
                Objects<T> untouched(desc, count, n, n, 22);
                for (int k = 0; k < count; ++k)
                    for (int i = 0; i < n; ++i)
                        for (int j = 0; j < n; ++j)
                            ASSERT_TRUE(kt::same_bits(x.at(k, i, j), (k < bad ? ref : untouched).at(k, i, j))) << k;
                EXPECT_TRUE(x.canaries_intact());
            }
}

TEST(Invert, SingularMatrixStopsTheArray32f) { singular_in_the_middle<float>(); }
TEST(Invert, SingularMatrixStopsTheArray64f) { singular_in_the_middle<double>(); }

// Whether a call went parallel shows with a singular first matrix: a serial
// run stops there, a parallel one still inverts the second thread's run.
template <class T>
bool went_parallel(Desc desc, int n, int count)
{
    kt::Threads two(2);
    Objects<T> a(desc, count, n, n, 41), x(desc, count, n, n, 42), untouched(desc, count, n, n, 42);
    make_well_conditioned(a, n);
    fill(a, 0, n, [](int, int) { return 0; });
    EXPECT_EQ(invert(a, x, n), kelErrSingular);
    const int last = count - 1;
    for (int k = 0; k < (count + 1) / 2; ++k)  // the first thread's run stays as it was
        EXPECT_TRUE(kt::same_bits(x.at(k, 0, 0), untouched.at(k, 0, 0))) << k;
    return !kt::same_bits(x.at(last, 0, 0), untouched.at(last, 0, 0));
}

TEST(Invert, ParallelThresholds)
{
    // 2*n*count > 3600 for the strided 32f member with unit strides only.
    EXPECT_FALSE(went_parallel<float>(Desc::Contig, 4, 450));
    EXPECT_TRUE(went_parallel<float>(Desc::Contig, 4, 451));
    EXPECT_FALSE(went_parallel<float>(Desc::Strided, 4, 312));
    EXPECT_TRUE(went_parallel<float>(Desc::Strided, 4, 313));
    for (Desc desc : {Desc::Pointer, Desc::List, Desc::ListS2}) {
        EXPECT_FALSE(went_parallel<float>(desc, 4, 312)) << kt::name(desc);
        EXPECT_TRUE(went_parallel<float>(desc, 4, 313)) << kt::name(desc);
    }
    for (Desc desc : kAllDescs) {
        EXPECT_FALSE(went_parallel<double>(desc, 7, 178)) << kt::name(desc);
        EXPECT_TRUE(went_parallel<double>(desc, 7, 179)) << kt::name(desc);
    }
    // Order 1 never goes parallel.
    EXPECT_FALSE(went_parallel<float>(Desc::Contig, 1, 5000));
}

}  // namespace
