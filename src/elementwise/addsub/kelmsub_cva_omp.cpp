// kelmSub_cva: entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_EW_VAC(kelmSub_cva, SubFromOp, m_count_only)
}  // namespace kelm
