// The two element types.  KELM_FOR_TYPES(M, args...) expands M(T, S, args...)
// for (float, 32f) and (double, 64f): every argument-list macro is written once
// and defines the entries of both types.
#pragma once

#define KELM_FOR_TYPES(M, ...) M(float, 32f, __VA_ARGS__) M(double, 64f, __VA_ARGS__)
