// kelmAdd_tam: entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_EW_MAM(kelmAdd_tam, AddOp, true, false, KELM_ARRAY_ORDER)
}  // namespace kelm
