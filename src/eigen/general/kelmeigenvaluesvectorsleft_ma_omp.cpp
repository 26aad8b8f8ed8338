// EigenValuesVectorsLeft: array entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_FOR_TYPES(KELM_EIG_VECTORS_MA_T, kelmEigenValuesVectorsLeft, Left)
}  // namespace kelm
