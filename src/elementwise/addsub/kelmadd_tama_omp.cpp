// kelmAdd_tama: entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_EW_MAMA(kelmAdd_tama, AddOp, true, false)
}  // namespace kelm
