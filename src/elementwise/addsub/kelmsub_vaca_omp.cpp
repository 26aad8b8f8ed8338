// kelmSub_vaca: entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_EW_VACA(kelmSub_vaca, SubOp)
}  // namespace kelm
