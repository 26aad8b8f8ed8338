/* Part of kelm.h; include that header, not this one. */
#ifndef KELM_LU_H
#define KELM_LU_H

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
