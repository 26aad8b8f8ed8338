// EigenValuesVectors: array entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_FOR_TYPES(KELM_EIG_VECTORS2_MA_T, _)
}  // namespace kelm
