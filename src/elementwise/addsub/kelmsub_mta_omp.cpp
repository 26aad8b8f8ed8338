// kelmSub_mta: entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_EW_MMA(kelmSub_mta, SubOp, false, true, KELM_ARRAY_ORDER)
}  // namespace kelm
