// kelmSub_cav: entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_EW_VCA(kelmSub_cav, SubFromOp)
}  // namespace kelm
