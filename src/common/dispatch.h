// Run-time choice of vector width for hot kernels.
//
// The library is built for any x86-64 (or SSE2 x86) processor. A kernel marked
// KELM_WIDE is compiled twice, once for the baseline and once for AVX2, and
// the dynamic loader picks the clone that the processor runs, once, at load.
// Both clones perform the same IEEE operations in the same order (the build
// never contracts multiplies and adds, and the AVX2 clone does not enable
// FMA), so results are bit-identical whichever clone runs.
//
// Only the x86-64 build is cloned.  On 32-bit x86 the linker can mix up the
// same-named local resolvers of clones in different source files, so that
// build keeps the one baseline (SSE2) copy of every kernel.
//
// KELM_WIDE_V4 adds a third clone for processors with AVX-512 (x86-64-v4):
// besides the wider vectors it has 32 vector registers instead of 16, which
// is what the register-hungry closed forms need.  It does not pay everywhere
// (streaming and short loops gain nothing and some lose), so kernels opt in
// where the benchmark suite shows the gain.
//
// Mark the outermost loop of a kernel (the function that walks the objects)
// so that everything inlined into it is widened; marking tiny per-object
// helpers instead costs an indirect call per object.
#pragma once

#if defined(__GNUC__) && !defined(__clang__) && defined(__x86_64__) && !defined(KELM_NO_CLONES)
#define KELM_WIDE __attribute__((target_clones("avx2", "default")))
#define KELM_WIDE_V4 __attribute__((target_clones("arch=x86-64-v4", "avx2", "default")))
#else
#define KELM_WIDE
#define KELM_WIDE_V4
#endif
