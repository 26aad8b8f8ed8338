// kelmAdd_vaca: entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_EW_VACA(kelmAdd_vaca, AddOp)
}  // namespace kelm
