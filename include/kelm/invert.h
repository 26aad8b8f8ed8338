/* Part of kelm.h; include that header, not this one. */
#ifndef KELM_INVERT_H
#define KELM_INVERT_H

/* Invert. */

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
