// Parallel execution over object arrays: the block split, per-thread
// workspace, the one-thread region inside a caller's active region (which
// also lets a test see whether a call went parallel), thread-count
// invariance and concurrent callers.
#include <omp.h>

#include <algorithm>
#include <mutex>
#include <thread>

#include "common/parallel.h"
#include "support.h"

namespace {

struct Seen {
    int t, first, mine;
    void* ws;
};

std::vector<Seen> run_split(int n, int count, std::size_t perThread, void* callerBuffer)
{
    kt::Threads threads(n);
    std::vector<Seen> seen;
    std::mutex m;
    const kelStatus s = kelm::split_with_workspace(count, perThread, callerBuffer, [&](int first, int mine, void* ws) {
        std::lock_guard<std::mutex> lock(m);
        seen.push_back({omp_get_thread_num(), first, mine, ws});
        if (ws) std::memset(ws, 0x5A, perThread);  // the slice must be usable in full
        return kelOk;
    });
    EXPECT_EQ(s, kelOk);
    std::sort(seen.begin(), seen.end(), [](const Seen& a, const Seen& b) { return a.first < b.first; });
    return seen;
}

TEST(ParallelSplit, FourThreadsTakeThreeThreeTwoTwo)
{
    const auto seen = run_split(4, 10, 0, nullptr);
    ASSERT_EQ(seen.size(), 4u);
    const int first[] = {0, 3, 6, 8}, mine[] = {3, 3, 2, 2};
    for (int t = 0; t < 4; ++t) {
        EXPECT_EQ(seen[t].t, t);
        EXPECT_EQ(seen[t].first, first[t]);
        EXPECT_EQ(seen[t].mine, mine[t]);
    }
}

TEST(ParallelSplit, SmallArraysAndOneThreadStayOnTheCallingThread)
{
    char buffer[64];
    for (auto [n, count] : {std::pair{4, 3}, {1, 100}, {0, 100}, {-2, 100}}) {
        const auto seen = run_split(n, count, 16, buffer);
        ASSERT_EQ(seen.size(), 1u) << n << " threads, " << count << " objects";
        EXPECT_EQ(seen[0].first, 0);
        EXPECT_EQ(seen[0].mine, count);
        EXPECT_EQ(seen[0].ws, buffer);  // serial runs use the caller's buffer
    }
}

TEST(ParallelSplit, EachThreadGetsItsOwnWorkspaceSlice)
{
    char buffer[64];
    const std::size_t per = 40;
    const auto seen = run_split(3, 7, per, buffer);
    ASSERT_EQ(seen.size(), 3u);
    const char* block = static_cast<char*>(seen[0].ws);
    for (const Seen& s : seen) {
        EXPECT_NE(s.ws, buffer);  // parallel runs never touch the caller's buffer
        EXPECT_EQ(static_cast<char*>(s.ws) - block, std::ptrdiff_t(s.t) * std::ptrdiff_t(per));
    }
}

// Runs f inside an active two-thread region where no further level may fork,
// from one of its threads: a parallel call then processes its first block only.
template <class F>
void inside_callers_region(F&& f)
{
    const int saved = omp_get_max_active_levels();
    omp_set_max_active_levels(1);
#pragma omp parallel num_threads(2)
    {
#pragma omp single
        f();
    }
    omp_set_max_active_levels(saved);
}

constexpr float kUnwritten = -777.0f;

// How many leading objects of dst an Add call wrote (objects of size elems).
int written(const std::vector<float>& dst, int elems)
{
    int k = 0;
    while (k * elems < int(dst.size()) && dst[std::size_t(k * elems)] != kUnwritten) ++k;
    for (std::size_t i = std::size_t(k * elems); i < dst.size(); ++i)
        if (dst[i] != kUnwritten) return -1;  // not a prefix
    return k;
}

// Whether a call went parallel, seen through the nested case with 2 threads.
template <class Call>
bool goes_parallel(int count, int elems, Call&& call)
{
    std::vector<float> dst(std::size_t(count) * std::size_t(elems), kUnwritten);
    kt::Threads threads(2);
    int got = 0;
    inside_callers_region([&] {
        EXPECT_EQ(call(dst.data()), kelOk);
        got = written(dst, elems);
    });
    EXPECT_TRUE(got == count || got == (count + 1) / 2) << got << " of " << count;
    return got != count;
}

TEST(ParallelNested, OnlyTheFirstBlockIsProcessed)
{
    const int len = 200, count = 10;
    std::vector<float> a(std::size_t(len * count), 1.0f), b(a), d(a.size(), kUnwritten);
    kt::Threads threads(4);
    inside_callers_region([&] {
        EXPECT_EQ(kelmAdd_vava_32f(a.data(), len * 4, 4, b.data(), len * 4, 4, d.data(), len * 4, 4, len, count), kelOk);
    });
    EXPECT_EQ(written(d, len), 3);  // thread 0 of 4 owns objects 0..2
}

TEST(ParallelThresholds, VectorArraysCompareStrictly)
{
    std::vector<float> src(4 * 2400, 1.0f), vals(2400, 2.0f);
    std::vector<const float*> list(2400, src.data());
    auto vav = [&](int count) {
        return goes_parallel(count, 4, [&](float* d) {
            return kelmAdd_vav_32f(src.data(), 16, 4, src.data(), 4, d, 16, 4, 4, count);
        });
    };
    EXPECT_TRUE(vav(600));  // 4 * (2*600 + 1) = 4804
    EXPECT_FALSE(vav(599));  // 4796
    auto cva = [&](int count) {  // the measure leaves len out
        return goes_parallel(count, 1, [&](float* d) { return kelmSub_cva_32f(src.data(), 4, 4, 3.0f, d, 4, 4, 1, count); });
    };
    EXPECT_TRUE(cva(2400));
    EXPECT_FALSE(cva(2399));
    auto vca_p = [&](int count) {  // len + count + len*count > 1500
        const float* table[1] = {src.data()};
        return goes_parallel(count, 1, [&](float* d) {
            float* dt[1] = {d};
            return kelmAdd_vca_32f_P(table, 0, vals.data(), 4, dt, 0, 4, 1, count);
        });
    };
    EXPECT_TRUE(vca_p(750));   // 1 + 750 + 750 = 1501
    EXPECT_FALSE(vca_p(749));  // 1499
    auto vava = [&](int count) {
        return goes_parallel(count, 16, [&](float* d) {
            return kelmAdd_vava_32f(src.data(), 64, 4, src.data(), 64, 4, d, 64, 4, 16, count);
        });
    };
    EXPECT_FALSE(vava(100));  // 3 * 16 * 100 = 4800 exactly: strict comparison
    EXPECT_TRUE(vava(101));
}

TEST(ParallelThresholds, MatrixArraysCompareWithGreaterOrEqual)
{
    const int most = 200;
    std::vector<float> src(std::size_t(9 * most * 2), 1.0f);
    auto mam = [&](int count, int dstElem) {
        return goes_parallel(count, 9 * dstElem / 4, [&](float* d) {
            return kelmAdd_mam_32f(src.data(), 36, 12, 4, src.data(), 12, 4, d, 9 * dstElem, 3 * dstElem, dstElem, 3, 3,
                                   count);
        });
    };
    EXPECT_TRUE(mam(167, 4));   // 9 * 335 = 3015 >= 3000
    EXPECT_FALSE(mam(166, 4));  // 2997
    EXPECT_TRUE(mam(111, 8));   // 9 * 223 = 2007 >= 2000 on the general-stride path
    EXPECT_FALSE(mam(110, 8));  // 1989
    auto mama = [&](int count) {
        return goes_parallel(count, 4, [&](float* d) {
            return kelmSub_mama_32f(src.data(), 16, 8, 4, src.data(), 16, 8, 4, d, 16, 8, 4, 2, 2, count);
        });
    };
    EXPECT_TRUE(mama(250));   // 3 * 4 * 250 = 3000 exactly: greater-or-equal
    EXPECT_FALSE(mama(249));
}

// Calls a few members at counts around their thresholds with thread counts
// 0..7 and compares every result bit for bit with the one-thread result.
TEST(ParallelResults, IndependentOfTheThreadCount)
{
    const int len = 4, most = 1300;
    std::vector<double> a(std::size_t(len * most)), b(a.size());
    for (std::size_t i = 0; i < a.size(); ++i) {
        a[i] = std::sin(double(i)) * 1e3;
        b[i] = std::cos(double(i) * 0.7) / 3.0;
    }
    auto run = [&](int threads, int count) {
        kt::Threads n(threads);
        std::vector<double> d1(std::size_t(len * count)), d2(d1.size()), d3(d1.size());
        EXPECT_EQ(kelmSub_vava_64f(a.data(), 32, 8, b.data(), 32, 8, d1.data(), 32, 8, len, count), kelOk);
        EXPECT_EQ(kelmAdd_tama_64f(a.data(), 32, 16, 8, b.data(), 32, 16, 8, d2.data(), 32, 16, 8, 2, 2, count), kelOk);
        const std::size_t objects = std::size_t(count);
        std::vector<const double*> la(objects), lb(objects);
        std::vector<double*> ld(objects);
        for (int k = 0; k < count; ++k) {
            la[std::size_t(k)] = &a[std::size_t(len * (count - 1 - k))];
            lb[std::size_t(k)] = &b[std::size_t(len * k)];
            ld[std::size_t(k)] = &d3[std::size_t(len * k)];
        }
        EXPECT_EQ(kelmSub_mata_64f_L(la.data(), 0, 16, 8, lb.data(), 0, 16, 8, ld.data(), 0, 16, 8, 2, 2, count), kelOk);
        d1.insert(d1.end(), d2.begin(), d2.end());
        d1.insert(d1.end(), d3.begin(), d3.end());
        return d1;
    };
    // 3*4*count > 1400 from 117 (vava, strided 64f); 3*4*count >= 2000 from 167.
    for (int count : {3, 10, 116, 117, 166, 167, 1299}) {
        const auto reference = run(1, count);
        for (int threads : {0, 2, 3, 4, 7}) {
            const auto got = run(threads, count);
            ASSERT_EQ(std::memcmp(got.data(), reference.data(), got.size() * sizeof(double)), 0)
                << threads << " threads, " << count << " objects";
        }
    }
}

TEST(ParallelResults, ConcurrentCallersGetTheirOwnResults)
{
    const int len = 16, count = 4000;
    kt::Threads n(2);
    std::vector<std::thread> callers;
    std::vector<int> failures(4, 0);
    for (int c = 0; c < 4; ++c)
        callers.emplace_back([&, c] {
            std::vector<float> a(std::size_t(len * count)), d(a.size());
            for (std::size_t i = 0; i < a.size(); ++i) a[i] = float(i % 1000) + float(c);
            for (int rep = 0; rep < 20; ++rep) {
                if (kelmAdd_vac_32f(a.data(), len * 4, 4, float(rep), d.data(), len * 4, 4, len, count) != kelOk)
                    ++failures[std::size_t(c)];
                for (std::size_t i = 0; i < a.size(); ++i)
                    if (d[i] != a[i] + float(rep)) {
                        ++failures[std::size_t(c)];
                        break;
                    }
            }
        });
    for (auto& t : callers) t.join();
    for (int c = 0; c < 4; ++c) EXPECT_EQ(failures[std::size_t(c)], 0) << "caller " << c;
}

}  // namespace
