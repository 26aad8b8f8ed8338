/* Part of kelm.h; include that header, not this one. */
#ifndef KELM_TRANSPOSE_H
#define KELM_TRANSPOSE_H

/* Transpose. */

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
