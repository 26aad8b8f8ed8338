/* Part of kelm.h; include that header, not this one. */
#ifndef KELM_DOT_H
#define KELM_DOT_H

/* DotProduct and CrossProduct. */

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
