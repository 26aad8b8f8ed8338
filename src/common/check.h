// Argument checks.  Each step tests one group of arguments and yields its
// status or kelOk; an entry lists its steps in its own order and returns the
// first failing one:
//
//     if (kelStatus s = first_failing({nulls(src, dst), counts(n), sizes(w, h),
//                                      strides<T>(srcRow, srcElem, dstRow, dstElem)}))
//         return s;
//
// Steps only look at argument values, never at the memory they describe.
#pragma once

#include <initializer_list>

#include "kelm.h"

namespace kelm {

inline kelStatus first_failing(std::initializer_list<kelStatus> steps)
{
    for (kelStatus s : steps)
        if (s != kelOk) return s;
    return kelOk;
}

// Operand bases, pointer tables, lists and buffers must not be null.
template <class... P>
inline kelStatus nulls(const P*... p)
{
    return ((p == nullptr) || ...) ? kelErrNullPointer : kelOk;
}

inline kelStatus counts(int n) { return n < 1 ? kelErrCount : kelOk; }

// Lengths, widths, heights and orders.
template <class... I>
inline kelStatus sizes(I... s)
{
    return ((s < 1) || ...) ? kelErrSize : kelOk;
}

// Strides: positive multiples of the element size.
template <class T, class... I>
inline kelStatus strides(I... s)
{
    constexpr int low = int(sizeof(T)) - 1;
    return (((s & low) != 0 || s <= 0) || ...) ? kelErrStride : kelOk;
}

// Shifts: non-negative multiples of the element size (tested on their OR).
template <class T, class... I>
inline kelStatus shifts(I... s)
{
    constexpr int low = int(sizeof(T)) - 1;
    const int all = (0 | ... | s);
    return ((all & low) != 0 || all < 0) ? kelErrShift : kelOk;
}

// True when every element stride equals the element size: the contiguous kernels.
template <class T, class... I>
inline bool unit_strides(I... elem) { return ((elem == int(sizeof(T))) && ...); }

inline kelStatus agree(bool sizesAgree) { return sizesAgree ? kelOk : kelErrSizeMismatch; }

// Signed 32-bit arithmetic that wraps like the hardware, for the work measures
// that decide whether an array goes parallel (their products may overflow and
// must give the wrapped value, without undefined behaviour).
struct I32 {
    unsigned v;
    I32(int x) : v(unsigned(x)) {}  // NOLINT: implicit on purpose
    explicit I32(unsigned x, int) : v(x) {}
    friend I32 operator+(I32 a, I32 b) { return I32(a.v + b.v, 0); }
    friend I32 operator*(I32 a, I32 b) { return I32(a.v * b.v, 0); }
    int value() const { return int(v); }  // two's complement (defined from C++20, and by GCC)
    friend bool operator>(I32 a, int b) { return a.value() > b; }
    friend bool operator>=(I32 a, int b) { return a.value() >= b; }
};

}  // namespace kelm

// Returns the first failing status of the listed steps from the enclosing entry.
#define KELM_CHECKS(...)                                                         \
    do {                                                                         \
        if (kelStatus kelm_status_ = ::kelm::first_failing({__VA_ARGS__})) \
            return kelm_status_;                                                 \
    } while (0)
