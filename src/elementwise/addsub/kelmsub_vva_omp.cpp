// kelmSub_vva: entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_EW_VVA(kelmSub_vva, SubOp)
}  // namespace kelm
