// Data movement kernels (Copy, Extract, LoadIdentity).  Everything runs on
// the calling thread, object after object, row after row, element after
// element.
//
// Elements move as unsigned integers of their size, never as floating-point
// values: a load into an x87 register would quieten a signalling NaN on
// 32-bit x86, and the callers are promised the very bits they stored.
#pragma once

#include <cstdint>
#include <cstring>
#include <type_traits>

#include "common/check.h"
#include "common/desc.h"
#include "common/dispatch.h"
#include "common/stream.h"

namespace kelm {

// The unsigned integer that carries an element of T.
template <class T>
using BitsOf = std::conditional_t<sizeof(T) == 4, std::uint32_t, std::uint64_t>;

// The same description, its elements seen as bit patterns.
template <class T, bool U>
Strided<BitsOf<T>, U> as_bits(const Strided<T, U>& s) { return {s.base, s.obj, s.row, s.elem}; }
template <class T>
Pointers<BitsOf<T>> as_bits(const Pointers<T>& p) { return {p.ptrs, p.shift, p.obj, p.w}; }
template <class T, bool U>
List<BitsOf<T>, U> as_bits(const List<T, U>& l) { return {l.list, l.shift, l.row, l.elem}; }
template <class A>
auto as_bits(const Transposed<A>& t) { return Transposed<decltype(as_bits(t.a))>{as_bits(t.a)}; }

// Object strides that only matter when there is more than one object (Copy
// and LoadIdentity accept any object stride with a count of 1).
inline kelStatus when_several(int count, kelStatus objectStrides) { return count > 1 ? objectStrides : kelOk; }

// A dense buffer of count objects of h rows of w elements, back to back (the
// destination of Extract).
template <class T>
Strided<T, true> dense(T* p, int h, int w)
{
    const ptrdiff_t row = ptrdiff_t(w) * ptrdiff_t(sizeof(T));
    return {bytes(p), row * h, row, ptrdiff_t(sizeof(T))};
}

// A source as the operation uses it: stored transposed (TR) or as it is.
template <bool TR, class D>
auto used(const D& d)
{
    if constexpr (TR)
        return Transposed<D>{d};
    else
        return d;
}

namespace {

// --- contiguous runs ------------------------------------------------------------
//
// When the source and the destination occupy disjoint address ranges, no
// store can change a later load, so copying a row (or a run of packed rows or
// objects) at once gives the bits of the element-by-element copy; objects
// still go in increasing order, so even destination objects that overlap each
// other end with the last object's elements.  Overlapping ranges take the
// element loop.

struct Extent {
    std::uintptr_t lo, hi;  // [lo, hi)
};

// Address arithmetic in uintptr_t: a valid call's extent fits the address
// space even where a signed product of its strides would not.  With one
// object the object stride (never checked then) plays no part.
template <class B>
Extent extent(const Strided<B, true>& s, int count, int h, int w)
{
    const std::uintptr_t lo = reinterpret_cast<std::uintptr_t>(s.base);
    const std::uintptr_t last = (count > 1 ? std::uintptr_t(count - 1) * std::uintptr_t(s.obj) : 0) +
                                std::uintptr_t(h - 1) * std::uintptr_t(s.row) + std::uintptr_t(w - 1) * sizeof(B);
    return {lo, lo + last + sizeof(B)};
}

inline bool disjoint(Extent a, Extent b) { return a.hi <= b.lo || b.hi <= a.lo; }

template <class B>
inline void copy_run(B* __restrict d, const B* __restrict s, ptrdiff_t n)
{
    for (ptrdiff_t e = 0; e < n; ++e) d[e] = s[e];
}

// The same copy with streaming stores from the first 16-byte boundary of the
// destination on.
template <class B>
inline void copy_run_streaming(B* __restrict d, const B* __restrict s, ptrdiff_t n)
{
    constexpr int K = 64 / int(sizeof(B));
    ptrdiff_t e = 0;
    for (; e < n && !aligned16(d + e); ++e) d[e] = s[e];
    for (; e + K <= n; e += K) stream64(d + e, s + e);
    for (; e < n; ++e) d[e] = s[e];
    stream_fence();
}

// Copies by runs when it may; false leaves the work to the element loop.
template <class B>
KELM_WIDE bool copy_runs(int count, const Strided<B, true> s, const Strided<B, true> d, int h, int w)
{
    if (!disjoint(extent(s, count, h, w), extent(d, count, h, w))) return false;
    const ptrdiff_t rowBytes = ptrdiff_t(w) * ptrdiff_t(sizeof(B)), objBytes = rowBytes * h;
    const bool rowsPacked = h == 1 || (s.row == rowBytes && d.row == rowBytes);
    if (rowsPacked && (count == 1 || (s.obj == objBytes && d.obj == objBytes))) {
        // One run: ordinary vector stores while source and destination fit
        // the cache, streaming stores beyond it.
        const ptrdiff_t n = ptrdiff_t(count) * h * w;
        if (beyond_cache(2 * std::size_t(n) * sizeof(B)) && aligned_to_elements(&elem_at<B>(d.base)))
            copy_run_streaming(&elem_at<B>(d.base), &elem_at<B>(s.base), n);
        else
            copy_run(&elem_at<B>(d.base), &elem_at<B>(s.base), n);
        return true;
    }
    for (int k = 0; k < count; ++k) {
        const Bytes x = s.base + k * s.obj;
        const Bytes y = d.base + k * d.obj;
        if (rowsPacked) {
            copy_run(&elem_at<B>(y), &elem_at<B>(x), ptrdiff_t(h) * w);
            continue;
        }
        for (int i = 0; i < h; ++i) copy_run(&elem_at<B>(y + i * d.row), &elem_at<B>(x + i * s.row), w);
    }
    return true;
}

template <class S, class D>
constexpr bool both_contiguous = false;
template <class B>
constexpr bool both_contiguous<Strided<B, true>, Strided<B, true>> = true;

template <class S, class D>
kelStatus copy_objects(int count, const S s, const D d, int h, int w)
{
    if constexpr (both_contiguous<S, D>)
        if (copy_runs(count, s, d, h, w)) return kelOk;
    for (int k = 0; k < count; ++k) {
        const auto x = s[k];
        const auto y = d[k];
        for (int i = 0; i < h; ++i)
            for (int j = 0; j < w; ++j) y(i, j) = x(i, j);
    }
    return kelOk;
}

// --- the kernels ------------------------------------------------------------------

// dst[k](i, j) = src[k](i, j) as bits, for k, i, j increasing (Copy, and
// Extract into its dense buffer).  Sources may be Transposed views.
template <class S, class D>
kelStatus ownkelmCopy(int count, const S& src, const D& dst, int h, int w)
{
    return with_unit_strides([&](const auto& s, const auto& d) { return copy_objects(count, s, d, h, w); },
                             as_bits(src), as_bits(dst));
}

// Row i of every matrix: zeros, with a one at (i, i) when i < w.  Each row is
// formed whole and stored once, which leaves the same memory as zeroing the
// row and then storing the one.
template <class D>
KELM_WIDE kelStatus identity_objects(int count, const D d, int h, int w)
{
    using T = typename D::Elem;
    for (int k = 0; k < count; ++k) {
        const auto y = d[k];
        for (int i = 0; i < h; ++i)
            for (int j = 0; j < w; ++j) y(i, j) = j == i ? T(1) : T(0);
    }
    return kelOk;
}

template <class D>
kelStatus ownkelmLoadIdentity(int count, const D& dst, int h, int w)
{
    return with_unit_strides([&](const auto& d) { return identity_objects(count, d, h, w); }, dst);
}

}  // namespace
}  // namespace kelm
