// kelmSub_tta: entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_EW_MMA(kelmSub_tta, SubOp, true, true, KELM_ARRAY_ORDER)
}  // namespace kelm
