// Element-wise kernels (Add, Sub): dst(i, j) = op(a(i, j), b(i, j)) for every
// object, row by row, element by element; each destination element is one
// IEEE operation, written after its two sources are read (so dst may be src).
#pragma once

#include "common/check.h"
#include "common/desc.h"
#include "common/dispatch.h"
#include "common/parallel.h"
#include "common/stream.h"

namespace kelm {

struct AddOp {
    template <class T>
    static T apply(T a, T b) { return a + b; }
};
struct SubOp {
    template <class T>
    static T apply(T a, T b) { return a - b; }
};
// Constant minus vector: the constant is always the second operand in the
// argument list, whatever the order of the subtraction.
struct SubFromOp {
    template <class T>
    static T apply(T a, T b) { return b - a; }
};

// The kernels have internal linkage: each source file keeps its own copies.
// Widened (cloned) templates of external linkage would be exported with their
// resolvers whatever the visibility asked for.
namespace {

// One run of objects; H and W above 0 are compile-time sizes.
template <class Op, int H, int W, class A, class B, class D>
KELM_WIDE kelStatus ew_objects(int count, const A& a, const B& b, const D& d, int h, int w)
{
    using T = typename D::Elem;
    const int rows = H ? H : h, cols = W ? W : w;
    for (int k = 0; k < count; ++k) {
        const auto x = a[k];
        const auto y = b[k];
        const auto z = d[k];
        for (int i = 0; i < rows; ++i) {
            if constexpr (W > 0) {
                // A written-out row is formed in registers and stored whole, so
                // the stores do not stand between loads (the row vectorises).
                // In place, each element still reads only its own sources.
                T r[W];
                for (int j = 0; j < W; ++j) r[j] = Op::template apply<T>(x(i, j), y(i, j));
                for (int j = 0; j < W; ++j) z(i, j) = r[j];
            } else {
                for (int j = 0; j < cols; ++j) z(i, j) = Op::template apply<T>(x(i, j), y(i, j));
            }
        }
    }
    return kelOk;
}

// --- packed arrays: one run of elements ---------------------------------------
//
// When every array operand holds its objects back to back, rows back to back
// and elements back to back (object stride = height x row stride, row stride =
// width x element size), element e of the run is element e of every operand,
// and the whole array is one flat loop.  Each destination element is still
// the same single IEEE operation on the same two numbers, so the results are
// those of the object-by-object loop to the bit.  A constant operand (one
// value for every element) joins a packed run as it is.

template <class T>
struct RunOf {  // elements back to back
    const T* p;
    T operator[](ptrdiff_t e) const { return p[e]; }
};

// Which descriptions can be packed at all: contiguous strided arrays and one
// constant (tables, lists, transposed views and per-object constants cannot).
template <class D>
constexpr bool runnable = false;
template <class T>
constexpr bool runnable<Value<T>> = true;
template <class T>
constexpr bool runnable<Strided<T, true>> = true;

template <class T>
bool packed(const Value<T>&, int, int, int) { return true; }
template <class T>
bool packed(const Strided<T, true>& s, int count, int h, int w)
{
    const ptrdiff_t rowBytes = ptrdiff_t(w) * ptrdiff_t(sizeof(T));
    return (h == 1 || s.row == rowBytes) && (count == 1 || s.obj == rowBytes * h);
}

template <class T>
ValueView<T> run_of(const Value<T>& v) { return {v.v}; }
template <class T>
RunOf<T> run_of(const Strided<T, true>& s) { return {&elem_at<T>(s.base)}; }

// n elements in blocks of 64 bytes: a block's sources are all read, then its
// destinations written, so in-place use (dst equal to a source) is exact and
// each block becomes a few full-width vector operations.
// 1 for an operand read from memory, 0 for a constant.
template <class X>
constexpr std::size_t runs = 1;
template <class T>
constexpr std::size_t runs<ValueView<T>> = 0;

// Four or two consecutive elements of a run as one vector.
template <class V, class T>
V lanes_of(const RunOf<T>& r, ptrdiff_t e)
{
    return vx::load<V, int(sizeof(V) / sizeof(T))>(r.p + e);
}
template <class V, class T>
V lanes_of(const ValueView<T>& v, ptrdiff_t)
{
    return V{} + v.v;
}

// A run larger than the cache goes to memory by streaming stores, from the
// first 16-byte boundary of the destination on.
template <class Op, class T, class X, class Y>
KELM_WIDE void ew_run(ptrdiff_t n, X x, Y y, T* d)
{
    constexpr int B = 64 / int(sizeof(T));
    ptrdiff_t e = 0;
    if (beyond_cache(std::size_t(n) * sizeof(T) * (1 + runs<X> + runs<Y>)) && aligned_to_elements(d)) {
        for (; !aligned16(d + e); ++e) d[e] = Op::template apply<T>(x[e], y[e]);
        using V = Quad<T>;
        e = stream_blocks(d, e, n, [&](ptrdiff_t i) { return Op::template apply<V>(lanes_of<V>(x, i), lanes_of<V>(y, i)); });
    }
    for (; e + B <= n; e += B) {
        T r[B];
        for (int j = 0; j < B; ++j) r[j] = Op::template apply<T>(x[e + j], y[e + j]);
        for (int j = 0; j < B; ++j) d[e + j] = r[j];
    }
    for (; e < n; ++e) d[e] = Op::template apply<T>(x[e], y[e]);
}

// The kernel: packed arrays run flat; otherwise vectors (h = 1) of length 3
// to 6 and square matrices of order 3 to 6 take written-out loops, everything
// else the general loop.
template <class Op, class A, class B, class D>
kelStatus ownkelm_elementwise(int count, const A& a, const B& b, const D& d, int h, int w)
{
    using T = typename D::Elem;
    if constexpr (runnable<A> && runnable<B> && std::is_same_v<D, Strided<T, true>>) {
        if (packed(a, count, h, w) && packed(b, count, h, w) && packed(d, count, h, w)) {
            ew_run<Op, T>(ptrdiff_t(count) * h * w, run_of(a), run_of(b), &elem_at<T>(d.base));
            return kelOk;
        }
    }
#define KELM_EW_FIXED(R, C) \
    if (h == R && w == C) return ew_objects<Op, R, C>(count, a, b, d, h, w);
    KELM_EW_FIXED(1, 3) KELM_EW_FIXED(1, 4) KELM_EW_FIXED(1, 5) KELM_EW_FIXED(1, 6)
    KELM_EW_FIXED(3, 3) KELM_EW_FIXED(4, 4) KELM_EW_FIXED(5, 5) KELM_EW_FIXED(6, 6)
#undef KELM_EW_FIXED
    return ew_objects<Op, 0, 0>(count, a, b, d, h, w);
}

// Runs the contiguous kernel when every operand has unit element strides,
// else the general-stride one.
template <class Op, class A, class B, class D>
kelStatus ew_serial(int count, const A& a, const B& b, const D& d, int h, int w)
{
    return with_unit_strides([&](const auto&... x) { return ownkelm_elementwise<Op>(count, x..., h, w); }, a, b, d);
}

// The parallel driver of every element-wise array operation.
template <class Op, class A, class B, class D>
kelStatus ownOMP_elementwise(int count, const A& a, const B& b, const D& d, int h, int w)
{
    return with_unit_strides(
        [&](const auto&... x) {
            return split_over(count, [&](int mine, const auto&... y) { return ownkelm_elementwise<Op>(mine, y..., h, w); },
                              x...);
        },
        a, b, d);
}

template <class Op, class A, class B, class D>
kelStatus elementwise(bool parallel, int count, const A& a, const B& b, const D& d, int h, int w)
{
    return parallel ? ownOMP_elementwise<Op>(count, a, b, d, h, w) : ew_serial<Op>(count, a, b, d, h, w);
}

}  // namespace

// --- when an element-wise array goes parallel ----------------------------------

enum class Form { Strided, Pointer, List };

// Size measures M from S (len, or width*height) and count, in wrapping 32-bit.
inline I32 m_array_single(I32 s, I32 n) { return I32(s) * (I32(2) * n + 1); }  // vav, mam, vac ...
inline I32 m_two_arrays(I32 s, I32 n) { return I32(3) * s * n; }                // vava, mama ...
inline I32 m_array_values(I32 s, I32 n) { return I32(n) * (I32(2) * s + 1); }   // vaca, cava
inline I32 m_single_values(I32 s, I32 n) { return I32(s) * n + s + n; }         // vca, cav
inline I32 m_count_only(I32, I32 n) { return I32(2) * n + 1; }                  // Sub cva leaves len out

// Vector arrays compare strictly, matrix arrays with greater-or-equal.
template <class T, Form F>
bool vector_array_parallel(I32 m)
{
    if (F == Form::Strided) return sizeof(T) == 4 ? m > 4800 : m > 1400;
    return F == Form::List ? m > 2500 : m > 1500;
}

template <class T, Form F>
bool matrix_array_parallel(I32 m, bool unitStrides)
{
    if (F == Form::Strided && sizeof(T) == 4) return unitStrides ? m >= 3000 : m >= 2000;
    return m >= 2000;
}

template <bool Tr, class D>
auto orient(const D& d)
{
    if constexpr (Tr)
        return Transposed<D>{d};
    else
        return d;
}

}  // namespace kelm
