// kelmSub_tama: entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_EW_MAMA(kelmSub_tama, SubOp, true, false)
}  // namespace kelm
