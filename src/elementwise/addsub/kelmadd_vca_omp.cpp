// kelmAdd_vca: entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_EW_VCA(kelmAdd_vca, AddOp)
}  // namespace kelm
