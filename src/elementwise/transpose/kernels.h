// Transpose kernels: destination element (j, i) = source element (i, j), the
// source having h rows of w elements.  Elements move as bit patterns
// (unsigned integers of their size, or SSE2 integer shuffles), never as
// floating-point values.
//
// Paths, the same bits from each:
//   square orders 3 to 6   written out: the matrix is read whole, then
//                          written whole (4x4 with SSE2 shuffles when rows are
//                          contiguous);
//   contiguous elements    the strip mover: 32 source rows at a time become
//                          32 destination columns, so a strip's source lines
//                          stay in the first-level cache while each
//                          destination row segment is written in one run;
//   other descriptions     an element loop.
// Everything runs on the calling thread: transposition never starts threads.
#pragma once

#include <emmintrin.h>

#include <cstdint>
#include <type_traits>

#include "common/check.h"
#include "common/desc.h"
#include "common/dispatch.h"
#include "common/stream.h"
#include "elementwise/copy/kernels.h"
#include "kelcore.h"

namespace kelm {
namespace {

template <class V>
using ViewElem = std::remove_reference_t<decltype(std::declval<const V&>()(0, 0))>;

// --- written-out square orders ----------------------------------------------------

inline __m128i load4(Bytes p) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p)); }
template <bool Stream = false>
inline void store4(Bytes p, __m128i v)
{
    if constexpr (Stream)
        _mm_stream_si128(reinterpret_cast<__m128i*>(p), v);
    else
        _mm_storeu_si128(reinterpret_cast<__m128i*>(p), v);
}

// Order N; the 3x3 to 6x6 kernels.  Stream (4x4 with contiguous rows only)
// writes the rows with stores that bypass the cache.
template <int N, bool Stream = false, class X, class Y>
inline void ownkelmTranspose_NxN(const X& x, const Y& y)
{
    using B = ViewElem<X>;
    using Row = DenseView<B, true>;
    if constexpr (N == 4 && std::is_same_v<X, Row> && std::is_same_v<Y, Row> && sizeof(B) == 4) {
        const __m128i r0 = load4(x.p), r1 = load4(x.p + x.row), r2 = load4(x.p + 2 * x.row),
                      r3 = load4(x.p + 3 * x.row);
        const __m128i t0 = _mm_unpacklo_epi32(r0, r1), t1 = _mm_unpacklo_epi32(r2, r3);  // a0 b0 a1 b1, c0 d0 c1 d1
        const __m128i t2 = _mm_unpackhi_epi32(r0, r1), t3 = _mm_unpackhi_epi32(r2, r3);  // a2 b2 a3 b3, c2 d2 c3 d3
        store4<Stream>(y.p, _mm_unpacklo_epi64(t0, t1));
        store4<Stream>(y.p + y.row, _mm_unpackhi_epi64(t0, t1));
        store4<Stream>(y.p + 2 * y.row, _mm_unpacklo_epi64(t2, t3));
        store4<Stream>(y.p + 3 * y.row, _mm_unpackhi_epi64(t2, t3));
    } else if constexpr (N == 4 && std::is_same_v<X, Row> && std::is_same_v<Y, Row> && sizeof(B) == 8) {
        __m128i lo[4], hi[4];  // elements 0-1 and 2-3 of each source row
        for (int i = 0; i < 4; ++i) {
            lo[i] = load4(x.p + i * x.row);
            hi[i] = load4(x.p + i * x.row + 16);
        }
        store4<Stream>(y.p, _mm_unpacklo_epi64(lo[0], lo[1]));
        store4<Stream>(y.p + 16, _mm_unpacklo_epi64(lo[2], lo[3]));
        store4<Stream>(y.p + y.row, _mm_unpackhi_epi64(lo[0], lo[1]));
        store4<Stream>(y.p + y.row + 16, _mm_unpackhi_epi64(lo[2], lo[3]));
        store4<Stream>(y.p + 2 * y.row, _mm_unpacklo_epi64(hi[0], hi[1]));
        store4<Stream>(y.p + 2 * y.row + 16, _mm_unpacklo_epi64(hi[2], hi[3]));
        store4<Stream>(y.p + 3 * y.row, _mm_unpackhi_epi64(hi[0], hi[1]));
        store4<Stream>(y.p + 3 * y.row + 16, _mm_unpackhi_epi64(hi[2], hi[3]));
    } else {
        B t[N][N];
        for (int i = 0; i < N; ++i)
            for (int j = 0; j < N; ++j) t[i][j] = x(i, j);
        for (int j = 0; j < N; ++j)
            for (int i = 0; i < N; ++i) y(j, i) = t[i][j];
    }
}

