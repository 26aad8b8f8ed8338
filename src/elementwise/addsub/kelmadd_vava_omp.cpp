// kelmAdd_vava: entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_EW_VAVA(kelmAdd_vava, AddOp)
}  // namespace kelm
