// Forced into every source of the fuzzer's clang build: the one GCC vector
// builtin the library uses that clang lacks.  __builtin_shuffle(a, b, mask)
// picks lane mask[i] mod 2n of the concatenation of a and b; this moves the
// same lanes one at a time, so the results are the same bits, only slower.
#pragma once
#if defined(__clang__) && defined(__cplusplus)
template <class V, class M>
inline V kelm_fuzz_shuffle(V a, V b, M mask)
{
    constexpr int n = int(sizeof(V) / sizeof(a[0]));
    V r = a;
    for (int i = 0; i < n; ++i) {
        const int k = int(mask[i]) & (2 * n - 1);
        r[i] = k < n ? a[k] : b[k - n];
    }
    return r;
}
#define __builtin_shuffle(a, b, ...) kelm_fuzz_shuffle(a, b, __VA_ARGS__)
#endif
