// EigenValuesVectors: single-matrix entries.
#include "args.h"

namespace kelm {
KELM_FOR_TYPES(KELM_EIG_VECTORS2_M_T, _)
}  // namespace kelm
