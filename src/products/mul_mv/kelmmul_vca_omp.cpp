// kelmMul_vca: entries and parallel drivers.
#include "args.h"

namespace kelm {
KELM_MUL_VCA(kelmMul_vca)
}  // namespace kelm
