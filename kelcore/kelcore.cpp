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

KELCORE_API int kelGetMaxCacheSizeB(int* size)
{
    if (!size) return -8;
    long best = 0;
#ifdef _SC_LEVEL1_DCACHE_SIZE
    const int names[] = {_SC_LEVEL1_DCACHE_SIZE, _SC_LEVEL2_CACHE_SIZE, _SC_LEVEL3_CACHE_SIZE,
                         _SC_LEVEL4_CACHE_SIZE};
    for (int name : names) {
        long v = sysconf(name);
        if (v > best) best = v;
    }
#endif
    // Some C libraries do not answer sysconf; the kernel's cache description does.
    const bool askKernel = best == 0;
    for (int index = 0; askKernel && index < 8; ++index) {
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
    *size = best > 0x7fffffffL ? 0x7fffffff : static_cast<int>(best);
    return 0;
}

}  // extern "C"

namespace {
// The default team size of the OpenMP runtime, read once at load.
struct LoadTimeThreadCount {
    LoadTimeThreadCount() { kelSetNumThreads(omp_get_max_threads()); }
} const loadTimeThreadCount;
}  // namespace
