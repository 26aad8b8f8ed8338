// The support library: the thread count that array operations read at every
// call, and the size of the largest cache of the machine.
#include "kelcore.h"

#include <omp.h>
#include <unistd.h>

#include <cstdio>

extern "C" {

KELCORE_API int threads_omp_of_n_kel = 1;

KELCORE_API int kelSetNumThreads(int n)
{
    threads_omp_of_n_kel = n < 1 ? 1 : n;
    return threads_omp_of_n_kel;
}

KELCORE_API int kelGetNumThreads(void) { return threads_omp_of_n_kel; }

}  // extern "C"

namespace {

// The largest cache that the first processor uses, from the kernel's
// description of it.  A virtual machine's C library may instead report the
// sum of every core complex's last-level cache (ten times what one core can
// use, seen on a 32 MB part), so the kernel's answer comes first and the C
// library's only where the kernel has none.
long largest_cache_bytes()
{
    long best = 0;
    for (int index = 0; index < 8; ++index) {
        char path[96];
        std::snprintf(path, sizeof path, "/sys/devices/system/cpu/cpu0/cache/index%d/size", index);
        if (std::FILE* f = std::fopen(path, "r")) {
            long v = 0;
            char unit = 0;
            if (std::fscanf(f, "%ld%c", &v, &unit) >= 1) {
                if (unit == 'K') v *= 1024;
                if (unit == 'M') v *= 1024 * 1024;
                if (v > best) best = v;
            }
            std::fclose(f);
        }
    }
#ifdef _SC_LEVEL1_DCACHE_SIZE
    const int names[] = {_SC_LEVEL1_DCACHE_SIZE, _SC_LEVEL2_CACHE_SIZE, _SC_LEVEL3_CACHE_SIZE,
                         _SC_LEVEL4_CACHE_SIZE};
    for (int name : names) {
        if (best > 0) break;
        long v = sysconf(name);
        if (v > best) best = v;
    }
#endif
    return best > 0x7fffffffL ? 0x7fffffffL : best;
}

}  // namespace

extern "C" {

// Read once: array operations ask at every large call, and the machine's
// caches do not change while a program runs.
KELCORE_API int kelGetMaxCacheSizeB(int* size)
{
    if (!size) return -8;
    static const int bytes = static_cast<int>(largest_cache_bytes());
    *size = bytes;
    return 0;
}

}  // extern "C"

namespace {
// The default team size of the OpenMP runtime, read once at load.
struct LoadTimeThreadCount {
    LoadTimeThreadCount() { kelSetNumThreads(omp_get_max_threads()); }
} const loadTimeThreadCount;
}  // namespace
