// kelmSub_vava: entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_EW_VAVA(kelmSub_vava, SubOp)
}  // namespace kelm
