/* Part of kelm.h; include that header, not this one. */
#ifndef KELM_AFFINE_H
#define KELM_AFFINE_H

/* AffineTransform3DH. */

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
