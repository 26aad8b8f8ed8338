// kelmDotProduct_vv: one pair of vectors.
#include "args.h"

namespace kelm {
KELM_DOT_VV(kelmDotProduct_vv)
}  // namespace kelm
