// kelmSub_vca: entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_EW_VCA(kelmSub_vca, SubOp)
}  // namespace kelm
