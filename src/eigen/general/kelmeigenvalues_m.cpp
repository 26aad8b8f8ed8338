// EigenValues: single-matrix entries.
#include "args.h"

namespace kelm {
KELM_FOR_TYPES(KELM_EIG_VALUES_M_T, _)
}  // namespace kelm
