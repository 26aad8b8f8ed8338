// kelmMul_mav and kelmMul_tav: entries and parallel drivers.
#include "args.h"

namespace kelm {
KELM_MUL_MAV(kelmMul_mav, false)
KELM_MUL_MAV(kelmMul_tav, true)
}  // namespace kelm
