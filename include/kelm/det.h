/* Part of kelm.h; include that header, not this one. */
#ifndef KELM_DET_H
#define KELM_DET_H

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
