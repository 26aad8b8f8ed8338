// kelmSub_mma: entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_EW_MMA(kelmSub_mma, SubOp, false, false, (nul, cnt, str, siz))
}  // namespace kelm
