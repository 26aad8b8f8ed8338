// kelmLComb_vava: pairwise between two arrays; entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_LCOMB_ARRAY(kelmLComb_vava, A, work_two_arrays)
}  // namespace kelm
