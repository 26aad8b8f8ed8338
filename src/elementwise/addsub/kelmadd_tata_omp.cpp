// kelmAdd_tata: entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_EW_MAMA(kelmAdd_tata, AddOp, true, true)
}  // namespace kelm
