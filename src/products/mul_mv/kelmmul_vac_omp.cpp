// kelmMul_vac: entries and parallel drivers.
#include "args.h"

namespace kelm {
KELM_MUL_VAC(kelmMul_vac)
}  // namespace kelm
