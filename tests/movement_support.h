// Support for the data-movement tests (Copy, Extract, LoadIdentity,
// Transpose): operands described by a letter, argument lists assembled from
// them, argument faults by check group, and bit-level comparison.
#pragma once

#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <tuple>
#include <vector>

#include "support.h"

namespace mv {

using kt::Desc;
using kt::Objects;

// Everything one operand's description arguments can be.
template <class T>
struct Operand {
    T* base = nullptr;
    T* const* table = nullptr;
    int obj = 0, row = 0, elem = 0, shift = 0;
};

template <class T>
Operand<T> operand(Objects<T>& o)
{
    return {o.base(), o.table(), o.objStride(), o.rowStride(), o.elemStride(), o.shift()};
}

// The test layouts an operand of description letter F can take: S strided,
// P pointer, L list, D a dense buffer (Extract's destination).
inline std::vector<Desc> layouts(char f)
{
    switch (f) {
    case 'S': return {Desc::Contig, Desc::Strided};
    case 'P': return {Desc::Pointer};
    case 'L': return {Desc::List, Desc::ListS2};
    default: return {Desc::Contig};
    }
}

// The argument list of one operand: description F, matrix (M) or vector,
// element of an array (A) or single object.
template <char F, bool M, bool A, class T>
auto args_of(const Operand<T>& o)
{
    if constexpr (F == 'D') {
        return std::make_tuple(o.base);
    } else if constexpr (F == 'P') {
        if constexpr (A)
            return std::make_tuple(o.table, o.shift, o.obj);
        else
            return std::make_tuple(o.table, o.shift);
    } else {
        auto strides = [&] {
            if constexpr (M)
                return std::make_tuple(o.row, o.elem);
            else
                return std::make_tuple(o.elem);
        }();
        if constexpr (F == 'L') return std::tuple_cat(std::make_tuple(o.table, o.shift), strides);
        if constexpr (F == 'S' && A) return std::tuple_cat(std::make_tuple(o.base, o.obj), strides);
        if constexpr (F == 'S' && !A) return std::tuple_cat(std::make_tuple(o.base), strides);
    }
}

template <bool M>
auto sizes_of(int h, int w)
{
    if constexpr (M)
        return std::make_tuple(w, h);
    else
        return std::make_tuple(w);
}

// One call: two operands (in argument order; LoadIdentity uses one), the
// sizes (a vector has h = 1 and len = w) and count.
template <class T>
struct Setup {
    Operand<T> op[2];
    char form[2];  // description letters of the operands
    int h, w, count;
};

template <class T>
using Caller = std::function<kelStatus(const Setup<T>&)>;

// A member: its name, its operands' description letters, and its check
// groups in the order it tests them:
//   n null   z size   c count   s row or element stride   h shift
//   o object stride
template <class T>
struct Member {
    std::string name;
    std::string forms;
    std::string order;
    Caller<T> call;
    bool matrix = true;
};

inline kelStatus status_of(char group)
{
    switch (group) {
    case 'n': return kelErrNullPointer;
    case 'z': return kelErrSize;
    case 'c': return kelErrCount;
    case 's':
    case 'o': return kelErrStride;
    case 'h': return kelErrShift;
    }
    return kelOk;
}

// Puts the fault of one check group into a valid call: the first operand
// that has the argument gets the bad value.
template <class T>
void fault(Setup<T>& s, char group)
{
    auto first = [&](const char* letters) -> Operand<T>* {
        for (int i = 0; i < 2; ++i)
            if (std::strchr(letters, s.form[i])) return &s.op[i];
        return nullptr;
    };
    switch (group) {
    case 'n': s.op[0].base = nullptr, s.op[0].table = nullptr; break;
    case 'z': s.w = 0; break;
    case 'c': s.count = 0; break;
    case 's': first("SL")->elem = 2; break;
    case 'h': first("PL")->shift = 2; break;
    case 'o': first("SP")->obj = 0; break;
    }
}

// The bits of an element, read from memory (never through a floating-point
// register: on 32-bit x86 that could quieten a signalling NaN).
template <class T>
auto bits(const T& x)
{
    std::conditional_t<sizeof(T) == 4, std::uint32_t, std::uint64_t> b;
    std::memcpy(&b, &x, sizeof b);
    return b;
}

// Special bit patterns placed into sources: signalling NaN, NaN with a
// payload, negative zero, infinity.
template <class T>
void poison(Objects<T>& o, int count, int h, int w)
{
    using B = decltype(bits(T()));
    std::vector<B> pats;
    if constexpr (sizeof(T) == 4)
        pats = {0x7f800001u, 0xffa00005u, 0x80000000u, 0xff800000u};
    else
        pats = {0x7ff0000000000001ull, 0xfff4000000000123ull, 0x8000000000000000ull, 0xfff0000000000000ull};
    int p = 0;
    for (int k = 0; k < count; ++k)
        for (int i = 0; i < h; ++i)
            for (int j = 0; j < w; ++j)
                if ((k + 2 * i + 3 * j) % 3 == 0) std::memcpy(&o.at(k, i, j), &pats[std::size_t(p++ % 4)], sizeof(T));
}

// Every pair of check groups of the member (and each group alone) against
// its order: the group tested first decides, and nothing is written.
template <class T>
void check_order(const Member<T>& m, const Setup<T>& valid, const std::function<bool()>& untouched)
{
    for (char a : m.order)
        for (char b : m.order) {
            Setup<T> s = valid;
            fault(s, a);
            fault(s, b);
            const char first = m.order[std::min(m.order.find(a), m.order.find(b))];
            EXPECT_EQ(m.call(s), status_of(first)) << m.name << " with faults " << a << b;
            EXPECT_TRUE(untouched()) << m.name << " wrote despite faults " << a << b;
        }
}

template <class T, class F32, class F64>
auto pick(F32* f32, F64* f64)
{
    if constexpr (sizeof(T) == 4)
        return f32;
    else
        return f64;
}

}  // namespace mv
