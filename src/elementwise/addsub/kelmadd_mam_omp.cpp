// kelmAdd_mam: entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_EW_MAM(kelmAdd_mam, AddOp, false, false, (nul, cnt, str, siz))
}  // namespace kelm
