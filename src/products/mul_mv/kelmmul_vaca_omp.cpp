// kelmMul_vaca: entries and parallel drivers.
#include "args.h"

namespace kelm {
KELM_MUL_VACA(kelmMul_vaca)
}  // namespace kelm
