// kelmSub_mata: entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_EW_MAMA(kelmSub_mata, SubOp, false, true)
}  // namespace kelm
