// kelmSub_tama: entries and parallel driver.
#include "addsub.h"

namespace kelm {
KELM_EW_MAMA(kelmSub_tama, SubOp, true, false)
}  // namespace kelm
