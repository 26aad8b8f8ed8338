/* Part of kelm.h; include that header, not this one. */
#ifndef KELM_MUL_MV_H
#define KELM_MUL_MV_H

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
