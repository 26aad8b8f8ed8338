// The table of every exported operation (tests/generic/ops.inc, written by
// scripts/gen-ops from the public headers): what each parameter is, which
// groups of argument checks the operation makes and in which order, and a
// thunk that calls it from an array of generic argument values.  The generic
// tests and the fuzzer call any member through it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "kelm.h"

namespace kg {

enum class Role : unsigned char {
    Base,       // strided operand base, plain result array, constants base
    Table,      // pointer table (_P): one pointer per element
    List,       // object list (_L): one pointer per object (or per constant)
    Buffer,     // caller's work buffer
    Index,      // permutation blocks (int)
    Bytes,      // buffer-size query result (int)
    ObjStride,  // bytes from object k to k+1 (also a constants stride)
    RowStride,
    ElemStride,
    Shift,      // bytes added to every pointer of a table or list
    Size,       // len, width, height, n, ...
    Count,
    Value,      // a constant passed by value
};

// Groups of argument checks and the status each yields: null, count, size,
// size agreement, stride, shift, and O: object strides that are looked at
// only when count is above 1.
enum class Check : unsigned char { N, C, Z, M, T, H, O };

inline kelStatus status_of(Check c)
{
    switch (c) {
    case Check::N: return kelErrNullPointer;
    case Check::C: return kelErrCount;
    case Check::Z: return kelErrSize;
    case Check::M: return kelErrSizeMismatch;
    case Check::T:
    case Check::O: return kelErrStride;
    case Check::H: return kelErrShift;
    }
    return kelOk;
}

inline bool is_pointer(Role r) { return r <= Role::Bytes; }

union Arg {
    void* p;
    int i;
    double d;
};

struct Param {
    const char* name;
    Role role;
    int owner;  // index of the operand a stride or shift belongs to, else -1
};

struct Group {
    Check check;
    std::uint32_t mask;  // the parameters it tests (for M: the sizes to set apart)
    std::vector<int> params() const
    {
        std::vector<int> v;
        for (int i = 0; i < 32; ++i)
            if (mask >> i & 1u) v.push_back(i);
        return v;
    }
};

template <class T>
struct Span {
    const T* first;
    std::size_t n;
    const T* begin() const { return first; }
    const T* end() const { return first + n; }
    std::size_t size() const { return n; }
    bool empty() const { return n == 0; }
    const T& operator[](std::size_t i) const { return first[i]; }
    const T& front() const { return first[0]; }
};

using Call = kelStatus (*)(const Arg*);

struct Op {
    const char* name;
    const char* family;
    int esize;         // 4 or 8
    const char* desc;  // "S", "P", "L", or source and destination for Copy ("SP")
    bool array;
    Call call;
    Span<Param> params;
    Span<Group> groups;  // in the order the operation tests them
};

const Span<Op>& ops();
const Op* find(const char* name);

}  // namespace kg
