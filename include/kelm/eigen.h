/* Part of kelm.h; include that header, not this one. */
#ifndef KELM_EIGEN_H
#define KELM_EIGEN_H

/* EigenValues, the eigenvector operations and the buffer-size queries. */

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
