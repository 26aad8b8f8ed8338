// kelmAdd_tat: entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_EW_MAM(kelmAdd_tat, AddOp, true, true, KELM_ARRAY_ORDER)
}  // namespace kelm
