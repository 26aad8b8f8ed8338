// kelmAdd_mat: entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_EW_MAM(kelmAdd_mat, AddOp, false, true, KELM_ARRAY_ORDER)
}  // namespace kelm
