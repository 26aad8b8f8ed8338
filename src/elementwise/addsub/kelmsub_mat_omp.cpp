// kelmSub_mat: entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_EW_MAM(kelmSub_mat, SubOp, false, true, KELM_ARRAY_ORDER)
}  // namespace kelm
