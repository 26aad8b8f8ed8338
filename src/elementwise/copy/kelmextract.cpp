// kelmExtract on single objects: one vector or matrix into a dense buffer.
#include "args.h"

namespace kelm {
// The 64f vector member tests the length before the pointers, as the matrix
// members of both types do.
KELM_EXTRACT_V((nul, siz, shf), (siz, nul, shf))
KELM_EXTRACT_M(kelmExtract_m, false)
KELM_EXTRACT_M(kelmExtract_t, true)
}  // namespace kelm
