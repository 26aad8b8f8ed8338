/* Part of kelm.h; include that header, not this one. */
#ifndef KELM_SAXPY_H
#define KELM_SAXPY_H

/* Saxpy, LComb and Gaxpy. */

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
