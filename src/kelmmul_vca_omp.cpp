// kelmMul_vca: entries and parallel drivers.
#include "mul_mv_entries.h"

namespace kelm {
KELM_MUL_VCA(kelmMul_vca)
}  // namespace kelm
