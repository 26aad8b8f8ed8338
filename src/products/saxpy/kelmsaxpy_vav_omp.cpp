// kelmSaxpy_vav: each x of an array with one y; entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_SAXPY_ARRAY(kelmSaxpy_vav, A, V, kSaxpyVavLimits, work_array_single)
}  // namespace kelm
