// Calls whose arrays exceed the machine's largest cache: the element-wise,
// copy, transpose, by-constant, cross product, Saxpy/LComb and Gaxpy runs switch to streaming stores
// there.  The bits must be those of the in-cache path, whatever the
// alignment of the destination and in place.
#include <kelcore.h>

#include "support.h"

namespace {

int cache_bytes()
{
    int cache = 0;
    kelGetMaxCacheSizeB(&cache);
    return cache;
}

// Arrays beyond a cache of more than 256 MB would make the test too slow.
bool testable_cache() { return cache_bytes() > 0 && cache_bytes() <= (256 << 20); }

// Order-4 matrices (16 elements), 4-vectors or 3-vectors packed back to
// back, enough of them for the destination alone to exceed the cache.
template <class T>
struct Big {
    int count = 0, objElems = 0;
    std::vector<T> a, b, d;
    int shift = 0;  // destination starts shift elements into d: 0 aligned, 1 not

    Big(int objElems_, int shift_) : objElems(objElems_), shift(shift_)
    {
        const std::size_t bytes = std::size_t(cache_bytes()) + (std::size_t(1) << 20);
        count = int(bytes / (sizeof(T) * objElems)) + 3;  // a ragged tail
        const std::size_t n = std::size_t(count) * objElems;
        a.resize(n);
        b.resize(n);
        d.assign(n + 4, T(-7));
        std::mt19937 rng(11);
        std::uniform_real_distribution<double> u(-3, 3);
        for (std::size_t e = 0; e < n; ++e) a[e] = T(u(rng)), b[e] = T(u(rng));
    }
    std::size_t n() const { return std::size_t(count) * objElems; }
    T* dst() { return d.data() + shift; }
    int obj() const { return objElems * int(sizeof(T)); }
    int row() const { return 4 * int(sizeof(T)); }
};

constexpr int kElem32 = 4, kElem64 = 8;


template <class T>
constexpr int esz() { return std::is_same_v<T, float> ? kElem32 : kElem64; }

// Every case: name, a call on Big (into dst, or in place into a), and the
// element-by-element reference.
template <class T>
struct Case {
    const char* name;
    int objElems;
    std::function<kelStatus(Big<T>&, T* dst)> call;
    std::function<T(const Big<T>&, const std::vector<T>& a, std::size_t e)> ref;
};

// Element e of an element-wise result from a(e) and b(e).
template <class T, class F>
auto each(F f)
{
    return [f](const Big<T>& g, const std::vector<T>& a, std::size_t e) { return f(a[e], g.b[e]); };
}

// Gaxpy's one matrix.
template <class T>
T gaxpy_matrix(int i, int j) { return T(i - 2 * j) / T(8); }

template <class T>
std::vector<Case<T>> cases()
{
    const T s1 = T(1.5), s2 = T(-0.25);
    constexpr int e = esz<T>();
    return {
        {"Add_mama", 16,
         [](Big<T>& g, T* d) {
             return KT_PICK(T, kelmAdd_mama, )(g.a.data(), g.obj(), g.row(), e, g.b.data(), g.obj(), g.row(), e, d,
                                               g.obj(), g.row(), e, 4, 4, g.count);
         },
         each<T>([](T x, T y) { return x + y; })},
        {"Sub_cva", 4,
         [s1](Big<T>& g, T* d) {
             return KT_PICK(T, kelmSub_cva, )(g.a.data(), g.obj(), e, s1, d, g.obj(), e, 4, g.count);
         },
         each<T>([s1](T x, T) { return s1 - x; })},
        {"Mul_mac", 16,
         [s1](Big<T>& g, T* d) {
             return KT_PICK(T, kelmMul_mac, )(g.a.data(), g.obj(), g.row(), e, s1, d, g.obj(), g.row(), e, 4, 4,
                                              g.count);
         },
         each<T>([s1](T x, T) { return x * s1; })},
        {"Copy_ma_SS", 16,
         [](Big<T>& g, T* d) {
             return KT_PICK(T, kelmCopy_ma, _SS)(g.a.data(), g.obj(), g.row(), e, d, g.obj(), g.row(), e, 4, 4, g.count);
         },
         each<T>([](T x, T) { return x; })},
        {"Transpose_ma", 16,
         [](Big<T>& g, T* d) {
             return KT_PICK(T, kelmTranspose_ma, )(g.a.data(), g.obj(), g.row(), e, 4, 4, d, g.obj(), g.row(), e,
                                                   g.count);
         },
         [](const Big<T>&, const std::vector<T>& a, std::size_t el) {
             const std::size_t m = el / 16 * 16, i = el % 16 / 4, j = el % 4;
             return a[m + 4 * j + i];
         }},
        {"CrossProduct_vava", 3,
         [](Big<T>& g, T* d) {
             return KT_PICK(T, kelmCrossProduct_vava, )(g.a.data(), g.obj(), e, g.b.data(), g.obj(), e, d, g.obj(), e,
                                                        g.count);
         },
         [](const Big<T>& g, const std::vector<T>& a, std::size_t el) {
             const std::size_t v = el / 3 * 3, i = el % 3, i1 = (i + 1) % 3, i2 = (i + 2) % 3;
             return a[v + i1] * g.b[v + i2] - a[v + i2] * g.b[v + i1];
         }},
        {"Saxpy_vava", 4,
         [s1](Big<T>& g, T* d) {
             return KT_PICK(T, kelmSaxpy_vava, )(g.a.data(), g.obj(), e, s1, g.b.data(), g.obj(), e, d, g.obj(), e, 4,
                                                 g.count);
         },
         each<T>([s1](T x, T y) { return x * s1 + y; })},
        {"LComb_vava", 4,
         [s1, s2](Big<T>& g, T* d) {
             return KT_PICK(T, kelmLComb_vava, )(g.a.data(), g.obj(), e, s1, g.b.data(), g.obj(), e, s2, d, g.obj(), e,
                                                 4, g.count);
         },
         each<T>([s1, s2](T x, T y) { return x * s1 + y * s2; })},
        {"Gaxpy_mva", 4,
         [](Big<T>& g, T* d) {
             T m[16];
             for (int e2 = 0; e2 < 16; ++e2) m[e2] = gaxpy_matrix<T>(e2 / 4, e2 % 4);
             return KT_PICK(T, kelmGaxpy_mva, )(m, 4 * e, e, 4, 4, g.a.data(), g.obj(), e, 4, g.b.data(), g.obj(), e, 4, d,
                                                g.obj(), e, g.count);
         },
         [](const Big<T>& g, const std::vector<T>& a, std::size_t el) {
             const std::size_t v = el / 4 * 4;
             const int i = int(el % 4);
             T s = 0;
             for (int j = 0; j < 4; ++j) s = s + gaxpy_matrix<T>(i, j) * a[v + j];
             return s + g.b[el];
         }},
    };
}

template <class T>
void check_streamed()
{
    if (!testable_cache()) GTEST_SKIP() << "cache of " << cache_bytes() << " bytes";
    kt::Threads one(1);
    for (const Case<T>& c : cases<T>()) {
        for (int shift : {0, 1}) {
            Big<T> g(c.objElems, shift);
            ASSERT_EQ(c.call(g, g.dst()), kelOk) << c.name;
            std::size_t bad = 0;
            for (std::size_t i = 0; i < g.n(); ++i)
                bad += !kt::same_bits(g.dst()[i], c.ref(g, g.a, i));
            EXPECT_EQ(bad, 0u) << c.name << " shift " << shift;
            EXPECT_EQ(g.d[g.n() + shift], T(-7)) << c.name << ": written past the end";
            if (shift) {
                EXPECT_EQ(g.d[0], T(-7)) << c.name << ": written before the start";
            }
        }
        if (std::string(c.name) == "Copy_ma_SS") continue;  // a copy onto itself is not a copy
        Big<T> g(c.objElems, 0);
        const std::vector<T> a0 = g.a;
        ASSERT_EQ(c.call(g, g.a.data()), kelOk) << c.name << " in place";
        std::size_t bad = 0;
        for (std::size_t i = 0; i < g.n(); ++i) bad += !kt::same_bits(g.a[i], c.ref(g, a0, i));
        EXPECT_EQ(bad, 0u) << c.name << " in place";
    }
}

// Matrix-vector products of order 4: the footprint counts the matrices too.
template <class T>
void check_streamed_mava()
{
    if (!testable_cache()) GTEST_SKIP() << "cache of " << cache_bytes() << " bytes";
    kt::Threads one(1);
    constexpr int e = esz<T>();
    const int count = int((std::size_t(cache_bytes()) + (1 << 20)) / (24 * e)) + 3;
    std::vector<T> m(std::size_t(count) * 16), x(std::size_t(count) * 4), y(std::size_t(count) * 4 + 1, T(-7));
    for (std::size_t i = 0; i < m.size(); ++i) m[i] = T(int(i % 13) - 6) / T(4);
    for (std::size_t i = 0; i < x.size(); ++i) x[i] = T(int(i % 7) - 3) / T(8);
    ASSERT_EQ(KT_PICK(T, kelmMul_mava, )(m.data(), 16 * e, 4 * e, e, 4, 4, x.data(), 4 * e, e, 4, y.data(), 4 * e, e,
                                         count),
              kelOk);
    std::size_t bad = 0;
    for (std::size_t k = 0; k < std::size_t(count); ++k)
        for (int i = 0; i < 4; ++i) {
            T s = 0;
            for (int j = 0; j < 4; ++j) s = s + m[k * 16 + i * 4 + j] * x[k * 4 + j];
            bad += !kt::same_bits(y[k * 4 + i], s);
        }
    EXPECT_EQ(bad, 0u);
    EXPECT_EQ(y.back(), T(-7));
}

TEST(Streamed, MatrixVectorProducts32f) { check_streamed_mava<float>(); }
TEST(Streamed, MatrixVectorProducts64f) { check_streamed_mava<double>(); }
TEST(Streamed, BeyondTheCache32f) { check_streamed<float>(); }
TEST(Streamed, BeyondTheCache64f) { check_streamed<double>(); }

}  // namespace
