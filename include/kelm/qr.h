/* Part of kelm.h; include that header, not this one. */
#ifndef KELM_QR_H
#define KELM_QR_H

/* QRDecomp and QRBackSubst. */

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
