// kelmEigenValuesVectorsSym_m: single-matrix entries.
#include "args.h"

namespace kelm {
KELM_FOR_TYPES(KELM_EIGSYM_VECTORS_M_T, _)
}  // namespace kelm
