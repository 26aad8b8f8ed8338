// kelmAdd_vac: entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_EW_VAC(kelmAdd_vac, AddOp, m_array_single)
}  // namespace kelm
