/* Part of kelm.h; include that header, not this one. */
#ifndef KELM_CHOLESKY_H
#define KELM_CHOLESKY_H

/* CholeskyDecomp and CholeskyBackSubst. */

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
