// kelmDotProduct_vav: each vector of an array with one vector; entries and
// parallel driver.
#include "args.h"

namespace kelm {
KELM_DOT_ARRAY(kelmDotProduct_vav, V, work_dot_vav)
}  // namespace kelm
