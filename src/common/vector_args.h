// Argument groups of vector operands, for families whose members differ only
// in which operands are arrays (DotProduct, CrossProduct, Saxpy, LComb...).
//
// An operand X has a description D (S strided, P pointer table, L list) and a
// kind K (A an array of vectors, V one vector).  Its groups:
//
//             parameters                         strides checked      shifts     element strides
//   S A   X, X##ObjStride, X##ElemStride         obj, elem            -          elem
//   S V   X, X##ElemStride                       elem                 -          elem
//   P A   X (table), X##ObjShift, X##ObjStride   obj                  shift      -
//   P V   X (table), X##ObjShift                 -                    shift      -
//   L A   X (list), X##ObjShift, X##ElemStride   elem                 shift      elem
//   L V   X, X##ElemStride                       elem                 -          elem
//
// (a single vector of a list member keeps the strided form).  The stride,
// shift and element-stride groups expand to a list with a trailing comma, so
// an entry writes strides<T>(KELM_VSTR(S, A, src1) KELM_VSTR(S, V, src2)
// KELM_NO_STRIDE(T)) and a group may be empty.
#pragma once

#include "common/check.h"
#include "common/desc.h"

// Exported name of description D.
#define KELM_VNAME(D, N) KELM_VNAME_##D(N)
#define KELM_VNAME_S(N) N
#define KELM_VNAME_P(N) N##_P
#define KELM_VNAME_L(N) N##_L

// The parallel-decision form of description D.
#define KELM_VFORM(D) KELM_VFORM_##D
#define KELM_VFORM_S ::kelm::Form::Strided
#define KELM_VFORM_P ::kelm::Form::Pointer
#define KELM_VFORM_L ::kelm::Form::List

// Parameters; CT is the element type with its constness (const T for sources).
#define KELM_VPAR(D, K, CT, X) KELM_VPAR_##D##K(CT, X)
#define KELM_VPAR_SA(CT, X) CT* X, int X##ObjStride, int X##ElemStride
#define KELM_VPAR_SV(CT, X) CT* X, int X##ElemStride
#define KELM_VPAR_PA(CT, X) CT* const* X, int X##ObjShift, int X##ObjStride
#define KELM_VPAR_PV(CT, X) CT* const* X, int X##ObjShift
#define KELM_VPAR_LA(CT, X) CT* const* X, int X##ObjShift, int X##ElemStride
#define KELM_VPAR_LV(CT, X) CT* X, int X##ElemStride

// The description of the operand for the kernels (LEN: its length).
#define KELM_VDESC(D, K, T, X, LEN) KELM_VDESC_##D##K(T, X, LEN)
#define KELM_VDESC_SA(T, X, LEN) ::kelm::vecs<T>(X, X##ObjStride, X##ElemStride)
#define KELM_VDESC_SV(T, X, LEN) ::kelm::vec<T>(X, X##ElemStride)
#define KELM_VDESC_PA(T, X, LEN) ::kelm::ptrs<T>(X, X##ObjShift, X##ObjStride, LEN)
#define KELM_VDESC_PV(T, X, LEN) ::kelm::ptrs<T>(X, X##ObjShift, 0, LEN)
#define KELM_VDESC_LA(T, X, LEN) ::kelm::list<T>(X, X##ObjShift, 0, X##ElemStride)
#define KELM_VDESC_LV(T, X, LEN) ::kelm::vec<T>(X, X##ElemStride)

// Strides tested for kelErrStride.
#define KELM_VSTR(D, K, X) KELM_VSTR_##D##K(X)
#define KELM_VSTR_SA(X) X##ObjStride, X##ElemStride,
#define KELM_VSTR_SV(X) X##ElemStride,
#define KELM_VSTR_PA(X) X##ObjStride,
#define KELM_VSTR_PV(X)
#define KELM_VSTR_LA(X) X##ElemStride,
#define KELM_VSTR_LV(X) X##ElemStride,
#define KELM_NO_STRIDE(T) int(sizeof(T))  // closes a stride list: always valid, always unit

// Shifts tested for kelErrShift.
#define KELM_VSHF(D, K, X) KELM_VSHF_##D##K(X)
#define KELM_VSHF_SA(X)
#define KELM_VSHF_SV(X)
#define KELM_VSHF_PA(X) X##ObjShift,
#define KELM_VSHF_PV(X) X##ObjShift,
#define KELM_VSHF_LA(X) X##ObjShift,
#define KELM_VSHF_LV(X)
#define KELM_NO_SHIFT 0  // closes a shift list

// Element strides that choose between the contiguous and general kernels.
#define KELM_VELEM(D, K, X) KELM_VELEM_##D##K(X)
#define KELM_VELEM_SA(X) X##ElemStride,
#define KELM_VELEM_SV(X) X##ElemStride,
#define KELM_VELEM_PA(X)
#define KELM_VELEM_PV(X)
#define KELM_VELEM_LA(X) X##ElemStride,
#define KELM_VELEM_LV(X) X##ElemStride,
