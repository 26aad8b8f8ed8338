/* kelcore: the support library shared by the kelm libraries.
 *
 * It owns the number of threads that array operations request.  The count is
 * set when the library is loaded, from the OpenMP runtime's default team size
 * (so OMP_NUM_THREADS is honoured), and can be changed at any time with
 * kelSetNumThreads.  Operations read it afresh at every call; a count of 0 or
 * 1 keeps every operation on the calling thread.
 */
#ifndef KELCORE_H
#define KELCORE_H

#if defined(_WIN32)
#define KELCORE_API
#else
#define KELCORE_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Threads requested by array operations.  A plain integer so that a
 * replacement support library can provide it; prefer the two calls below. */
extern KELCORE_API int threads_omp_of_n_kel;

/* Sets the thread count (values below 1 are stored as 1); returns the count
 * now in force. */
KELCORE_API int kelSetNumThreads(int n);
KELCORE_API int kelGetNumThreads(void);

/* Stores the size in bytes of the largest processor cache into *size (0 when
 * the system does not tell).  Returns 0, or -8 when size is null. */
KELCORE_API int kelGetMaxCacheSizeB(int* size);

#ifdef __cplusplus
}
#endif

#endif
