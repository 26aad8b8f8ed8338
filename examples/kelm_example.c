/* kelm_example: identifies the library, then times batched workloads on
 * arrays of small objects and prints how many objects per second each runs.
 *
 *     kelm_example [objects]      (default 200000 objects per call)
 *
 * To time another operation, write a short function that makes one call on
 * the arrays below and add one line for it to the workloads table. */
#define _POSIX_C_SOURCE 200809L

#include <kelm.h>

#include <stdio.h>
#include <stdlib.h>
#include <time.h>

enum { N = 4 }; /* every workload works on 4x4 matrices or 4-vectors */

/* The arrays each workload may use, per element type: a holds count
 * diagonally dominant N x N matrices (so factorisations never break down), b
 * holds small values, c is free for results; then count*N ints for pivot
 * indices and a work buffer of 64 elements.  Objects are contiguous: object
 * stride N*N elements, row stride N elements. */
typedef struct {
    kel32f *a32, *b32, *c32;
    kel64f *a64, *b64, *c64;
    int* index;
    void* work;
    int count;
} Arrays;

#define STRIDES(T) (int)(N * N * sizeof(T)), (int)(N * sizeof(T)), (int)sizeof(T)

static kelStatus add_mama_32f(const Arrays* x)
{
    return kelmAdd_mama_32f(x->a32, STRIDES(kel32f), x->b32, STRIDES(kel32f), x->c32, STRIDES(kel32f), N,
                            N, x->count);
}

static kelStatus sub_vava_64f(const Arrays* x)
{
    const int e = sizeof(kel64f), obj = N * e; /* packed 4-vectors */
    return kelmSub_vava_64f(x->a64, obj, e, x->b64, obj, e, x->c64, obj, e, N, x->count);
}

static kelStatus add_mam_64f(const Arrays* x) /* one matrix added to each of an array */
{
    return kelmAdd_mam_64f(x->a64, STRIDES(kel64f), x->b64, N * sizeof(kel64f), sizeof(kel64f), x->c64,
                           STRIDES(kel64f), N, N, x->count);
}

static kelStatus mul_mama_32f(const Arrays* x)
{
    return kelmMul_mama_32f(x->a32, STRIDES(kel32f), N, N, x->b32, STRIDES(kel32f), N, N, x->c32, STRIDES(kel32f),
                            x->count);
}

static kelStatus mul_mava_64f(const Arrays* x) /* each matrix times its own 4-vector */
{
    const int e = sizeof(kel64f);
    return kelmMul_mava_64f(x->a64, STRIDES(kel64f), N, N, x->b64, N * e, e, N, x->c64, N * e, e, x->count);
}

static kelStatus det_ma_64f(const Arrays* x) /* one determinant per matrix, packed */
{
    return kelmDet_ma_64f(x->a64, STRIDES(kel64f), N, x->work, x->c64, x->count);
}

static kelStatus lu_ma_32f(const Arrays* x) /* factor every matrix, then solve with it */
{
    const int e = sizeof(kel32f);
    const kelStatus st = kelmLUDecomp_ma_32f(x->a32, STRIDES(kel32f), x->index, x->c32, STRIDES(kel32f), N, x->count);
    if (st != kelOk) return st;
    /* right-hand sides: the first count vectors of b; solutions: the next count */
    return kelmLUBackSubst_mava_32f(x->c32, STRIDES(kel32f), x->index, x->b32, N * e, e, x->b32 + (size_t)x->count * N,
                                    N * e, e, N, x->count);
}

static const struct {
    const char* name;
    kelStatus (*run)(const Arrays*);
} workloads[] = {
    {"Add_mama_32f  4x4 + 4x4", add_mama_32f},
    {"Add_mam_64f   4x4 + one 4x4", add_mam_64f},
    {"Sub_vava_64f  4 - 4", sub_vava_64f},
    {"Mul_mama_32f  4x4 * 4x4", mul_mama_32f},
    {"Mul_mava_64f  4x4 * 4", mul_mava_64f},
    {"Det_ma_64f    det 4x4", det_ma_64f},
    {"LU_ma_32f     factor + solve 4x4", lu_ma_32f},
};

static double now(void)
{
    struct timespec t;
    clock_gettime(CLOCK_MONOTONIC, &t);
    return (double)t.tv_sec + 1e-9 * (double)t.tv_nsec;
}

int main(int argc, char** argv)
{
    const KelLibVersion* v = kelmGetLibVersion();
    const int count = argc > 1 ? atoi(argv[1]) : 100000;
    const size_t elements = (size_t)(count > 0 ? count : 0) * N * N;
    Arrays x;
    size_t i, w;

    printf("%s: version %s (%d.%d), build %d.%d, cpu %s, built %s\n", v->libName, v->versionText,
           v->versionMajor, v->versionMinor, v->buildMajor, v->buildNumber, v->cpuTag, v->buildDate);
    printf("threads: %d\n", kelGetNumThreads());
    if (count < 1) {
        fprintf(stderr, "usage: %s [objects >= 1]\n", argv[0]);
        return 2;
    }

    x.a32 = malloc(elements * sizeof(kel32f));
    x.b32 = malloc(elements * sizeof(kel32f));
    x.c32 = malloc(elements * sizeof(kel32f));
    x.a64 = malloc(elements * sizeof(kel64f));
    x.b64 = malloc(elements * sizeof(kel64f));
    x.c64 = malloc(elements * sizeof(kel64f));
    x.index = malloc(elements / N * sizeof(int));
    x.work = malloc(64 * sizeof(kel64f));
    x.count = count;
    if (!x.a32 || !x.b32 || !x.c32 || !x.a64 || !x.b64 || !x.c64 || !x.index || !x.work) {
        fprintf(stderr, "out of memory for %d objects\n", count);
        return 1;
    }
    srand(1);
    for (i = 0; i < elements; ++i) {
        const int diagonal = (i % (N * N)) % (N + 1) == 0;
        const double r = (double)rand() / RAND_MAX - 0.5;
        x.a64[i] = r + (diagonal ? 8.0 : 0.0);
        x.b64[i] = (double)rand() / RAND_MAX - 0.5;
        x.c64[i] = 0.0;
        x.a32[i] = (kel32f)x.a64[i];
        x.b32[i] = (kel32f)x.b64[i];
        x.c32[i] = 0.0f;
    }

    printf("%-32s %14s %12s\n", "workload", "objects/s", "ns/object");
    for (w = 0; w < sizeof workloads / sizeof workloads[0]; ++w) {
        /* Repeat the call for at least a quarter of a second. */
        long calls = 0;
        const double start = now();
        double elapsed;
        do {
            const kelStatus st = workloads[w].run(&x);
            if (st != kelOk) {
                fprintf(stderr, "%s: status %d\n", workloads[w].name, st);
                return 1;
            }
            ++calls;
            elapsed = now() - start;
        } while (elapsed < 0.25);
        printf("%-32s %14.4g %12.2f\n", workloads[w].name, (double)calls * count / elapsed,
               1e9 * elapsed / ((double)calls * count));
    }
    free(x.a32);
    free(x.b32);
    free(x.c32);
    free(x.a64);
    free(x.b64);
    free(x.c64);
    free(x.index);
    free(x.work);
    return 0;
}
