// Element-wise kernels (Add, Sub): dst(i, j) = op(a(i, j), b(i, j)) for every
// object, row by row, element by element; each destination element is one
// IEEE operation, written after its two sources are read (so dst may be src).
#pragma once

#include "common/check.h"
#include "common/desc.h"
#include "common/parallel.h"

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

// One run of objects; H and W above 0 are compile-time sizes.
template <class Op, int H, int W, class A, class B, class D>
kelStatus ew_objects(int count, const A& a, const B& b, const D& d, int h, int w)
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

// The kernel: vectors (h = 1) of length 3 to 6 and square matrices of order 3
// to 6 take written-out loops, everything else the general loop.
template <class Op, class A, class B, class D>
kelStatus ownkelm_elementwise(int count, const A& a, const B& b, const D& d, int h, int w)
{
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
