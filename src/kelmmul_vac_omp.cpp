// kelmMul_vac: entries and parallel drivers.
#include "mul_mv_entries.h"

namespace kelm {
KELM_MUL_VAC(kelmMul_vac)
}  // namespace kelm
