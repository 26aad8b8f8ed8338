// kelmMul_mava and kelmMul_tava: entries and parallel drivers.
#include "args.h"

namespace kelm {
KELM_MUL_MAVA(kelmMul_mava, false)
KELM_MUL_MAVA(kelmMul_tava, true)
}  // namespace kelm
