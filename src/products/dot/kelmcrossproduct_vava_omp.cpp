// kelmCrossProduct_vava: pairwise between two arrays; entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_CROSS_ARRAY(kelmCrossProduct_vava, A, A, work_cross_vava)
}  // namespace kelm
