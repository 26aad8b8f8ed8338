// kelmMul_vaca: entries and parallel drivers.
#include "mul_mv_entries.h"

namespace kelm {
KELM_MUL_VACA(kelmMul_vaca)
}  // namespace kelm
