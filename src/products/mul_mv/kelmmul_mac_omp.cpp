// kelmMul_mac and kelmMul_tac: entries and parallel drivers.
#include "args.h"

namespace kelm {
KELM_MUL_MAC(kelmMul_mac, false)
KELM_MUL_MAC(kelmMul_tac, true)
}  // namespace kelm
