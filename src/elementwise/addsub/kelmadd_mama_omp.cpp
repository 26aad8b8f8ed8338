// kelmAdd_mama: entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_EW_MAMA(kelmAdd_mama, AddOp, false, false)
}  // namespace kelm
