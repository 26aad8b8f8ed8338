// Coverage-guided fuzzing of every operation of the table (tests/generic/ops.inc).
//
// The input picks a member, the thread count and each argument: mostly
// sensible values (sizes 1 to 8, counts up to a few thousand, strides and
// shifts that fit them), sometimes hostile ones (zero, negative, odd, huge,
// INT_MIN, products that wrap), and the element data (NaN, infinities,
// subnormals, huge and tiny numbers among ordinary ones).  The harness then
// predicts, from the member's check order in the table, whether the call must
// be refused and with which status:
//   - refused: every operand is a small buffer; the status must be the one
//     of the first failing group and no byte may change;
//   - accepted: every operand gets its own buffer sized from the arguments to
//     hold what the call may touch (an upper bound: every object taken as
//     big x big, big being the largest size argument and at least 4), so a
//     correct library never reads or writes outside them, which the
//     sanitizers watch; the status must not be an argument-check status.
// Calls whose buffers would exceed kMaxBytes are skipped.
//
// Input layout: 2 bytes member index, 1 byte thread count, then one mode byte
// per parameter (modes 0xF0 and up pick hostile values, some followed by 4 or
// 8 raw bytes), then the element data (one byte per element, cycled).
#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <vector>

#include "kelcore.h"
#include "table.h"

