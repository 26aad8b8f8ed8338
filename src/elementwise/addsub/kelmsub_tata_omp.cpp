// kelmSub_tata: entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_EW_MAMA(kelmSub_tata, SubOp, true, true)
}  // namespace kelm
