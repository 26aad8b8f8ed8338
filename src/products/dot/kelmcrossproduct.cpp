// kelmCrossProduct_vv: one pair of 3-vectors.
#include "args.h"

namespace kelm {
KELM_CROSS_VV(kelmCrossProduct_vv)
}  // namespace kelm