namespace {

using kg::Check;
using kg::Op;
using kg::Role;

constexpr std::size_t kMaxBytes = std::size_t(48) << 20;

struct Reader {
    const std::uint8_t* p;
    std::size_t n;
    std::uint8_t u8()
    {
        if (!n) return 0;
        --n;
        return *p++;
    }
    std::uint32_t u32()
    {
        std::uint32_t v = 0;
        for (int b = 0; b < 4; ++b) v |= std::uint32_t(u8()) << (8 * b);
        return v;
    }
    double f64()
    {
        std::uint64_t v = 0;
        for (int b = 0; b < 8; ++b) v |= std::uint64_t(u8()) << (8 * b);
        double d;
        std::memcpy(&d, &v, 8);
        return d;
    }
};

int hostile(Reader& r, std::uint8_t mode, int esize)
{
    switch (mode - 0xF0) {
    case 0: return 0;
    case 1: return -1;
    case 2: return -esize;
    case 3: return 1;
    case 4: return 2;
    case 5: return esize + 2;
    case 6: return INT_MIN;
    case 7: return INT_MAX;
    case 8: return INT_MAX & ~7;
    case 9: return 1 << 30;
    case 10: return 46341;  // its square wraps
    case 11: return 65536 * esize;
    case 12: return -65536;
    default: return int(r.u32());
    }
}

double special(std::uint8_t b)
{
    switch (b & 15) {
    case 0: return std::numeric_limits<double>::quiet_NaN();
    case 1: return std::numeric_limits<double>::infinity();
    case 2: return -std::numeric_limits<double>::infinity();
    case 3: return std::numeric_limits<double>::denorm_min();
    case 4: return -std::numeric_limits<float>::denorm_min();
    case 5: return 1e-310;
    case 6: return std::numeric_limits<float>::max();
    case 7: return std::numeric_limits<double>::max();
    case 8: return -0.0;
    case 9: return 0.0;
    case 10: return std::numeric_limits<float>::min();
    case 11: return 1e30;
    case 12: return -1e-30;
    case 13: return std::numeric_limits<double>::min();
    case 14: return 1.0;
    default: return -1.0;
    }
}

double element(std::uint8_t b) { return b < 0xF0 ? (int(b) - 120) / 8.0 : special(b); }

struct Region {
    std::unique_ptr<unsigned char[]> bytes;
    std::size_t size = 0;
    std::vector<unsigned char*> table;  // pointer table or list handed to the call
};

bool is_check_status(kelStatus s)
{
    return s == kelErrSize || s == kelErrNullPointer || s == kelErrStride || s == kelErrShift || s == kelErrCount ||
           s == kelErrSizeMismatch;
}

[[noreturn]] void finding(const Op& op, const char* what, kelStatus got, kelStatus want)
{
    std::fprintf(stderr, "kelm_fuzz: %s: %s (status %d, expected %d)\n", op.name, what, got, want);
    std::abort();
}

int run(const std::uint8_t* data, std::size_t size)
{
    Reader r{data, size};
    const auto& ops = kg::ops();
    const std::size_t pick = (std::size_t(r.u8()) | std::size_t(r.u8()) << 8) % ops.size();
    const Op& op = ops[pick];
    kelSetNumThreads(1 + r.u8() % 4);

    const int e = op.esize;
    const std::size_t np = op.params.size();
    std::vector<kg::Arg> a(np);
    std::vector<std::uint8_t> mode(np);
    std::vector<bool> fixed(np, false);  // hostile values are kept as drawn
    std::vector<bool> null(np, false);

    // First pass: every parameter's mode, the sizes, the count, the constants.
    int big = 4, count = 1;
    for (std::size_t i = 0; i < np; ++i) {
        const Role role = op.params[i].role;
        const std::uint8_t m = mode[i] = r.u8();
        if (kg::is_pointer(role)) {
            null[i] = m == 0xFF;
        } else if (role == Role::Value) {
            a[i].d = m >= 0xF0 ? r.f64() : special(m);
        } else if (m >= 0xF0) {
            a[i].i = hostile(r, m, e);
            fixed[i] = true;
        } else if (role == Role::Size) {
            a[i].i = 1 + m % 8;
        } else if (role == Role::Count) {
            a[i].i = m < 0xE0 ? 1 + m % 40 : 300 * (m - 0xDF);
        } else if (role == Role::Shift) {
            a[i].i = e * (m % 3);
        }
        if (role == Role::Size) big = std::max(big, a[i].i);
        if (role == Role::Count) count = a[i].i;
    }
    if (!op.array) count = 1;

    // Sizes and counts this large need more memory than any call may have:
    // such a call is run only when it must be refused.  Below these bounds
    // no extent computed here overflows.
    const bool too_big = big > 4096 || count > (1 << 20);
    const int fit = std::min(big, 4096);

    // Second pass: strides that fit the sizes, per operand.
    auto param_of = [&](int owner, Role role) -> int {
        for (std::size_t i = 0; i < np; ++i)
            if (op.params[i].owner == owner && op.params[i].role == role) return int(i);
        return -1;
    };
    for (Role role : {Role::ElemStride, Role::RowStride, Role::ObjStride})
        for (std::size_t i = 0; i < np; ++i) {
            if (op.params[i].role != role || fixed[i]) continue;
            const int owner = op.params[i].owner, m = mode[i];
            const int ie = param_of(owner, Role::ElemStride), ir = param_of(owner, Role::RowStride);
            const long long elem = ie >= 0 ? a[std::size_t(ie)].i : e;
            if (role == Role::ElemStride) {
                a[i].i = e * (1 + m % 2);
            } else if (role == Role::RowStride) {
                a[i].i = int(std::min<long long>(INT_MAX & ~7, fit * elem + e * (m % 3)));
            } else {
                long long span;
                if (op.params[std::size_t(owner)].role == Role::Table)
                    span = (long long)fit * fit * e;
                else if (ie < 0 && ir < 0)
                    span = e;  // constants
                else
                    span = (ir >= 0 ? (long long)(fit - 1) * a[std::size_t(ir)].i : 0) + (fit - 1) * elem + e;
                span = (span + e - 1) / e * e;
                a[i].i = int(std::min<long long>(INT_MAX & ~7, span + e * (m % 3)));
            }
        }

    // What the member's checks must say about these arguments.  A size
    // agreement test is known to pass when every size is the same; otherwise
    // its outcome is left open (-204 is then allowed).
    bool sizes_equal = true;
    int first_size = 0;
    for (std::size_t i = 0; i < np; ++i)
        if (op.params[i].role == Role::Size) {
            if (!first_size) first_size = a[i].i;
            sizes_equal = sizes_equal && a[i].i == first_size;
        }
    kelStatus want = kelOk;
    bool open_mismatch = false;
    for (const kg::Group& g : op.groups) {
        bool fails = false;
        switch (g.check) {
        case Check::N:
            for (int p : g.params()) fails = fails || null[std::size_t(p)];
            break;
        case Check::C:
        case Check::Z:
            for (int p : g.params()) fails = fails || a[std::size_t(p)].i < 1;
            break;
        case Check::M:
            if (!sizes_equal) open_mismatch = true;
            break;
        case Check::O:
            if (count <= 1 || !op.array) break;
            [[fallthrough]];
        case Check::T:
            for (int p : g.params()) {
                const int s = a[std::size_t(p)].i;
                fails = fails || (s & (e - 1)) != 0 || s <= 0;
            }
            break;
        case Check::H: {
            int all = 0;
            for (int p : g.params()) all |= a[std::size_t(p)].i;
            fails = (all & (e - 1)) != 0 || all < 0;
            break;
        }
        }
        if (fails) {
            want = kg::status_of(g.check);
            break;
        }
    }
    // LoadIdentity and Copy ignore object strides at count 1, so no other
    // argument of an accepted call can be hostile beyond what the model saw.

    // Buffers: small ones for a refused call, sized from the arguments for an
    // accepted one.
    const bool refused = want != kelOk;
    if (!refused && too_big) return 0;
    std::vector<Region> reg(np);
    std::size_t total = 0;
    for (std::size_t i = 0; i < np && !refused; ++i) {
        const Role role = op.params[i].role;
        if (!kg::is_pointer(role) || null[i]) continue;
        const int io = param_of(int(i), Role::ObjStride), ir = param_of(int(i), Role::RowStride),
                  ie = param_of(int(i), Role::ElemStride), ih = param_of(int(i), Role::Shift);
        const long long obj = io >= 0 ? a[std::size_t(io)].i : 0, row = ir >= 0 ? a[std::size_t(ir)].i : 0,
                        elem = ie >= 0 ? a[std::size_t(ie)].i : e, shift = ih >= 0 ? a[std::size_t(ih)].i : 0;
        const long long objs = io >= 0 ? count : 1, rows = ir >= 0 ? big : 1;
        long long bytes = 0;
        switch (role) {
        case Role::Base:
            if (io < 0 && ir < 0 && ie < 0)
                bytes = (long long)count * big * big * e;  // plain results, objects one after another
            else
                bytes = (objs - 1) * obj + (rows - 1) * row + (big - 1) * elem + e;
            break;
        case Role::Table: bytes = shift + (objs - 1) * obj + (long long)big * big * e; break;
        case Role::List: bytes = shift + (long long)count * ((rows - 1) * row + (big - 1) * elem + e); break;
        case Role::Buffer: bytes = (long long)big * (3 * big + 5) * e; break;
        case Role::Index: bytes = (long long)(count + 1) * big * int(sizeof(int)); break;
        case Role::Bytes: bytes = sizeof(int); break;
        default: break;
        }
        if (bytes < 0 || std::size_t(bytes) > kMaxBytes) return 0;
        total += std::size_t(bytes);
        if (total > kMaxBytes) return 0;
        reg[i].size = std::size_t(bytes);
    }

    // Fill: elements from the rest of the input, index blocks with rows in range.
    const std::uint8_t* tail = r.p;
    const std::size_t tail_n = r.n;
    std::size_t cursor = 0;
    auto next = [&]() -> std::uint8_t {
        if (!tail_n) return std::uint8_t(0x70 + (cursor++ % 17));
        return tail[cursor++ % tail_n];
    };
    for (std::size_t i = 0; i < np; ++i) {
        const Role role = op.params[i].role;
        if (!kg::is_pointer(role)) continue;
        if (null[i]) {
            a[i].p = nullptr;
            continue;
        }
        Region& g = reg[i];
        if (refused) g.size = 64;
        g.bytes.reset(new unsigned char[g.size]);
        unsigned char* d = g.bytes.get();
        if (role == Role::Index) {
            int first = 1;
            for (std::size_t k = 0; k < np; ++k)
                if (op.params[k].role == Role::Size) first = std::max(1, a[k].i);
            for (std::size_t k = 0; k + sizeof(int) <= g.size; k += sizeof(int)) {
                const int v = int(next() % std::uint8_t(std::min(first, 255)));
                std::memcpy(d + k, &v, sizeof v);
            }
        } else if (e == 4) {
            for (std::size_t k = 0; k + 4 <= g.size; k += 4) {
                const float v = float(element(next()));
                std::memcpy(d + k, &v, 4);
            }
        } else {
            for (std::size_t k = 0; k + 8 <= g.size; k += 8) {
                const double v = element(next());
                std::memcpy(d + k, &v, 8);
            }
        }
        if (refused || role == Role::Base || role == Role::Buffer || role == Role::Index || role == Role::Bytes) {
            a[i].p = d;
            continue;
        }
        // Tables and lists: a table's pointer j addresses element j of object
        // 0 (elements packed); a list's pointer k addresses object k.
        const int ir = param_of(int(i), Role::RowStride), ie = param_of(int(i), Role::ElemStride);
        const long long row = ir >= 0 ? a[std::size_t(ir)].i : 0, elem = ie >= 0 ? a[std::size_t(ie)].i : e;
        const long long span = (ir >= 0 ? (big - 1) * row : 0) + (big - 1) * elem + e;
        if (role == Role::Table)
            for (int j = 0; j < big * big; ++j) g.table.push_back(d + std::ptrdiff_t(j) * e);
        else
            for (int k = 0; k < count; ++k) g.table.push_back(d + std::ptrdiff_t(k) * span);
        a[i].p = g.table.data();
    }

    std::vector<std::vector<unsigned char>> before;
    if (refused)
        for (const Region& g : reg) before.emplace_back(g.bytes.get(), g.bytes.get() + g.size);

    const kelStatus got = op.call(a.data());

    if (refused) {
        const bool either = open_mismatch && got == kelErrSizeMismatch;
        if (got != want && !either) finding(op, "refused with another status", got, want);
        for (std::size_t i = 0; i < np; ++i)
            if (reg[i].size && std::memcmp(before[i].data(), reg[i].bytes.get(), reg[i].size) != 0)
                finding(op, "wrote although refused", got, want);
    } else if (is_check_status(got) && !(open_mismatch && got == kelErrSizeMismatch)) {
        finding(op, "refused valid arguments", got, kelOk);
    }
    return 0;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) { return run(data, size); }
