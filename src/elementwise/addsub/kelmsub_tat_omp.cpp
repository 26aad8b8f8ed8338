// kelmSub_tat: entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_EW_MAM(kelmSub_tat, SubOp, true, true, KELM_ARRAY_ORDER)
}  // namespace kelm
