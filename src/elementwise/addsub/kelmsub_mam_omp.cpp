// kelmSub_mam: entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_EW_MAM(kelmSub_mam, SubOp, false, false, (nul, cnt, str, siz))
}  // namespace kelm
