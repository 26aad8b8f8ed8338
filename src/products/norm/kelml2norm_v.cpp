// kelmL2Norm_v: single-vector entries.
#include "args.h"

namespace kelm {
KELM_FOR_TYPES(KELM_L2NORM_V_T, _)
}  // namespace kelm