// The descriptions are taken by value: the compiler then keeps their strides
// in registers instead of reloading them after every store.
// Packed 4x4 arrays larger than the cache stream their destination, whole
// 64-byte lines at a time.
template <int N, class S, class D>
KELM_WIDE void square_objects(int count, const S s, const D d)
{
    using B = typename D::Elem;
    if constexpr (N == 4 && std::is_same_v<S, Strided<B, true>> && std::is_same_v<D, S>) {
        constexpr ptrdiff_t row = 4 * sizeof(B);
        if (d.row == row && d.obj == 4 * row && aligned16(d.base) &&
            beyond_cache(2 * std::size_t(count) * std::size_t(4 * row))) {
            for (int k = 0; k < count; ++k) ownkelmTranspose_NxN<N, true>(s[k], d[k]);
            stream_fence();
            return;
        }
    }
    for (int k = 0; k < count; ++k) ownkelmTranspose_NxN<N>(s[k], d[k]);
}

// --- the strip movers ---------------------------------------------------------------

constexpr int kStripRows = 32;

// r source rows at src (row stride srcRow) into r destination columns at dst
// (row stride dstRow): the ordinary stores.
template <class B>
inline void owniTranspose_asm(Bytes src, ptrdiff_t srcRow, Bytes dst, ptrdiff_t dstRow, int r, int w)
{
    for (int j = 0; j < w; ++j) {
        B* out = &elem_at<B>(dst + j * dstRow);
        const Bytes in = src + j * ptrdiff_t(sizeof(B));
        for (int i = 0; i < r; ++i) out[i] = elem_at<B>(in + i * srcRow);
    }
}

// The same with stores that bypass the cache, then a store fence.  A call
// large next to the cache could take it; none does (see ownm_Transpose).
[[maybe_unused]] inline void owniTranspose_NT(Bytes src, ptrdiff_t srcRow, Bytes dst, ptrdiff_t dstRow, int r, int w)
{
    for (int j = 0; j < w; ++j) {
        int* out = &elem_at<int>(dst + j * dstRow);
        const Bytes in = src + j * ptrdiff_t(sizeof(int));
        for (int i = 0; i < r; ++i) _mm_stream_si32(out + i, elem_at<int>(in + i * srcRow));
    }
    _mm_sfence();
}

// One matrix of contiguous elements, strip by strip: the source advances by
// 32 rows, the destination by 32 elements.
template <class B>
inline void ownm_Transpose(const DenseView<B, true>& x, const DenseView<B, true>& y, int h, int w)
{
    for (int i0 = 0; i0 < h; i0 += kStripRows) {
        const int r = h - i0 < kStripRows ? h - i0 : kStripRows;
        owniTranspose_asm<B>(x.p + i0 * x.row, x.row, y.p + i0 * ptrdiff_t(sizeof(B)), y.row, r, w);
    }
}

// The large-call mark of a contiguous 32f array: above 131072 bytes (8 per
// element, counted in wrapping 32-bit arithmetic) the largest cache size is
// asked for, and the call is large when it exceeds three quarters of it.
// The mark is computed and not used: every matrix takes the ordinary strip
// mover.  The query to the support library is part of the call and stays.
inline void large_call_mark(int h, int w, int count)
{
    bool large = false;
    const I32 bytesMoved = I32(w) * h * count * 8;
    if (bytesMoved > 131072) {
        int cache = 0;
        kelGetMaxCacheSizeB(&cache);
        large = cache != 0 && bytesMoved > cache - cache / 4;
    }
    static_cast<void>(large);
}

template <class S, class D>
constexpr bool contiguous_pair = false;
template <class B>
constexpr bool contiguous_pair<Strided<B, true>, Strided<B, true>> = true;
template <class B>
constexpr bool contiguous_pair<List<B, true>, List<B, true>> = true;

// The general order: strips for contiguous elements, else the element loop
// (the _com worker).
template <class S, class D>
KELM_WIDE void general_objects(int count, const S s, const D d, int h, int w)
{
    for (int k = 0; k < count; ++k) {
        const auto x = s[k];
        const auto y = d[k];
        if constexpr (contiguous_pair<S, D>) {
            ownm_Transpose(x, y, h, w);
        } else {
            for (int i = 0; i < h; ++i)
                for (int j = 0; j < w; ++j) y(j, i) = x(i, j);
        }
    }
}

template <bool Array, class S, class D>
kelStatus transpose_objects(int count, const S& s, const D& d, int h, int w)
{
    if (h == w) switch (h) {
        case 3: return square_objects<3>(count, s, d), kelOk;
        case 4: return square_objects<4>(count, s, d), kelOk;
        case 5: return square_objects<5>(count, s, d), kelOk;
        case 6: return square_objects<6>(count, s, d), kelOk;
        default: break;
        }
    if constexpr (Array && std::is_same_v<S, Strided<std::uint32_t, true>>) large_call_mark(h, w, count);
    general_objects(count, s, d, h, w);
    return kelOk;
}

// The kernel: count matrices of h rows and w elements; Array marks the array
// members (whose contiguous 32f general path asks for the cache size).
template <bool Array, class S, class D>
kelStatus ownkelmTranspose(int count, const S& src, const D& dst, int h, int w)
{
    return with_unit_strides([&](const auto& s, const auto& d) { return transpose_objects<Array>(count, s, d, h, w); },
                             as_bits(src), as_bits(dst));
}

}  // namespace
}  // namespace kelm
