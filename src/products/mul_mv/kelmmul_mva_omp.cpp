// kelmMul_mva and kelmMul_tva: entries and parallel drivers.
#include "args.h"

namespace kelm {
KELM_MUL_MVA(kelmMul_mva, false)
KELM_MUL_MVA(kelmMul_tva, true)
}  // namespace kelm
