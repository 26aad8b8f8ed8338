/* Part of kelm.h; include that header, not this one. */
#ifndef KELM_NORM_H
#define KELM_NORM_H

/* L2Norm, FrobNorm and Trace. */

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
