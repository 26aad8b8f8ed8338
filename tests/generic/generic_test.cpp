// Invariants every operation keeps, checked over the whole table:
//   - each argument check yields its status without touching operand memory
//     (the operands live in pages that fault on any access), and when two
//     checks fail the earlier group of the member's own order decides;
//   - serial and parallel runs (1 to 7 threads) give identical bits;
//   - callers on several threads at once get what one caller gets.
#include <gtest/gtest.h>
#include <setjmp.h>
#include <signal.h>
#include <sys/mman.h>

#include <algorithm>
#include <atomic>
#include <climits>
#include <cstring>
#include <functional>
#include <string>
#include <thread>

#include "../support.h"
#include "layout.h"
#include "table.h"

namespace {

using kg::Check;
using kg::Op;
using kg::Role;

// --- operands that fault on any access ----------------------------------------------

constexpr std::size_t kPage = 4096, kPages = 32;

struct Guard {
    unsigned char* base;
    Guard()
    {
        void* m = mmap(nullptr, kPage * kPages, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (m == MAP_FAILED) std::abort();
        base = static_cast<unsigned char*>(m);
        std::memset(base, 0x3C, kPage * kPages);
        mprotect(base, kPage * kPages, PROT_NONE);
    }
    ~Guard() { munmap(base, kPage * kPages); }
    void* page(std::size_t i) const { return base + kPage * (i % kPages); }
};

thread_local sigjmp_buf* tl_escape = nullptr;
thread_local void* tl_fault_addr = nullptr;

void on_fault(int sig, siginfo_t* info, void*)
{
    if (tl_escape) {
        tl_fault_addr = info->si_addr;
        siglongjmp(*tl_escape, 1);
    }
    signal(sig, SIG_DFL);
    raise(sig);
}

// Calls op, reporting an access to the guarded pages as a failure instead of dying.
bool call_guarded(const Op& op, const std::vector<kg::Arg>& a, kelStatus& st)
{
    struct sigaction sa {}, old_segv{}, old_bus{};
    sa.sa_sigaction = on_fault;
    sa.sa_flags = SA_SIGINFO | SA_NODEFER;
    sigemptyset(&sa.sa_mask);
    sigaction(SIGSEGV, &sa, &old_segv);
    sigaction(SIGBUS, &sa, &old_bus);
    sigjmp_buf escape;
    bool ok = true;
    if (sigsetjmp(escape, 1) == 0) {
        tl_escape = &escape;
        st = op.call(a.data());
    } else {
        ok = false;
    }
    tl_escape = nullptr;
    sigaction(SIGSEGV, &old_segv, nullptr);
    sigaction(SIGBUS, &old_bus, nullptr);
    return ok;
}

// Valid arguments around operands that may not be touched: every check passes.
std::vector<kg::Arg> valid_args(const Op& op, const Guard& g)
{
    std::vector<kg::Arg> a(op.params.size());
    for (std::size_t i = 0; i < a.size(); ++i) {
        switch (op.params[i].role) {
        case Role::ObjStride: a[i].i = 1024; break;
        case Role::RowStride: a[i].i = 64; break;
        case Role::ElemStride: a[i].i = op.esize; break;
        case Role::Shift: a[i].i = op.esize; break;
        case Role::Size: a[i].i = 3; break;
        case Role::Count: a[i].i = 2; break;  // object strides of some members count only above 1
        case Role::Value: a[i].d = 1.0; break;
        default: a[i].p = g.page(i); break;
        }
    }
    return a;
}

struct Fault {
    std::vector<int> params;
    std::function<void(kg::Arg&)> set;
    std::string what;
};

// The faults that each check group must catch, one per parameter and bad value.
std::vector<Fault> faults_of(const Op& op, const kg::Group& g)
{
    std::vector<Fault> out;
    auto ints = [&](std::initializer_list<int> bad) {
        for (int p : g.params())
            for (int v : bad)
                out.push_back({{p}, [v](kg::Arg& a) { a.i = v; }, std::string(op.params[p].name) + "=" + std::to_string(v)});
    };
    const int e = op.esize;
    switch (g.check) {
    case Check::N:
        for (int p : g.params()) out.push_back({{p}, [](kg::Arg& a) { a.p = nullptr; }, std::string(op.params[p].name) + "=null"});
        break;
    case Check::C:
    case Check::Z: ints({0, -1, INT_MIN}); break;
    case Check::M: {
        std::string what;
        for (int p : g.params()) what += std::string(op.params[p].name) + "=4 ";
        out.push_back({g.params(), [](kg::Arg& a) { a.i = 4; }, what});
        break;
    }
    case Check::T:
    case Check::O:
        if (e == 8)
            ints({0, -8, 2, 4, 12, INT_MIN});
        else
            ints({0, -4, 2, 6, INT_MIN});
        break;
    case Check::H:
        if (e == 8)
            ints({-8, 2, 4, INT_MIN});
        else
            ints({-4, 2, -2, INT_MIN});
        break;
    }
    return out;
}

std::vector<kg::Arg> with(std::vector<kg::Arg> a, const Fault& f)
{
    for (int p : f.params) f.set(a[std::size_t(p)]);
    return a;
}

bool overlap(const Fault& x, const Fault& y)
{
    for (int p : x.params)
        if (std::find(y.params.begin(), y.params.end(), p) != y.params.end()) return true;
    return false;
}

std::string param_name(const testing::TestParamInfo<const Op*>& info) { return info.param->name; }

std::vector<const Op*> all_ops(bool arrays_only)
{
    std::vector<const Op*> v;
    for (const Op& op : kg::ops())
        if (!arrays_only || op.array) v.push_back(&op);
    return v;
}

class Checks : public testing::TestWithParam<const Op*> {};

TEST_P(Checks, EachFaultAloneYieldsItsStatusUntouched)
{
    const Op& op = *GetParam();
    Guard g;
    const auto base = valid_args(op, g);
    kelSetNumThreads(1);
    for (const kg::Group& grp : op.groups)
        for (const Fault& f : faults_of(op, grp)) {
            kelStatus st = kelOk;
            ASSERT_TRUE(call_guarded(op, with(base, f), st)) << op.name << " " << f.what << ": operand memory touched";
            EXPECT_EQ(st, kg::status_of(grp.check)) << op.name << " " << f.what;
        }
}

TEST_P(Checks, EarlierGroupWinsOverLaterOne)
{
    const Op& op = *GetParam();
    Guard g;
    const auto base = valid_args(op, g);
    kelSetNumThreads(1);
    for (std::size_t i = 0; i < op.groups.size(); ++i)
        for (std::size_t j = i + 1; j < op.groups.size(); ++j) {
            const kelStatus want = kg::status_of(op.groups[i].check);
            if (want == kg::status_of(op.groups[j].check)) continue;
            const auto early = faults_of(op, op.groups[i]), late = faults_of(op, op.groups[j]);
            auto try_pair = [&](const Fault& x, const Fault& y) {
                if (overlap(x, y)) return;
                kelStatus st = kelOk;
                ASSERT_TRUE(call_guarded(op, with(with(base, x), y), st)) << op.name << ": operand memory touched";
                EXPECT_EQ(st, want) << op.name << " " << x.what << " with " << y.what;
            };
            for (const Fault& y : late) try_pair(early.front(), y);
            for (const Fault& x : early) try_pair(x, late.back());
        }
}

INSTANTIATE_TEST_SUITE_P(Generic, Checks, testing::ValuesIn(all_ops(false)), param_name);

// --- serial against parallel ------------------------------------------------------------

class Threads : public testing::TestWithParam<const Op*> {};

bool has_elem_strides(const Op& op)
{
    for (const kg::Param& p : op.params)
        if (p.role == Role::ElemStride) return true;
    return false;
}

TEST_P(Threads, SerialAndParallelRunsGiveTheSameBits)
{
    const Op& op = *GetParam();
    const int before = kelGetNumThreads();
    // Counts above every member's threshold for going parallel; odd, so the
    // blocks are uneven for most thread counts.
    for (kg::Shape sh : {kg::Shape{4, 4001}, kg::Shape{7, 2503}})
        for (bool wide : {false, true}) {
            if (wide && !has_elem_strides(op)) continue;
            sh.wide = wide;
            kelSetNumThreads(1);
            kg::Bound b(op, sh);
            b.reset();
            const kelStatus want = b.call();
            EXPECT_EQ(want, kelOk) << op.name << " s=" << sh.s;
            const auto bits = b.results();
            for (int n = 2; n <= 7; ++n) {
                kelSetNumThreads(n);
                b.reset();
                EXPECT_EQ(b.call(), want) << op.name << " s=" << sh.s << " wide=" << wide << " threads=" << n;
                EXPECT_TRUE(b.results() == bits) << op.name << " s=" << sh.s << " wide=" << wide << " threads=" << n;
            }
            // The count is above the member's threshold: where the driver cannot
            // fork it does its first block only, so the results differ.  (Data
            // movement and transposition never start threads.)
            if (std::strcmp(op.family, "copy") != 0 && std::strcmp(op.family, "transpose") != 0) {
                b.reset();
                bool usable = false;
                kt::run_in_busy_team([&] { b.call(); }, usable);
                if (usable) {
                    EXPECT_FALSE(b.results() == bits) << op.name << " s=" << sh.s << " wide=" << wide << ": did not go parallel";
                }
            }
        }
    kelSetNumThreads(before);
}

INSTANTIATE_TEST_SUITE_P(Generic, Threads, testing::ValuesIn(all_ops(true)), param_name);

// --- concurrent callers ---------------------------------------------------------------------

TEST(GenericConcurrency, CallersOnSeveralThreadsGetWhatOneCallerGets)
{
    const int before = kelGetNumThreads();
    kelSetNumThreads(2);
    const auto& ops = kg::ops();
    const kg::Shape sh{5, 301};
    std::vector<std::vector<unsigned char>> want(ops.size());
    std::vector<kelStatus> want_st(ops.size());
    for (std::size_t i = 0; i < ops.size(); ++i) {
        kg::Bound b(ops[i], sh);
        want_st[i] = b.call();
        want[i] = b.results();
    }
    constexpr int kCallers = 4;
    std::atomic<int> mismatches{0};
    std::vector<std::string> first_bad(kCallers);
    std::vector<std::thread> callers;
    for (int c = 0; c < kCallers; ++c)
        callers.emplace_back([&, c] {
            // each caller walks the table from its own starting point
            for (std::size_t n = 0; n < ops.size(); ++n) {
                const std::size_t i = (n + std::size_t(c) * ops.size() / kCallers) % ops.size();
                kg::Bound b(ops[i], sh);
                if (b.call() != want_st[i] || b.results() != want[i]) {
                    if (mismatches++ == 0 || first_bad[std::size_t(c)].empty()) first_bad[std::size_t(c)] = ops[i].name;
                }
            }
        });
    for (auto& t : callers) t.join();
    kelSetNumThreads(before);
    EXPECT_EQ(mismatches.load(), 0) << first_bad[0] << " " << first_bad[1] << " " << first_bad[2] << " " << first_bad[3];
}

// The table covers what the headers declare; the symbol test guards the names.
TEST(GenericTable, CoversEveryOperationOnce)
{
    const auto& ops = kg::ops();
    EXPECT_EQ(ops.size(), 787u);  // with kelmGetLibVersion, the 788 exported operations
    for (const Op& op : ops) {
        EXPECT_EQ(kg::find(op.name), &op) << op.name;
        EXPECT_FALSE(op.groups.empty()) << op.name;
        EXPECT_EQ(op.groups.front().check == Check::N || op.groups.front().check == Check::Z, true) << op.name;
    }
}


}  // namespace
