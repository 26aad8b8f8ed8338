// kelmSub_cava: entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_EW_VACA(kelmSub_cava, SubFromOp)
}  // namespace kelm
