// EigenValuesVectorsLeft: single-matrix entries.
#include "args.h"

namespace kelm {
KELM_FOR_TYPES(KELM_EIG_VECTORS_M_T, kelmEigenValuesVectorsLeft, Left)
}  // namespace kelm
