// Streaming stores for destinations larger than the last-level cache.
//
// When a call's arrays (sources and destination together) cannot stay in
// cache, the destination is written with non-temporal stores: its lines go
// to memory without being read first, which saves a quarter of the memory
// traffic of a sum and a third of a copy's.  Every element is still written
// once, with the same value, in the same order; only the route to memory
// differs.  Smaller calls keep ordinary stores: their results are likely
// read again soon, from the cache.
#pragma once

#include <emmintrin.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "common/vectors.h"
#include "kelcore.h"

namespace kelm {

// True when a call whose arrays span bytes in all exceeds the machine's
// largest cache.  Below 2 MB the support library is not even asked.
inline bool beyond_cache(std::size_t bytes)
{
    if (bytes <= (std::size_t(1) << 21)) return false;
    int cache = 0;
    kelGetMaxCacheSizeB(&cache);
    return cache > 0 && bytes > std::size_t(cache);
}

// True when p lies on a 16-byte boundary, the alignment a streaming store needs.
template <class T>
inline bool aligned16(const T* p)
{
    return (reinterpret_cast<std::uintptr_t>(p) & 15) == 0;
}

// True when p lies on a boundary of its element size, so that whole
// elements lead up to the next 16-byte boundary.
template <class T>
inline bool aligned_to_elements(const T* p)
{
    return (reinterpret_cast<std::uintptr_t>(p) % sizeof(T)) == 0;
}

// Writes 64 bytes of values r to the 16-byte aligned d, bypassing the cache.
template <class T>
inline void stream64(T* d, const T* r)
{
    const __m128i* from = reinterpret_cast<const __m128i*>(r);
    __m128i* to = reinterpret_cast<__m128i*>(d);
    const __m128i v0 = _mm_loadu_si128(from), v1 = _mm_loadu_si128(from + 1);
    const __m128i v2 = _mm_loadu_si128(from + 2), v3 = _mm_loadu_si128(from + 3);
    _mm_stream_si128(to, v0);
    _mm_stream_si128(to + 1, v1);
    _mm_stream_si128(to + 2, v2);
    _mm_stream_si128(to + 3, v3);
}

// Writes the 16 bytes of v to the 16-byte aligned d, bypassing the cache.
template <class T, class V>
inline void stream16(T* d, const V& v)
{
    static_assert(sizeof(V) == 16);
    __m128i bits;
    __builtin_memcpy(&bits, &v, 16);
    _mm_stream_si128(reinterpret_cast<__m128i*>(d), bits);
}

// Makes the streamed lines visible before anything stored after it.
inline void stream_fence() { _mm_sfence(); }

// A 16-byte vector of the element type.
template <class T>
using Quad = std::conditional_t<std::is_same_v<T, float>, vx::f4, vx::d2>;

// Streams elements e, e + 1, ... of d in 64-byte blocks while whole blocks
// remain below n, then fences; quarter(i) gives the 16-byte vector of
// elements i, i + 1, ...  d + e must lie on a 16-byte boundary.  Returns the
// first element not written.
template <class T, class Quarter>
inline std::ptrdiff_t stream_blocks(T* d, std::ptrdiff_t e, std::ptrdiff_t n, const Quarter& quarter)
{
    constexpr int L = int(16 / sizeof(T));
    for (; e + 4 * L <= n; e += 4 * L) {
        const Quad<T> r[4] = {quarter(e), quarter(e + L), quarter(e + 2 * L), quarter(e + 3 * L)};
        stream64(d + e, reinterpret_cast<const T*>(r));
    }
    stream_fence();
    return e;
}

}  // namespace kelm
