// kelmSub_vac: entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_EW_VAC(kelmSub_vac, SubOp, m_array_single)
}  // namespace kelm
