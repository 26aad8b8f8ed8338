/* kelm: numeric operations on small vectors and matrices, one object or many.
 *
 * Every operation is named kelm<Operation>_<operands>_<type>[_P|_L] and
 * returns a kelStatus.  Operand letters: v vector, m matrix, t matrix stored
 * transposed, c constant; an 'a' after a letter makes it an array of count
 * such objects.  Types: 32f (float) and 64f (double).
 *
 * How objects are described (all strides and shifts are in BYTES):
 *   strided (no suffix)  element (i, j) of object k is at
 *                        base + k*ObjStride + i*RowStride + j*ElemStride
 *                        (a vector has no RowStride, a single object no ObjStride).
 *   _P (pointer)         one pointer per element, in row order for a matrix:
 *                        element (i, j) of object k is at
 *                        ptrs[i*width + j] + ObjShift + k*ObjStride.
 *   _L (list)            one pointer per object: element (i, j) of object k is
 *                        at list[k] + ObjShift + i*RowStride + j*ElemStride;
 *                        single (non-array) operands keep the strided form.
 * Strides must be positive multiples of the element size, shifts non-negative
 * multiples.  Arguments are checked before any memory is read; on a failing
 * check nothing is written.  Null pointers inside pointer tables or lists,
 * tables shorter than the operation needs, and overlapping objects are NOT
 * detected.
 *
 * Threads: array operations large enough to pay for it are split over
 * kelGetNumThreads() OpenMP threads (kelcore.h).  A call made from inside the
 * caller's own active parallel region, where the runtime allows no further
 * level, runs as a one-thread region that processes ONLY the first block of
 * the array and leaves the rest unwritten.  Callers that use the library from
 * their own parallel regions must set the thread count to 1.
 */
#ifndef KELM_H
#define KELM_H

#include "kelcore.h"

#if defined(KELM_BUILDING)
#define KELM_API __attribute__((visibility("default")))
#else
#define KELM_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

typedef float kel32f;
typedef double kel64f;

/* Status of every operation: kelOk or one of the negative values below. */
typedef int kelStatus;
enum {
    kelOk = 0,
    kelErrFail = -1,            /* complex-pair bookkeeping inconsistency */
    kelErrEigenSolve = -2,      /* eigenvector 2x2 block without a usable pivot */
    kelErrSize = -6,            /* a length, width, height or order below 1 */
    kelErrNullPointer = -8,     /* an operand, table, list or buffer is null */
    kelErrTinyDivisor = -10,    /* a divisor at or below its threshold */
    kelErrNotPosDef = -179,     /* Cholesky met a diagonal value not > 0 */
    kelErrStride = -182,        /* a stride not a positive multiple of the element size */
    kelErrSingular = -195,      /* singular matrix */
    kelErrShift = -202,         /* a shift negative or not a multiple of the element size */
    kelErrCount = -203,         /* count below 1 */
    kelErrSizeMismatch = -204,  /* operand sizes do not agree */
    kelErrNotConverged = -205   /* an eigenvalue iteration exceeded its limit */
};

/* Identification of the library (a constant record; never modify or free). */
typedef struct KelLibVersion {
    int versionMajor;
    int versionMinor;
    int buildMajor;
    int buildNumber;
    char cpuTag[4];
    const char* libName;
    const char* versionText;
    const char* buildDate;
} KelLibVersion;

KELM_API const KelLibVersion* kelmGetLibVersion(void);

#ifdef __cplusplus
}
#endif

/* The operations, by family. */
#include "kelm/addsub.h"
#include "kelm/mul_mm.h"
#include "kelm/mul_mv.h"
#include "kelm/lu.h"
#include "kelm/det.h"
#include "kelm/copy.h"
#include "kelm/transpose.h"
#include "kelm/dot.h"
#include "kelm/saxpy.h"
#include "kelm/norm.h"
#include "kelm/affine.h"
#include "kelm/invert.h"
#include "kelm/cholesky.h"
#include "kelm/qr.h"
#include "kelm/eigen_sym.h"
#include "kelm/eigen.h"

#endif
