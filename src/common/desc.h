// Object descriptions: how kernels find element (i, j) of object k.
//
// Three array descriptions, each indexable by object (arr[k]) and each able to
// start later in the array (arr.from(first), used by the parallel split):
//   Strided<T, Unit>  base + k*obj + i*row + j*elem   (a single object: obj = 0)
//   Pointers<T>       ptrs[i*w + j] + shift + k*obj    (a single object: obj = 0)
//   List<T, Unit>     list[k] + shift + i*row + j*elem
// Unit = true fixes the element stride at sizeof(T) at compile time: that is
// the contiguous kernel; Unit = false reads it at run time (the _S2 kernels).
// Indexing yields a view, called as v(i, j) (vectors use row 0).  Transposed<>
// swaps the indices of any view or description.  Constants (a value, an array
// of values by base and stride, a list of value pointers) look like objects
// whose every element is the same number.
#pragma once

#include <cstddef>
#include <type_traits>

namespace kelm {

using std::ptrdiff_t;
using Bytes = char*;

template <class T>
inline T& elem_at(Bytes p) { return *reinterpret_cast<T*>(p); }

template <class P>
inline Bytes bytes(P* p) { return reinterpret_cast<Bytes>(const_cast<std::remove_const_t<P>*>(p)); }

template <class P>
inline Bytes const* byte_table(P* const* p) { return reinterpret_cast<Bytes const*>(const_cast<std::remove_const_t<P>* const*>(p)); }

// --- one object ---------------------------------------------------------------

template <class T, bool Unit>
struct DenseView {
    Bytes p;
    ptrdiff_t row, elem;
    T& operator()(int i, int j) const
    {
        return elem_at<T>(p + i * row + j * (Unit ? ptrdiff_t(sizeof(T)) : elem));
    }
    T& operator[](int j) const { return (*this)(0, j); }
};

template <class T>
struct ScatterView {
    Bytes const* ptrs;
    ptrdiff_t off;
    int w;  // width of the object as stored
    T& operator()(int i, int j) const { return elem_at<T>(ptrs[i * w + j] + off); }
    T& operator[](int j) const { return elem_at<T>(ptrs[j] + off); }
};

template <class T>
struct ValueView {
    T v;
    T operator()(int, int) const { return v; }
    T operator[](int) const { return v; }
};

template <class V>
struct TransposedView {
    V v;
    decltype(auto) operator()(int i, int j) const { return v(j, i); }
};

// --- arrays of objects ----------------------------------------------------------

template <class T, bool Unit = false>
struct Strided {
    using Elem = T;
    Bytes base;
    ptrdiff_t obj, row, elem;
    DenseView<T, Unit> operator[](ptrdiff_t k) const { return {base + k * obj, row, elem}; }
    Strided from(ptrdiff_t first) const { return {base + first * obj, obj, row, elem}; }
    bool unit() const { return elem == ptrdiff_t(sizeof(T)); }
    Strided<T, true> as_unit() const { return {base, obj, row, elem}; }
};

template <class T>
struct Pointers {
    using Elem = T;
    Bytes const* ptrs;
    ptrdiff_t shift, obj;
    int w;  // stored width: pointer i*w + j addresses element (i, j)
    ScatterView<T> operator[](ptrdiff_t k) const { return {ptrs, shift + k * obj, w}; }
    Pointers from(ptrdiff_t first) const { return {ptrs, shift + first * obj, obj, w}; }
    bool unit() const { return true; }
    Pointers as_unit() const { return *this; }
};

template <class T, bool Unit = false>
struct List {
    using Elem = T;
    Bytes const* list;
    ptrdiff_t shift, row, elem;
    DenseView<T, Unit> operator[](ptrdiff_t k) const { return {list[k] + shift, row, elem}; }
    List from(ptrdiff_t first) const { return {list + first, shift, row, elem}; }
    bool unit() const { return elem == ptrdiff_t(sizeof(T)); }
    List<T, true> as_unit() const { return {list, shift, row, elem}; }
};

template <class A>
struct Transposed {
    using Elem = typename A::Elem;
    A a;
    auto operator[](ptrdiff_t k) const { return TransposedView<decltype(a[k])>{a[k]}; }
    Transposed from(ptrdiff_t first) const { return {a.from(first)}; }
    bool unit() const { return a.unit(); }
    auto as_unit() const { return Transposed<decltype(a.as_unit())>{a.as_unit()}; }
};

template <class T>
struct Value {
    using Elem = T;
    T v;
    ValueView<T> operator[](ptrdiff_t) const { return {v}; }
    Value from(ptrdiff_t) const { return *this; }
    bool unit() const { return true; }
    Value as_unit() const { return *this; }
};

template <class T>
struct Values {  // base + k*stride
    using Elem = T;
    Bytes base;
    ptrdiff_t stride;
    ValueView<T> operator[](ptrdiff_t k) const { return {elem_at<T>(base + k * stride)}; }
    Values from(ptrdiff_t first) const { return {base + first * stride, stride}; }
    bool unit() const { return true; }
    Values as_unit() const { return *this; }
};

template <class T>
struct ValueList {  // list[k] + shift
    using Elem = T;
    Bytes const* list;
    ptrdiff_t shift;
    ValueView<T> operator[](ptrdiff_t k) const { return {elem_at<T>(list[k] + shift)}; }
    ValueList from(ptrdiff_t first) const { return {list + first, shift}; }
    bool unit() const { return true; }
    ValueList as_unit() const { return *this; }
};

// Pick the contiguous (Unit) form of every description when all of them have
// unit element strides, else keep the general-stride form, and call f with it.
template <class F, class... D>
inline auto with_unit_strides(F&& f, const D&... d)
{
    if ((d.unit() && ...)) return f(d.as_unit()...);
    return f(d...);
}

}  // namespace kelm

namespace kelm {

// Descriptions from an entry's arguments (a single object has object stride 0).
template <class T>
Strided<T> vec(const T* p, int elem) { return {bytes(p), 0, 0, elem}; }
template <class T>
Strided<T> vecs(const T* p, int obj, int elem) { return {bytes(p), obj, 0, elem}; }
template <class T>
Strided<T> mat(const T* p, int row, int elem) { return {bytes(p), 0, row, elem}; }
template <class T>
Strided<T> mats(const T* p, int obj, int row, int elem) { return {bytes(p), obj, row, elem}; }
template <class T>
Pointers<T> ptrs(const T* const* table, int shift, int obj, int storedWidth)
{
    return {byte_table(table), shift, obj, storedWidth};
}
template <class T>
List<T> list(const T* const* objects, int shift, int row, int elem) { return {byte_table(objects), shift, row, elem}; }
template <class T>
Values<T> values(const T* base, int stride) { return {bytes(base), stride}; }
template <class T>
ValueList<T> value_list(const T* const* objects, int shift) { return {byte_table(objects), shift}; }

}  // namespace kelm
