// kelmSub_tam: entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_EW_MAM(kelmSub_tam, SubOp, true, false, KELM_ARRAY_ORDER)
}  // namespace kelm
