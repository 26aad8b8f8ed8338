// kelmEigenValuesVectorsSym_ma: array entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_FOR_TYPES(KELM_EIGSYM_VECTORS_MA_T, _)
}  // namespace kelm
