// kelmCrossProduct_vav: each vector of an array with one vector; entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_CROSS_ARRAY(kelmCrossProduct_vav, A, V, work_cross_vav)
}  // namespace kelm
