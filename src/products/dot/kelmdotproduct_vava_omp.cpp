// kelmDotProduct_vava: pairwise between two arrays; entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_DOT_ARRAY(kelmDotProduct_vava, A, work_dot_vava)
}  // namespace kelm
