// The one parallel driver behind every ownOMP_ function.
//
// split(count, body) runs body(first, mine) -> kelStatus over the whole array:
// on the calling thread as body(0, count) when the thread count n is at most
// 1 or count < n; otherwise in one OpenMP region of n threads, thread t taking
// the contiguous block that starts at t*base + min(t, rem) (base = count / n,
// rem = count % n; the first rem threads take one object more).  The first
// non-kelOk status to reach the library's critical section is returned.
//
// When the runtime cannot fork (the caller is inside an active region and no
// further level is allowed) the region runs as a team of one: thread 0 does
// its own block only and the rest of the array is left unwritten.  That is
// the library's documented behaviour; callers inside their own parallel
// regions set the thread count to 1.
//
// split_with_workspace() is the same for kernels that need scratch memory:
// the serial path hands body the caller's buffer; the parallel path allocates
// n slices of perThread bytes through the OpenMP allocator, gives slice t to
// thread t and frees the block after the region.  Should that allocation fail,
// the call runs on the calling thread with the caller's buffer (same results).
#pragma once

#include <omp.h>

#include <cstddef>

#include "kelcore.h"
#include "kelm.h"

namespace kelm {

struct Block {
    int first, mine;
};

inline Block block_of(int t, int base, int rem)
{
    return {t * base + (t < rem ? t : rem), base + (t < rem ? 1 : 0)};
}

inline void merge_status(kelStatus& shared, kelStatus mine)
{
#pragma omp critical
    {
        if (shared == kelOk) shared = mine;
    }
}

inline bool runtime_allows_fork() { return omp_get_active_level() < omp_get_max_active_levels(); }

template <class Body>
kelStatus split_with_workspace(int count, std::size_t perThread, void* callerBuffer, Body&& body)
{
    const int n = threads_omp_of_n_kel;
    if (n <= 1 || count < n) return body(0, count, callerBuffer);
    const int base = count / n, rem = count % n;
    const bool fork = runtime_allows_fork();
    char* block = nullptr;
    if (perThread > 0) {
        block = static_cast<char*>(omp_alloc(perThread * std::size_t(n), omp_default_mem_alloc));
        if (!block) return body(0, count, callerBuffer);
    }
    kelStatus status = kelOk;
#pragma omp parallel num_threads(fork ? n : 1)
    {
        const int t = omp_get_thread_num();
        const Block b = block_of(t, base, rem);
        merge_status(status, body(b.first, b.mine, block ? block + std::size_t(t) * perThread : nullptr));
    }
    if (block) omp_free(block, omp_default_mem_alloc);
    return status;
}

template <class Body>
kelStatus split(int count, Body&& body)
{
    return split_with_workspace(count, 0, nullptr,
                                [&](int first, int mine, void*) { return body(first, mine); });
}

// Moves every description of an array call to its block: split_over(count,
// kernel, d...) calls kernel(mine, d.from(first)...) in each block.
template <class Kernel, class... D>
kelStatus split_over(int count, Kernel&& kernel, const D&... d)
{
    return split(count, [&](int first, int mine) { return kernel(mine, d.from(first)...); });
}

}  // namespace kelm
