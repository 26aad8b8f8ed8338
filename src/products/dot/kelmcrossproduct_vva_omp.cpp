// kelmCrossProduct_vva: one vector with each vector of an array; entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_CROSS_ARRAY(kelmCrossProduct_vva, V, A, work_cross_vav)
}  // namespace kelm
