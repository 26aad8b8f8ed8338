// kelmLComb_vv: one pair of vectors.
#include "args.h"

namespace kelm {
KELM_LCOMB_VV(kelmLComb_vv)
}  // namespace kelm
