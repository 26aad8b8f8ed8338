// kelmL2Norm_va: array entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_FOR_TYPES(KELM_L2NORM_VA_T, _)
}  // namespace kelm
