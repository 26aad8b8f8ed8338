// kelmLComb_vav: each x of an array with one y; entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_LCOMB_ARRAY(kelmLComb_vav, V, work_array_single)
}  // namespace kelm
