// Transpose: every name, both element types, every description; written-out
// square orders, the strips of 32 source rows on either side of their
// boundary, and large contiguous arrays (which ask for the cache size).
#include "elementwise/transpose/kernels.h"
#include "movement_support.h"

namespace {

using kt::Desc;
using kt::Objects;
using mv::Member;
using mv::Setup;

// Source shapes (height, width): squares on both sides of the written-out
// orders, thin and wide matrices, the strip boundary at 32/33 rows.
const std::vector<std::pair<int, int>> kShapes = {{1, 1}, {2, 2}, {3, 3}, {4, 4}, {5, 5}, {6, 6}, {7, 7},
                                                  {2, 3}, {3, 2}, {1, 9}, {9, 1}, {32, 3}, {33, 5},
                                                  {5, 33}, {65, 2}};

template <class T, char X, bool A, class F>
Member<T> transpose_member(const std::string& order, F* f)
{
    Member<T> m;
    m.name = std::string(A ? "kelmTranspose_ma" : "kelmTranspose_m") + (sizeof(T) == 4 ? "_32f" : "_64f") +
             (X == 'S' ? "" : std::string("_") + X);
    m.forms = {X, X};
    m.order = order;
    m.call = [f](const Setup<T>& s) {
        auto head = std::tuple_cat(mv::args_of<X, true, A>(s.op[0]), mv::sizes_of<true>(s.h, s.w),
                                   mv::args_of<X, true, A>(s.op[1]));
        if constexpr (A)
            return std::apply(f, std::tuple_cat(head, std::make_tuple(s.count)));
        else
            return std::apply(f, head);
    };
    return m;
}

template <class T>
std::vector<std::pair<Member<T>, bool>> transpose_members()  // the member, and whether it takes arrays
{
    return {{transpose_member<T, 'S', false>("nzs", mv::pick<T>(kelmTranspose_m_32f, kelmTranspose_m_64f)), false},
            {transpose_member<T, 'P', false>("nzh", mv::pick<T>(kelmTranspose_m_32f_P, kelmTranspose_m_64f_P)), false},
            {transpose_member<T, 'S', true>("nczso", mv::pick<T>(kelmTranspose_ma_32f, kelmTranspose_ma_64f)), true},
            {transpose_member<T, 'P', true>("nczoh", mv::pick<T>(kelmTranspose_ma_32f_P, kelmTranspose_ma_64f_P)), true},
            {transpose_member<T, 'L', true>("nczsh", mv::pick<T>(kelmTranspose_ma_32f_L, kelmTranspose_ma_64f_L)), true}};
}

template <class T>
void transposes_bits(int h, int w, const std::vector<int>& counts)
{
    for (const auto& [m, array] : transpose_members<T>())
        for (Desc ds : mv::layouts(m.forms[0]))
            for (Desc dd : mv::layouts(m.forms[1]))
                for (int count : array ? counts : std::vector<int>{1}) {
                    SCOPED_TRACE(m.name + " " + kt::name(ds) + "->" + kt::name(dd) + " " + std::to_string(h) + "x" +
                                 std::to_string(w) + " count " + std::to_string(count));
                    Objects<T> src(ds, count, h, w, 11), dst(dd, count, w, h, 12);
                    mv::poison(src, count, h, w);
                    const auto before = src.snapshot();
                    ASSERT_EQ(m.call({{mv::operand(src), mv::operand(dst)}, {m.forms[0], m.forms[1]}, h, w, count}), kelOk);
                    int wrong = 0;
                    for (int k = 0; k < count; ++k)
                        for (int i = 0; i < h; ++i)
                            for (int j = 0; j < w; ++j) wrong += mv::bits(dst.at(k, j, i)) != mv::bits(src.at(k, i, j));
                    EXPECT_EQ(wrong, 0);
                    EXPECT_TRUE(dst.canaries_intact());
                    EXPECT_TRUE(src.unchanged_since(before));
                }
}

template <class T>
void transposes_every_shape()
{
    for (auto [h, w] : kShapes) transposes_bits<T>(h, w, {1, 3});
}
TEST(Transpose, MovesBitsInEveryDescriptionAndShape32f) { transposes_every_shape<float>(); }
TEST(Transpose, MovesBitsInEveryDescriptionAndShape64f) { transposes_every_shape<double>(); }

// Contiguous arrays above 131072 bytes (8 per element) take the path that asks
// for the cache size; the strips are the same.
TEST(Transpose, LargeContiguousArrays32f) { transposes_bits<float>(33, 7, {80}); }
TEST(Transpose, LargeContiguousArrays64f) { transposes_bits<double>(33, 7, {80}); }

// The strip mover with stores that bypass the cache (no call reaches it)
// moves the same bits as the ordinary one.
TEST(Transpose, StreamingStripMoverMatchesTheOrdinaryOne)
{
    const int h = 20, w = 13;
    std::vector<std::uint32_t> src(std::size_t(h) * w), a(src.size(), 0), b(src.size(), 0);
    for (std::size_t e = 0; e < src.size(); ++e) src[e] = 0x7f800001u + std::uint32_t(e);
    auto* s = reinterpret_cast<char*>(src.data());
    kelm::owniTranspose_asm<std::uint32_t>(s, w * 4, reinterpret_cast<char*>(a.data()), h * 4, h, w);
    kelm::owniTranspose_NT(s, w * 4, reinterpret_cast<char*>(b.data()), h * 4, h, w);
    EXPECT_EQ(a, b);
    EXPECT_EQ(a[std::size_t(h) + 2], src[std::size_t(2) * w + 1]);  // destination (1, 2) = source (2, 1)
}

}  // namespace
