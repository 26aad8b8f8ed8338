// The table of every exported operation (tests/generic/ops.inc, written by
// scripts/gen-ops from the public headers): what each parameter is, which
// groups of argument checks the operation makes and in which order, and a
// thunk that calls it from an array of generic argument values.  The generic
// tests and the fuzzer call any member through it.
#pragma once

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

// Groups of argument checks and the status each yields.
enum class Check : unsigned char { N, C, Z, M, T, H };

inline kelStatus status_of(Check c)
{
    switch (c) {
    case Check::N: return kelErrNullPointer;
    case Check::C: return kelErrCount;
    case Check::Z: return kelErrSize;
    case Check::M: return kelErrSizeMismatch;
    case Check::T: return kelErrStride;
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
    std::vector<int> params;  // for M: the sizes to set apart from the others
};

using Call = kelStatus (*)(const Arg*);

struct Op {
    const char* name;
    const char* family;
    int esize;         // 4 or 8
    const char* desc;  // "S", "P", "L", or source and destination for Copy ("SP")
    bool array;
    Call call;
    std::vector<Param> params;
    std::vector<Group> groups;  // in the order the operation tests them
};

const std::vector<Op>& ops();
const Op* find(const char* name);

}  // namespace kg
