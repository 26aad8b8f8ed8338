// Add and Sub: every name, both element types, every description.  Results
// must equal one IEEE operation per element, nothing outside the described
// elements may change, and failing checks must write nothing and report the
// group that comes first in the member's own order.
#include <functional>
#include <map>

#include "support.h"

namespace {

using kt::Desc;
using kt::Objects;

// The distinct argument lists of the two families.
enum class Shape { VV, VC, MM, VAV, VVA, VAVA, VAC, VACA, VCA, MAM, MMA, MAMA };

struct ShapeInfo {
    bool matrix;     // width and height, else len
    bool array;      // has array forms (_L exists) and count
    char src1, src2; // 'a' array, 's' single, 'c' constant, 'k' array of constants
};

ShapeInfo info(Shape s)
{
    switch (s) {
    case Shape::VV: return {false, false, 's', 's'};
    case Shape::VC: return {false, false, 's', 'c'};
    case Shape::MM: return {true, false, 's', 's'};
    case Shape::VAV: return {false, true, 'a', 's'};
    case Shape::VVA: return {false, true, 's', 'a'};
    case Shape::VAVA: return {false, true, 'a', 'a'};
    case Shape::VAC: return {false, true, 'a', 'c'};
    case Shape::VACA: return {false, true, 'a', 'k'};
    case Shape::VCA: return {false, true, 's', 'k'};
    case Shape::MAM: return {true, true, 'a', 's'};
    case Shape::MMA: return {true, true, 's', 'a'};
    case Shape::MAMA: return {true, true, 'a', 'a'};
    }
    return {};
}

// Every argument an entry of these families can take.  Operand 0 and 1 are
// the sources in argument order (vector first, constant second), 2 is dst.
template <class T>
struct Args {
    const T* base[3] = {};
    const T* const* table[3] = {};
    int obj[3] = {}, row[3] = {}, elem[3] = {}, shift[3] = {};
    T val = 0;
    int len = 0, width = 0, height = 0, count = 0;
    T* dst() const { return const_cast<T*>(base[2]); }
    T* const* dstTable() const { return const_cast<T* const*>(table[2]); }
};

enum class Form { S, P, L };

template <class T>
using Caller = std::function<kelStatus(const Args<T>&)>;

// Calls g when the arguments fit its signature (the binding below is chosen at
// run time from the shape; the other shapes' argument lists must still compile).
template <class G, class... X>
kelStatus invoke_if(G* g, X... x)
{
    if constexpr (std::is_invocable_r_v<kelStatus, G*, X...>)
        return g(x...);
    else {
        ADD_FAILURE() << "argument list does not fit";
        return 1;
    }
}

// Binds a function of one shape and form to the argument record.
template <class T, class F>
Caller<T> bind(Shape shape, Form form, F* f)
{
    using A = const Args<T>&;
#define KT_IF(SH, FO, ...) \
    if (shape == Shape::SH && form == Form::FO) return [f](A a) { return invoke_if(f, __VA_ARGS__); };
    {
        KT_IF(VV, S, a.base[0], a.elem[0], a.base[1], a.elem[1], a.dst(), a.elem[2], a.len)
        KT_IF(VV, P, a.table[0], a.shift[0], a.table[1], a.shift[1], a.dstTable(), a.shift[2], a.len)
        KT_IF(VC, S, a.base[0], a.elem[0], a.val, a.dst(), a.elem[2], a.len)
        KT_IF(VC, P, a.table[0], a.shift[0], a.val, a.dstTable(), a.shift[2], a.len)
        KT_IF(MM, S, a.base[0], a.row[0], a.elem[0], a.base[1], a.row[1], a.elem[1], a.dst(), a.row[2], a.elem[2],
              a.width, a.height)
        KT_IF(MM, P, a.table[0], a.shift[0], a.table[1], a.shift[1], a.dstTable(), a.shift[2], a.width, a.height)
        KT_IF(VAV, S, a.base[0], a.obj[0], a.elem[0], a.base[1], a.elem[1], a.dst(), a.obj[2], a.elem[2], a.len, a.count)
        KT_IF(VAV, P, a.table[0], a.shift[0], a.obj[0], a.table[1], a.shift[1], a.dstTable(), a.shift[2], a.obj[2],
              a.len, a.count)
        KT_IF(VAV, L, a.table[0], a.shift[0], a.elem[0], a.base[1], a.elem[1], a.dstTable(), a.shift[2], a.elem[2],
              a.len, a.count)
        KT_IF(VVA, S, a.base[0], a.elem[0], a.base[1], a.obj[1], a.elem[1], a.dst(), a.obj[2], a.elem[2], a.len, a.count)
        KT_IF(VVA, P, a.table[0], a.shift[0], a.table[1], a.shift[1], a.obj[1], a.dstTable(), a.shift[2], a.obj[2],
              a.len, a.count)
        KT_IF(VVA, L, a.base[0], a.elem[0], a.table[1], a.shift[1], a.elem[1], a.dstTable(), a.shift[2], a.elem[2],
              a.len, a.count)
        KT_IF(VAVA, S, a.base[0], a.obj[0], a.elem[0], a.base[1], a.obj[1], a.elem[1], a.dst(), a.obj[2], a.elem[2],
              a.len, a.count)
        KT_IF(VAVA, P, a.table[0], a.shift[0], a.obj[0], a.table[1], a.shift[1], a.obj[1], a.dstTable(), a.shift[2],
              a.obj[2], a.len, a.count)
        KT_IF(VAVA, L, a.table[0], a.shift[0], a.elem[0], a.table[1], a.shift[1], a.elem[1], a.dstTable(), a.shift[2],
              a.elem[2], a.len, a.count)
        KT_IF(VAC, S, a.base[0], a.obj[0], a.elem[0], a.val, a.dst(), a.obj[2], a.elem[2], a.len, a.count)
        KT_IF(VAC, P, a.table[0], a.shift[0], a.obj[0], a.val, a.dstTable(), a.shift[2], a.obj[2], a.len, a.count)
        KT_IF(VAC, L, a.table[0], a.shift[0], a.elem[0], a.val, a.dstTable(), a.shift[2], a.elem[2], a.len, a.count)
        KT_IF(VACA, S, a.base[0], a.obj[0], a.elem[0], a.base[1], a.obj[1], a.dst(), a.obj[2], a.elem[2], a.len, a.count)
        KT_IF(VACA, P, a.table[0], a.shift[0], a.obj[0], a.base[1], a.obj[1], a.dstTable(), a.shift[2], a.obj[2], a.len,
              a.count)
        KT_IF(VACA, L, a.table[0], a.shift[0], a.elem[0], a.table[1], a.shift[1], a.dstTable(), a.shift[2], a.elem[2],
              a.len, a.count)
        KT_IF(VCA, S, a.base[0], a.elem[0], a.base[1], a.obj[1], a.dst(), a.obj[2], a.elem[2], a.len, a.count)
        KT_IF(VCA, P, a.table[0], a.shift[0], a.base[1], a.obj[1], a.dstTable(), a.shift[2], a.obj[2], a.len, a.count)
        KT_IF(VCA, L, a.base[0], a.elem[0], a.table[1], a.shift[1], a.dstTable(), a.shift[2], a.elem[2], a.len, a.count)
        KT_IF(MAM, S, a.base[0], a.obj[0], a.row[0], a.elem[0], a.base[1], a.row[1], a.elem[1], a.dst(), a.obj[2],
              a.row[2], a.elem[2], a.width, a.height, a.count)
        KT_IF(MAM, P, a.table[0], a.shift[0], a.obj[0], a.table[1], a.shift[1], a.dstTable(), a.shift[2], a.obj[2],
              a.width, a.height, a.count)
        KT_IF(MAM, L, a.table[0], a.shift[0], a.row[0], a.elem[0], a.base[1], a.row[1], a.elem[1], a.dstTable(),
              a.shift[2], a.row[2], a.elem[2], a.width, a.height, a.count)
        KT_IF(MMA, S, a.base[0], a.row[0], a.elem[0], a.base[1], a.obj[1], a.row[1], a.elem[1], a.dst(), a.obj[2],
              a.row[2], a.elem[2], a.width, a.height, a.count)
        KT_IF(MMA, P, a.table[0], a.shift[0], a.table[1], a.shift[1], a.obj[1], a.dstTable(), a.shift[2], a.obj[2],
              a.width, a.height, a.count)
        KT_IF(MMA, L, a.base[0], a.row[0], a.elem[0], a.table[1], a.shift[1], a.row[1], a.elem[1], a.dstTable(),
              a.shift[2], a.row[2], a.elem[2], a.width, a.height, a.count)
        KT_IF(MAMA, S, a.base[0], a.obj[0], a.row[0], a.elem[0], a.base[1], a.obj[1], a.row[1], a.elem[1], a.dst(),
              a.obj[2], a.row[2], a.elem[2], a.width, a.height, a.count)
        KT_IF(MAMA, P, a.table[0], a.shift[0], a.obj[0], a.table[1], a.shift[1], a.obj[1], a.dstTable(), a.shift[2],
              a.obj[2], a.width, a.height, a.count)
        KT_IF(MAMA, L, a.table[0], a.shift[0], a.row[0], a.elem[0], a.table[1], a.shift[1], a.row[1], a.elem[1],
              a.dstTable(), a.shift[2], a.row[2], a.elem[2], a.width, a.height, a.count)
    }
#undef KT_IF
    ADD_FAILURE() << "no binding for this shape and form";
    return {};
}

// One exported operation: its letters say which sources are transposed, its
// op what it computes ('+', '-', or 'r' for constant minus vector).
template <class T>
struct Op {
    std::string name;
    char op;
    Shape shape;
    bool tr1, tr2;
    Caller<T> form[3];
    std::string order[3];  // check groups, first tested first: n c z s h
};

template <class T, class F32, class F64>
auto pick(F32* f32, F64* f64)
{
    if constexpr (sizeof(T) == 4)
        return f32;
    else
        return f64;
}

template <class T>
std::vector<Op<T>> all_ops()
{
    std::vector<Op<T>> ops;
    auto add = [&](std::string name, char op, Shape shape, auto s, auto p, auto l, std::string orders = "") {
        const std::string letters = name.substr(name.find('_') + 1);
        std::string mt;
        for (char c : letters)
            if (c == 'm' || c == 't') mt += c;
        Op<T> o{name, op, shape, mt.size() > 0 && mt[0] == 't', mt.size() > 1 && mt[1] == 't', {}, {}};
        o.form[0] = bind<T>(shape, Form::S, s);
        o.form[1] = bind<T>(shape, Form::P, p);
        if constexpr (!std::is_same_v<decltype(l), std::nullptr_t>) o.form[2] = bind<T>(shape, Form::L, l);
        const bool arr = info(shape).array;
        o.order[0] = arr ? "nczs" : "nzs";
        o.order[1] = arr ? "nczsh" : "nzh";
        o.order[2] = "nczsh";
        if (!orders.empty()) {
            o.order[0] = orders.substr(0, orders.find('/'));
            auto rest = orders.substr(orders.find('/') + 1);
            o.order[1] = rest.substr(0, rest.find('/'));
            o.order[2] = rest.substr(rest.find('/') + 1);
        }
        ops.push_back(std::move(o));
    };
#define KT_SINGLE(N, OP, SH) add(#N, OP, Shape::SH, pick<T>(N##_32f, N##_64f), pick<T>(N##_32f_P, N##_64f_P), nullptr)
#define KT_ARRAY(N, OP, SH, ...)                                                                       \
    add(#N, OP, Shape::SH, pick<T>(N##_32f, N##_64f), pick<T>(N##_32f_P, N##_64f_P),                   \
        pick<T>(N##_32f_L, N##_64f_L), ##__VA_ARGS__)
    KT_SINGLE(kelmAdd_vv, '+', VV);
    KT_SINGLE(kelmAdd_vc, '+', VC);
    KT_SINGLE(kelmAdd_mm, '+', MM);
    KT_SINGLE(kelmAdd_tm, '+', MM);
    KT_SINGLE(kelmAdd_tt, '+', MM);
    KT_ARRAY(kelmAdd_vav, '+', VAV, "nzsc/nzsch/nzshc");
    KT_ARRAY(kelmAdd_vava, '+', VAVA);
    KT_ARRAY(kelmAdd_vac, '+', VAC);
    KT_ARRAY(kelmAdd_vaca, '+', VACA);
    KT_ARRAY(kelmAdd_vca, '+', VCA);
    KT_ARRAY(kelmAdd_mam, '+', MAM, "ncsz/nczsh/nczsh");
    KT_ARRAY(kelmAdd_mama, '+', MAMA);
    KT_ARRAY(kelmAdd_mat, '+', MAM);
    KT_ARRAY(kelmAdd_tam, '+', MAM);
    KT_ARRAY(kelmAdd_tama, '+', MAMA);
    KT_ARRAY(kelmAdd_tat, '+', MAM);
    KT_ARRAY(kelmAdd_tata, '+', MAMA);
    KT_SINGLE(kelmSub_vv, '-', VV);
    KT_SINGLE(kelmSub_vc, '-', VC);
    KT_SINGLE(kelmSub_cv, 'r', VC);
    KT_SINGLE(kelmSub_mm, '-', MM);
    KT_SINGLE(kelmSub_mt, '-', MM);
    KT_SINGLE(kelmSub_tm, '-', MM);
    KT_SINGLE(kelmSub_tt, '-', MM);
    KT_ARRAY(kelmSub_vav, '-', VAV, "nzsc/nzsch/nzshc");
    KT_ARRAY(kelmSub_vva, '-', VVA);
    KT_ARRAY(kelmSub_vava, '-', VAVA);
    KT_ARRAY(kelmSub_vac, '-', VAC);
    KT_ARRAY(kelmSub_vaca, '-', VACA);
    KT_ARRAY(kelmSub_vca, '-', VCA);
    KT_ARRAY(kelmSub_cav, 'r', VCA);
    KT_ARRAY(kelmSub_cva, 'r', VAC);
    KT_ARRAY(kelmSub_cava, 'r', VACA);
    KT_ARRAY(kelmSub_mam, '-', MAM, "ncsz/nczsh/nczsh");
    KT_ARRAY(kelmSub_mma, '-', MMA, "ncsz/nczsh/nczsh");
    KT_ARRAY(kelmSub_mama, '-', MAMA);
    KT_ARRAY(kelmSub_mat, '-', MAM);
    KT_ARRAY(kelmSub_mta, '-', MMA);
    KT_ARRAY(kelmSub_mata, '-', MAMA);
    KT_ARRAY(kelmSub_tam, '-', MAM);
    KT_ARRAY(kelmSub_tma, '-', MMA);
    KT_ARRAY(kelmSub_tama, '-', MAMA);
    KT_ARRAY(kelmSub_tat, '-', MAM);
    KT_ARRAY(kelmSub_tta, '-', MMA);
    KT_ARRAY(kelmSub_tata, '-', MAMA);
#undef KT_SINGLE
#undef KT_ARRAY
    return ops;
}

// The operands of one call, laid out in one description.
template <class T>
struct Setup {
    std::vector<std::unique_ptr<Objects<T>>> obj;  // per operand; null for a single constant
    Args<T> args;
    int h = 1, w = 1, count = 1;
    Form form = Form::S;

    Setup(const Op<T>& op, Desc desc, int height, int width, int n, unsigned seed) : h(height), w(width), count(n)
    {
        const ShapeInfo si = info(op.shape);
        if (!si.array) count = 1;
        form = desc == Desc::Pointer ? Form::P : (desc == Desc::List || desc == Desc::ListS2) ? Form::L : Form::S;
        const bool unit = desc == Desc::Contig || desc == Desc::List || desc == Desc::Pointer;
        const char kinds[3] = {si.src1, si.src2, si.array ? 'a' : 's'};
        const bool tr[3] = {op.tr1, op.tr2, false};
        for (int r = 0; r < 3; ++r) {
            const char kind = kinds[r];
            // Stored sizes: a transposed source is stored w rows by h columns.
            const int sh = tr[r] ? w : h, sw = tr[r] ? h : w;
            Desc d = desc;
            if (kind == 's' && form == Form::L) d = unit ? Desc::Contig : Desc::Strided;
            if (kind == 'k') d = form == Form::L ? Desc::List : (unit ? Desc::Contig : Desc::Strided);
            if (kind == 'c') {
                obj.emplace_back();
                args.val = T(1.25) + T(seed % 7);
                continue;
            }
            const int objects = (kind == 'a' || kind == 'k') ? count : 1;
            obj.emplace_back(std::make_unique<Objects<T>>(d, objects, kind == 'k' ? 1 : sh, kind == 'k' ? 1 : sw,
                                                          seed * 3 + unsigned(r)));
            Objects<T>& o = *obj.back();
            args.base[r] = o.base();
            args.table[r] = o.table();
            args.obj[r] = o.objStride();
            args.row[r] = o.rowStride();
            args.elem[r] = o.elemStride();
            args.shift[r] = o.shift();
        }
        args.len = w;
        args.width = w;
        args.height = h;
        args.count = count;
    }

    T source(const Op<T>& op, int r, int k, int i, int j) const
    {
        const char kind = r == 0 ? info(op.shape).src1 : info(op.shape).src2;
        const bool tr = r == 0 ? op.tr1 : op.tr2;
        if (kind == 'c') return args.val;
        Objects<T>& o = *obj[std::size_t(r)];
        if (kind == 'k') return o.at(k, 0, 0);
        const int kk = kind == 'a' ? k : 0;
        return tr ? o.at(kk, j, i) : o.at(kk, i, j);
    }

    static T apply(char op, T a, T b) { return op == '+' ? a + b : op == '-' ? a - b : b - a; }

    // Expected results, computed before the call.
    std::vector<T> expected(const Op<T>& op) const
    {
        std::vector<T> e;
        for (int k = 0; k < count; ++k)
            for (int i = 0; i < h; ++i)
                for (int j = 0; j < w; ++j) e.push_back(apply(op.op, source(op, 0, k, i, j), source(op, 1, k, i, j)));
        return e;
    }

    void expect_result(const std::vector<T>& e, const std::string& what) const
    {
        std::size_t n = 0;
        for (int k = 0; k < count; ++k)
            for (int i = 0; i < h; ++i)
                for (int j = 0; j < w; ++j, ++n)
                    ASSERT_TRUE(kt::same_bits(obj[2]->at(k, i, j), e[n]))
                        << what << " object " << k << " (" << i << ", " << j << "): " << obj[2]->at(k, i, j)
                        << " != " << e[n];
        for (const auto& o : obj) {
            if (!o) continue;
            ASSERT_TRUE(o->canaries_intact()) << what << ": wrote outside the described elements";
        }
    }
};

const Desc kAllDescs[] = {Desc::Contig, Desc::Strided, Desc::Pointer, Desc::List, Desc::ListS2};

std::vector<std::pair<int, int>> sizes_for(const ShapeInfo& si)
{
    if (!si.matrix) return {{1, 1}, {1, 2}, {1, 3}, {1, 4}, {1, 5}, {1, 6}, {1, 7}, {1, 8}};
    return {{1, 1}, {2, 3}, {3, 2}, {3, 3}, {4, 4}, {5, 5}, {6, 6}, {7, 7}, {8, 8}, {4, 6}, {6, 5}};
}

bool has_form(const ShapeInfo& si, Desc d) { return si.array || (d != Desc::List && d != Desc::ListS2); }

template <class T>
class AddSub : public ::testing::Test {};
using Types = ::testing::Types<float, double>;
TYPED_TEST_SUITE(AddSub, Types);

TYPED_TEST(AddSub, EveryNameAndDescriptionGivesOneIeeeOperationPerElement)
{
    using T = TypeParam;
    for (const Op<T>& op : all_ops<T>()) {
        const ShapeInfo si = info(op.shape);
        for (Desc d : kAllDescs) {
            if (!has_form(si, d)) continue;
            for (auto [h, w] : sizes_for(si)) {
                Setup<T> s(op, d, h, w, 3, unsigned(h * 16 + w));
                const auto e = s.expected(op);
                const std::string what = op.name + "_" + kt::type_name<T>() + " " + kt::name(d) + " " +
                                         std::to_string(h) + "x" + std::to_string(w);
                ASSERT_EQ(s.form == Form::S ? op.form[0](s.args) : op.form[s.form == Form::P ? 1 : 2](s.args), kelOk)
                    << what;
                s.expect_result(e, what);
            }
        }
    }
}

TYPED_TEST(AddSub, InPlaceOnTheFirstSource)
{
    using T = TypeParam;
    for (const Op<T>& op : all_ops<T>()) {
        const ShapeInfo si = info(op.shape);
        if (op.tr1 || (si.array && si.src1 != 'a')) continue;  // dst must have the first source's layout
        for (Desc d : {Desc::Contig, Desc::Strided, Desc::Pointer}) {
            Setup<T> s(op, d, si.matrix ? 4 : 1, 4, 5, 11);
            const auto e = s.expected(op);
            Args<T> a = s.args;
            if (si.src1 == 'c' || si.src1 == 'k') continue;
            a.base[2] = a.base[0];
            a.table[2] = a.table[0];
            a.obj[2] = a.obj[0], a.row[2] = a.row[0], a.elem[2] = a.elem[0], a.shift[2] = a.shift[0];
            ASSERT_EQ(op.form[s.form == Form::P ? 1 : 0](a), kelOk) << op.name;
            std::swap(s.obj[0], s.obj[2]);  // the results now live in the first source
            s.expect_result(e, op.name + " in place");
        }
    }
}

// Packed arrays (objects, rows and elements back to back) run as one flat
// loop in blocks; counts that leave every kind of tail, serial and split over
// two threads, with the destination separate, equal to the first source or
// equal to the second, must give one IEEE operation per element.  The same
// calls on gapped strides (the object-by-object loops) are the control.
TYPED_TEST(AddSub, PackedArraysRunFlatWithEveryTailAndInPlace)
{
    using T = TypeParam;
    const std::pair<int, int> runs[] = {{1, 1}, {2, 1}, {7, 1}, {33, 1}, {1001, 2}};  // count, threads
    for (const Op<T>& op : all_ops<T>()) {
        const ShapeInfo si = info(op.shape);
        if (!si.array || op.tr1 || op.tr2) continue;
        const std::pair<int, int> shapes[] = {{si.matrix ? 4 : 1, 4}, {si.matrix ? 3 : 1, 3}, {si.matrix ? 2 : 1, 5}};
        for (Desc d : {Desc::Contig, Desc::Strided})
            for (auto [h, w] : shapes)
                for (auto [n, threads] : runs)
                    for (int inPlace : {0, 1, 2}) {  // dst apart, dst = src1, dst = src2
                        const char kind = inPlace == 1 ? si.src1 : si.src2;
                        if (inPlace && kind != 'a') continue;
                        kt::Threads th(threads);
                        Setup<T> s(op, d, h, w, n, unsigned(n * 8 + h * 4 + w));
                        const auto e = s.expected(op);
                        Args<T> a = s.args;
                        if (inPlace) {
                            const int r = inPlace - 1;
                            a.base[2] = a.base[r];
                            a.obj[2] = a.obj[r], a.row[2] = a.row[r], a.elem[2] = a.elem[r];
                            std::swap(s.obj[std::size_t(r)], s.obj[2]);  // the results land in that source
                        }
                        const std::string what = op.name + "_" + kt::type_name<T>() + " " + kt::name(d) + " " +
                                                 std::to_string(h) + "x" + std::to_string(w) + " count " +
                                                 std::to_string(n) + " threads " + std::to_string(threads) +
                                                 " in place " + std::to_string(inPlace);
                        ASSERT_EQ(op.form[0](a), kelOk) << what;
                        s.expect_result(e, what);
                    }
    }
}

// The orders that differ between members, as a caller would meet them.
TEST(AddSubOrder, DeliberateAsymmetries)
{
    float v[8] = {}, d[8] = {};
    const float* tbl[4] = {v, v, v, v};
    float* dtbl[4] = {d, d, d, d};
    EXPECT_EQ(kelmAdd_vav_32f(v, 16, 4, v, 4, d, 16, 4, 0, 0), kelErrSize);
    EXPECT_EQ(kelmAdd_vava_32f(v, 16, 4, v, 16, 4, d, 16, 4, 0, 0), kelErrCount);
    EXPECT_EQ(kelmAdd_mam_32f(v, 16, 8, 4, v, 8, 4, d, 16, 8, 4, 0, 2, 0), kelErrCount);
    EXPECT_EQ(kelmAdd_mam_32f(v, 16, 8, 2, v, 8, 4, d, 16, 8, 4, 0, 2, 1), kelErrStride);
    EXPECT_EQ(kelmAdd_tam_32f(v, 16, 8, 2, v, 8, 4, d, 16, 8, 4, 0, 2, 1), kelErrSize);
    EXPECT_EQ(kelmAdd_vav_32f_P(tbl, 2, 16, tbl, 0, dtbl, 0, 16, 4, 0), kelErrCount);
    EXPECT_EQ(kelmAdd_vav_32f_L(tbl, 2, 4, v, 4, dtbl, 0, 4, 4, 0), kelErrShift);
    // Strides: zero, negative and non-multiples fail; a zero shift is valid.
    EXPECT_EQ(kelmAdd_vv_32f(v, 0, v, 4, d, 4, 2), kelErrStride);
    EXPECT_EQ(kelmAdd_vv_32f(v, 6, v, 4, d, 4, 2), kelErrStride);
    double w[4] = {}, e[4] = {};
    EXPECT_EQ(kelmAdd_vv_64f(w, 4, w, 8, e, 8, 2), kelErrStride);
    EXPECT_EQ(kelmAdd_vv_64f(w, 12, w, 8, e, 8, 2), kelErrStride);
    EXPECT_EQ(kelmAdd_vv_32f_P(tbl, 0, tbl, 0, dtbl, 0, 2), kelOk);
    EXPECT_EQ(kelmAdd_vv_32f_P(tbl, -4, tbl, 0, dtbl, 0, 2), kelErrShift);
    // A null array of constants is a null operand.
    EXPECT_EQ(kelmAdd_vaca_32f(v, 16, 4, nullptr, 4, d, 16, 4, 4, 1), kelErrNullPointer);
}

TEST(AddSubValues, ConstantOrderOfSubtraction)
{
    const float src[3] = {1, 2, 3};
    float d[3];
    ASSERT_EQ(kelmSub_cv_32f(src, 4, 10.0f, d, 4, 3), kelOk);
    EXPECT_EQ(d[0], 9.0f);
    EXPECT_EQ(d[2], 7.0f);
    ASSERT_EQ(kelmSub_vc_32f(src, 4, 10.0f, d, 4, 3), kelOk);
    EXPECT_EQ(d[0], -9.0f);
    EXPECT_EQ(d[2], -7.0f);
    // src1 2x3 minus src2 stored 3x2: element (i, j) takes src2's stored (j, i).
    const float a[6] = {10, 20, 30, 40, 50, 60}, b[6] = {1, 2, 3, 4, 5, 6};
    float c[6];
    ASSERT_EQ(kelmSub_mt_32f(a, 12, 4, b, 8, 4, c, 12, 4, 3, 2), kelOk);
    const float want[6] = {9, 17, 25, 38, 46, 54};
    for (int k = 0; k < 6; ++k) EXPECT_EQ(c[k], want[k]) << k;
}

}  // namespace
