// kelmAdd_vav: entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_EW_VAV(kelmAdd_vav, AddOp, (nul, siz, str, cnt), (nul, siz, str, cnt, shf), (nul, siz, str, shf, cnt))
}  // namespace kelm
