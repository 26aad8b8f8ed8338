// kelmSub_tma: entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_EW_MMA(kelmSub_tma, SubOp, true, false, KELM_ARRAY_ORDER)
}  // namespace kelm
