/* Part of kelm.h; include that header, not this one. */
#ifndef KELM_EIGEN_SYM_H
#define KELM_EIGEN_SYM_H

/* EigenValuesSym and EigenValuesVectorsSym. */

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
