// kelmEigenValuesSym_m: single-matrix entries.
#include "args.h"

namespace kelm {
KELM_FOR_TYPES(KELM_EIGSYM_VALUES_M_T, _)
}  // namespace kelm
