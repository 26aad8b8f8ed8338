// Copy, Extract and LoadIdentity: every name, both element types, every
// description.  Elements must arrive as the same bits (signalling NaNs,
// payloads and signed zeros included), nothing outside the described
// elements may change, and failing checks must write nothing and report the
// group that the member tests first.
#include "movement_support.h"

namespace {

using kt::Desc;
using kt::Objects;
using mv::Member;
using mv::Setup;

const std::vector<std::pair<int, int>> kMatrixShapes = {{1, 1}, {2, 3}, {3, 2}, {4, 4}, {6, 6}, {5, 7}};
const std::vector<std::pair<int, int>> kVectorShapes = {{1, 1}, {1, 3}, {1, 4}, {1, 9}};

// The check groups that apply to a pair of descriptions, in ORDER.
std::string applicable(const std::string& order, const std::string& forms)
{
    auto has = [&](const char* letters) { return forms.find_first_of(letters) != std::string::npos; };
    std::string out;
    for (char g : order)
        if ((g != 's' || has("SL")) && (g != 'h' || has("PL")) && (g != 'o' || has("SP"))) out += g;
    return out;
}

std::string full_name(const std::string& stem, int elem, const std::string& suffix)
{
    return stem + (elem == 4 ? "_32f" : "_64f") + suffix;
}

// --- Copy -------------------------------------------------------------------------------

template <class T, char X, char Y, bool M, class F>
Member<T> copy_member(const char* kind, bool shiftsFirst, F* f)
{
    Member<T> m;
    m.name = full_name(std::string("kelmCopy_") + kind, sizeof(T), std::string("_") + X + Y);
    m.forms = {X, Y};
    m.order = applicable(shiftsFirst ? "nzchso" : "nzcsho", m.forms);
    m.matrix = M;
    m.call = [f](const Setup<T>& s) {
        return std::apply(f, std::tuple_cat(mv::args_of<X, M, true>(s.op[0]), mv::args_of<Y, M, true>(s.op[1]),
                                            mv::sizes_of<M>(s.h, s.w), std::make_tuple(s.count)));
    };
    return m;
}

template <class T>
std::vector<Member<T>> copy_members()
{
    const bool f32 = sizeof(T) == 4;
    std::vector<Member<T>> ms;
#define KT_COPY(KIND, M, X, Y, SHIFTS_FIRST)                                                    \
    ms.push_back(copy_member<T, #X[0], #Y[0], M>(#KIND, SHIFTS_FIRST,                          \
                                                 mv::pick<T>(kelmCopy_##KIND##_32f_##X##Y, kelmCopy_##KIND##_64f_##X##Y)));
#define KT_COPY_KIND(KIND, M, SP, LP)                                                          \
    KT_COPY(KIND, M, S, S, false) KT_COPY(KIND, M, S, P, SP) KT_COPY(KIND, M, S, L, false)     \
    KT_COPY(KIND, M, P, S, false) KT_COPY(KIND, M, P, P, true) KT_COPY(KIND, M, P, L, false)   \
    KT_COPY(KIND, M, L, S, false) KT_COPY(KIND, M, L, P, LP) KT_COPY(KIND, M, L, L, false)
    // Only the 32f vector members SP and LP test their shifts first (and PP everywhere).
    KT_COPY_KIND(va, false, f32, f32)
    KT_COPY_KIND(ma, true, false, false)
#undef KT_COPY_KIND
#undef KT_COPY
    return ms;
}

template <class T>
void copy_moves_bits()
{
    for (const auto& m : copy_members<T>())
        for (Desc ds : mv::layouts(m.forms[0]))
            for (Desc dd : mv::layouts(m.forms[1]))
                for (auto [h, w] : m.matrix ? kMatrixShapes : kVectorShapes)
                    for (int count : {1, 3}) {
                        SCOPED_TRACE(m.name + " " + kt::name(ds) + "->" + kt::name(dd) + " " + std::to_string(h) + "x" +
                                     std::to_string(w) + " count " + std::to_string(count));
                        Objects<T> src(ds, count, h, w, 7), dst(dd, count, h, w, 8);
                        mv::poison(src, count, h, w);
                        const auto before = src.snapshot();
                        ASSERT_EQ(m.call({{mv::operand(src), mv::operand(dst)}, {m.forms[0], m.forms[1]}, h, w, count}), kelOk);
                        int wrong = 0;
                        for (int k = 0; k < count; ++k)
                            for (int i = 0; i < h; ++i)
                                for (int j = 0; j < w; ++j) wrong += mv::bits(dst.at(k, i, j)) != mv::bits(src.at(k, i, j));
                        EXPECT_EQ(wrong, 0);
                        EXPECT_TRUE(dst.canaries_intact());
                        EXPECT_TRUE(src.unchanged_since(before));
                    }
}
TEST(Copy, MovesBitsBetweenEveryPairOfDescriptions32f) { copy_moves_bits<float>(); }
TEST(Copy, MovesBitsBetweenEveryPairOfDescriptions64f) { copy_moves_bits<double>(); }

// With one object the object strides are not looked at, whatever they are.
template <class T>
void copy_single_object_strides()
{
    for (const auto& m : copy_members<T>()) {
        if (m.order.find('o') == std::string::npos) continue;
        for (int bad : {0, 3, -8}) {
            const int h = m.matrix ? 2 : 1;
            Objects<T> src(mv::layouts(m.forms[0])[0], 2, h, 3, 5), dst(mv::layouts(m.forms[1])[0], 2, h, 3, 6);
            Setup<T> s{{mv::operand(src), mv::operand(dst)}, {m.forms[0], m.forms[1]}, h, 3, 1};
            for (auto& o : s.op) o.obj = bad;
            EXPECT_EQ(m.call(s), kelOk) << m.name << " object stride " << bad;
            for (int i = 0; i < h; ++i)
                for (int j = 0; j < 3; ++j) EXPECT_EQ(mv::bits(dst.at(0, i, j)), mv::bits(src.at(0, i, j))) << m.name;
            s.count = 2;
            EXPECT_EQ(m.call(s), kelErrStride) << m.name << " object stride " << bad << ", two objects";
        }
    }
}
TEST(Copy, IgnoresObjectStridesOfASingleObject32f) { copy_single_object_strides<float>(); }
TEST(Copy, IgnoresObjectStridesOfASingleObject64f) { copy_single_object_strides<double>(); }

// Overlapping source and destination: a forward copy, element by element.
template <class T>
void copy_overlapping()
{
    const int s = int(sizeof(T));
    struct Layout {
        int srcAt, dstAt;  // element offsets into one buffer
        int h, w, count, obj, row, elem;  // strides in elements
    };
    const Layout layouts[] = {
        {0, 1, 1, 8, 3, 8, 0, 1},   // destination one element ahead: the first element spreads
        {1, 0, 1, 8, 3, 8, 0, 1},   // destination behind: a shift down
        {0, 5, 4, 4, 3, 16, 4, 1},  // packed 4x4 matrices, destination ahead within the first object
        {7, 0, 3, 3, 2, 12, 4, 1},  // gaps after rows
        {0, 2, 2, 3, 2, 7, 3, 2},   // element stride 2
    };
    for (const Layout& l : layouts) {
        std::vector<T> buf(128), want;
        for (std::size_t e = 0; e < buf.size(); ++e) buf[e] = T(e) + T(0.5);
        want = buf;
        for (int k = 0; k < l.count; ++k)
            for (int i = 0; i < l.h; ++i)
                for (int j = 0; j < l.w; ++j) {
                    const int off = k * l.obj + i * l.row + j * l.elem;
                    want[std::size_t(l.dstAt + off)] = want[std::size_t(l.srcAt + off)];
                }
        kelStatus st;
        if (l.h == 1)
            st = mv::pick<T>(kelmCopy_va_32f_SS, kelmCopy_va_64f_SS)(buf.data() + l.srcAt, l.obj * s, l.elem * s,
                                                                    buf.data() + l.dstAt, l.obj * s, l.elem * s, l.w, l.count);
        else
            st = mv::pick<T>(kelmCopy_ma_32f_SS, kelmCopy_ma_64f_SS)(buf.data() + l.srcAt, l.obj * s, l.row * s,
                                                                    l.elem * s, buf.data() + l.dstAt, l.obj * s, l.row * s,
                                                                    l.elem * s, l.w, l.h, l.count);
        ASSERT_EQ(st, kelOk);
        EXPECT_EQ(buf, want) << "source at " << l.srcAt << ", destination at " << l.dstAt;
    }
}
TEST(Copy, OverlapIsAForwardElementCopy32f) { copy_overlapping<float>(); }
TEST(Copy, OverlapIsAForwardElementCopy64f) { copy_overlapping<double>(); }

// --- Extract --------------------------------------------------------------------------------

template <class T, char X, bool M, bool A, bool TR, class F>
Member<T> extract_member(const char* operands, const std::string& order, F* f)
{
    Member<T> m;
    m.name = full_name(std::string("kelmExtract_") + operands, sizeof(T), X == 'S' ? "" : std::string("_") + X);
    m.forms = {X, 'D'};
    m.order = order;
    m.matrix = M;
    m.call = [f](const Setup<T>& s) {
        auto head = std::tuple_cat(mv::args_of<X, M, A>(s.op[0]), mv::args_of<'D', M, A>(s.op[1]), mv::sizes_of<M>(s.h, s.w));
        if constexpr (A)
            return std::apply(f, std::tuple_cat(head, std::make_tuple(s.count)));
        else
            return std::apply(f, head);
    };
    return m;
}

struct ExtractInfo {
    bool array, transposed;
};

template <class T>
std::vector<std::pair<Member<T>, ExtractInfo>> extract_members()
{
    const bool f32 = sizeof(T) == 4;
    std::vector<std::pair<Member<T>, ExtractInfo>> ms;
#define KT_EX(OPS, X, SUF, M, A, TR, ORDER)                                                                  \
    ms.push_back({extract_member<T, #X[0], M, A, TR>(#OPS, ORDER,                                             \
                                                     mv::pick<T>(kelmExtract_##OPS##_32f##SUF, kelmExtract_##OPS##_64f##SUF)), \
                  ExtractInfo{A, TR}});
    KT_EX(v, S, , false, false, false, "nzs")
    KT_EX(v, P, _P, false, false, false, f32 ? "nzh" : "znh")  // the 64f member tests len first
    KT_EX(m, S, , true, false, false, "nzs")
    KT_EX(m, P, _P, true, false, false, "znh")
    KT_EX(t, S, , true, false, true, "nzs")
    KT_EX(t, P, _P, true, false, true, "znh")
#define KT_EX_ARRAY(OPS, M, TR)                                 \
    KT_EX(OPS, S, , M, true, TR, "nzcso")                       \
    KT_EX(OPS, P, _P, M, true, TR, "nzcho")                     \
    KT_EX(OPS, L, _L, M, true, TR, "nzchs")
    KT_EX_ARRAY(va, false, false)
    KT_EX_ARRAY(ma, true, false)
    KT_EX_ARRAY(ta, true, true)
#undef KT_EX_ARRAY
#undef KT_EX
    return ms;
}

template <class T>
void extract_gathers_bits()
{
    for (const auto& [m, info] : extract_members<T>())
        for (Desc ds : mv::layouts(m.forms[0]))
            for (auto [h, w] : m.matrix ? kMatrixShapes : kVectorShapes)
                for (int count : info.array ? std::vector<int>{1, 3} : std::vector<int>{1}) {
                    SCOPED_TRACE(m.name + " " + kt::name(ds) + " " + std::to_string(h) + "x" + std::to_string(w) + " count " +
                                 std::to_string(count));
                    // A transposed source is stored with w rows of h elements.
                    const int sh = info.transposed ? w : h, sw = info.transposed ? h : w;
                    Objects<T> src(ds, count, sh, sw, 3), dst(Desc::Contig, count, h, w, 4);
                    mv::poison(src, count, sh, sw);
                    ASSERT_EQ(m.call({{mv::operand(src), mv::operand(dst)}, {m.forms[0], 'D'}, h, w, count}), kelOk);
                    int wrong = 0;
                    for (int k = 0; k < count; ++k)
                        for (int i = 0; i < h; ++i)
                            for (int j = 0; j < w; ++j)
                                wrong += mv::bits(dst.at(k, i, j)) !=
                                         mv::bits(info.transposed ? src.at(k, j, i) : src.at(k, i, j));
                    EXPECT_EQ(wrong, 0);
                    EXPECT_TRUE(dst.canaries_intact());
                }
}
TEST(Extract, GathersBitsIntoADenseBuffer32f) { extract_gathers_bits<float>(); }
TEST(Extract, GathersBitsIntoADenseBuffer64f) { extract_gathers_bits<double>(); }

// --- LoadIdentity -----------------------------------------------------------------------------

template <class T, char X, class F>
Member<T> identity_member(const std::string& order, F* f)
{
    Member<T> m;
    m.name = full_name("kelmLoadIdentity_ma", sizeof(T), X == 'S' ? "" : std::string("_") + X);
    m.forms = {X, '-'};
    m.order = order;
    m.call = [f](const Setup<T>& s) {
        return std::apply(f, std::tuple_cat(mv::args_of<X, true, true>(s.op[0]), mv::sizes_of<true>(s.h, s.w),
                                            std::make_tuple(s.count)));
    };
    return m;
}

template <class T>
std::vector<Member<T>> identity_members()
{
    const bool f32 = sizeof(T) == 4;
    return {identity_member<T, 'S'>("nzcso", mv::pick<T>(kelmLoadIdentity_ma_32f, kelmLoadIdentity_ma_64f)),
            identity_member<T, 'P'>(f32 ? "nzhco" : "nzcho", mv::pick<T>(kelmLoadIdentity_ma_32f_P, kelmLoadIdentity_ma_64f_P)),
            identity_member<T, 'L'>("nzcsh", mv::pick<T>(kelmLoadIdentity_ma_32f_L, kelmLoadIdentity_ma_64f_L))};
}

template <class T>
void identity_fills()
{
    for (const auto& m : identity_members<T>())
        for (Desc dd : mv::layouts(m.forms[0]))
            for (auto [h, w] : kMatrixShapes)
                for (int count : {1, 3}) {
                    SCOPED_TRACE(m.name + " " + kt::name(dd) + " " + std::to_string(h) + "x" + std::to_string(w));
                    Objects<T> dst(dd, count, h, w, 9);
                    ASSERT_EQ(m.call({{mv::operand(dst), {}}, {m.forms[0], '-'}, h, w, count}), kelOk);
                    int wrong = 0;
                    for (int k = 0; k < count; ++k)
                        for (int i = 0; i < h; ++i)
                            for (int j = 0; j < w; ++j) {
                                const T want = i == j ? T(1) : T(0);  // +0, ones on the leading diagonal
                                wrong += mv::bits(dst.at(k, i, j)) != mv::bits(want);
                            }
                    EXPECT_EQ(wrong, 0);
                    EXPECT_TRUE(dst.canaries_intact());
                }
}
TEST(LoadIdentity, FillsEveryShape32f) { identity_fills<float>(); }
TEST(LoadIdentity, FillsEveryShape64f) { identity_fills<double>(); }

}  // namespace
