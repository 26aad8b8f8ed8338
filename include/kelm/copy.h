/* Part of kelm.h; include that header, not this one. */
#ifndef KELM_COPY_H
#define KELM_COPY_H

/* Copy, Extract and LoadIdentity. */

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
