// kelmSub_mama: entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_EW_MAMA(kelmSub_mama, SubOp, false, false)
}  // namespace kelm
