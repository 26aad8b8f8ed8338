// Uses the installed library from C++: the version record, the thread count
// from kelcore, and an array call large enough to run on two threads.
#include <kelm.h>

#include <cstdio>
#include <cstring>
#include <vector>

int main()
{
    const KelLibVersion* v = kelmGetLibVersion();
    if (std::strcmp(v->libName, "libkelmv8.so.5.2") != 0) {
        std::printf("unexpected library name %s\n", v->libName);
        return 1;
    }
    kelSetNumThreads(2);

    // 5000 pairs of 3x3 matrices, rows padded to 4 elements.
    const int count = 5000, n = 3, rowStride = 4 * sizeof(kel64f), objStride = n * rowStride;
    std::vector<kel64f> a(count * 12), b(count * 12), c(count * 12, -1.0);
    for (std::size_t i = 0; i < a.size(); ++i) {
        a[i] = 0.5 * static_cast<double>(i);
        b[i] = 0.25 * static_cast<double>(i % 97);
    }
    kelStatus st = kelmAdd_mama_64f(a.data(), objStride, rowStride, sizeof(kel64f), b.data(), objStride,
                                    rowStride, sizeof(kel64f), c.data(), objStride, rowStride,
                                    sizeof(kel64f), n, n, count);
    if (st != kelOk) {
        std::printf("kelmAdd_mama_64f returned %d\n", st);
        return 1;
    }
    for (std::size_t i = 0; i < c.size(); ++i) {
        const bool padding = i % 4 == 3;
        if (c[i] != (padding ? -1.0 : a[i] + b[i])) {
            std::printf("element %zu: %g\n", i, c[i]);
            return 1;
        }
    }
    std::printf("%s %s: %d objects on %d threads\n", v->libName, v->versionText, count, kelGetNumThreads());
    return 0;
}
