// Vector types for the product kernels, in the compiler's own vector
// notation rather than instruction intrinsics, so that one source compiles to
// SSE2 for the baseline clone and to 256-bit AVX for the AVX2 clone of a
// KELM_WIDE kernel.  Every operation is element-wise IEEE arithmetic (one
// rounding per multiply and per add; the build never contracts them), so a
// lane computes exactly what the scalar code would.
#pragma once

#include <cstddef>
#include <type_traits>
#include <utility>

// Eight-lane values only live inside inlined code, never across a call
// boundary between clones, so the ABI note about them does not apply.
#pragma GCC diagnostic ignored "-Wpsabi"

namespace kelm {
namespace vx {

typedef float f4 __attribute__((vector_size(16)));
typedef float f8 __attribute__((vector_size(32)));
typedef double d2 __attribute__((vector_size(16)));
typedef double d4 __attribute__((vector_size(32)));

// The first W elements at p into a vector of V (W <= lanes); the other lanes
// are zero.  Reads only W elements.
template <class V, int W, class T, std::size_t... I>
inline V load_lanes(const T* p, std::index_sequence<I...>)
{
    return V{(I < std::size_t(W) ? p[I] : T(0))...};
}
template <class V, int W, class T>
inline V load(const T* p)
{
    constexpr std::size_t lanes = sizeof(V) / sizeof(T);
    if constexpr (W == int(lanes)) {
        V v;
        __builtin_memcpy(&v, p, sizeof(V));
        return v;
    } else {
        return load_lanes<V, W>(p, std::make_index_sequence<lanes>{});
    }
}

// Stores the first W lanes of v at p.
template <int W, class V, class T>
inline void store(T* p, const V& v)
{
    __builtin_memcpy(p, &v, W * sizeof(T));
}

// The two halves of an eight-lane float vector.
inline f4 lo(f8 v) { return __builtin_shufflevector(v, v, 0, 1, 2, 3); }
inline f4 hi(f8 v) { return __builtin_shufflevector(v, v, 4, 5, 6, 7); }
inline f8 join(f4 a, f4 b) { return __builtin_shufflevector(a, b, 0, 1, 2, 3, 4, 5, 6, 7); }
inline f8 twice(f4 a) { return __builtin_shufflevector(a, a, 0, 1, 2, 3, 0, 1, 2, 3); }
// Lane K of each half, spread over that half.
template <int K>
inline f8 splat_halves(f8 v)
{
    return __builtin_shufflevector(v, v, K, K, K, K, 4 + K, 4 + K, 4 + K, 4 + K);
}
template <int K>
inline f4 splat(f4 v)
{
    return __builtin_shufflevector(v, v, K, K, K, K);
}

// 4x4 transposition of four rows, by shuffles: for f4 and d4 across the
// whole vectors, for f8 within each half on its own (the low halves of a..d
// form one 4x4 block, the high halves another).  It is its own inverse, so
// the same call turns rows of objects into lanes and lanes back into rows.
inline void transpose4(f8& a, f8& b, f8& c, f8& d)
{
    const f8 t0 = __builtin_shufflevector(a, b, 0, 8, 1, 9, 4, 12, 5, 13);
    const f8 t1 = __builtin_shufflevector(a, b, 2, 10, 3, 11, 6, 14, 7, 15);
    const f8 t2 = __builtin_shufflevector(c, d, 0, 8, 1, 9, 4, 12, 5, 13);
    const f8 t3 = __builtin_shufflevector(c, d, 2, 10, 3, 11, 6, 14, 7, 15);
    a = __builtin_shufflevector(t0, t2, 0, 1, 8, 9, 4, 5, 12, 13);
    b = __builtin_shufflevector(t0, t2, 2, 3, 10, 11, 6, 7, 14, 15);
    c = __builtin_shufflevector(t1, t3, 0, 1, 8, 9, 4, 5, 12, 13);
    d = __builtin_shufflevector(t1, t3, 2, 3, 10, 11, 6, 7, 14, 15);
}

inline void transpose4(f4& a, f4& b, f4& c, f4& d)
{
    const f4 t0 = __builtin_shufflevector(a, b, 0, 4, 1, 5), t1 = __builtin_shufflevector(a, b, 2, 6, 3, 7);
    const f4 t2 = __builtin_shufflevector(c, d, 0, 4, 1, 5), t3 = __builtin_shufflevector(c, d, 2, 6, 3, 7);
    a = __builtin_shufflevector(t0, t2, 0, 1, 4, 5);
    b = __builtin_shufflevector(t0, t2, 2, 3, 6, 7);
    c = __builtin_shufflevector(t1, t3, 0, 1, 4, 5);
    d = __builtin_shufflevector(t1, t3, 2, 3, 6, 7);
}

inline void transpose4(d4& a, d4& b, d4& c, d4& d)
{
    const d4 t0 = __builtin_shufflevector(a, b, 0, 4, 2, 6), t1 = __builtin_shufflevector(a, b, 1, 5, 3, 7);
    const d4 t2 = __builtin_shufflevector(c, d, 0, 4, 2, 6), t3 = __builtin_shufflevector(c, d, 1, 5, 3, 7);
    a = __builtin_shufflevector(t0, t2, 0, 1, 4, 5);
    b = __builtin_shufflevector(t1, t3, 0, 1, 4, 5);
    c = __builtin_shufflevector(t0, t2, 2, 3, 6, 7);
    d = __builtin_shufflevector(t1, t3, 2, 3, 6, 7);
}

template <class V>
inline void transpose4(V (&r)[4])
{
    transpose4(r[0], r[1], r[2], r[3]);
}

// f(std::integral_constant<int, I>) for I = Begin .. End - 1, written out.
// Always inlined: a copy compiled out of line would be the baseline one, and
// the vectors it carries would pass through memory.
template <int Begin, int End, class F>
inline __attribute__((always_inline)) void unrolled(F&& f)
{
    if constexpr (Begin < End) {
        f(std::integral_constant<int, Begin>{});
        unrolled<Begin + 1, End>(f);
    }
}

}  // namespace vx
}  // namespace kelm
