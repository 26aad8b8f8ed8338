// kelmSaxpy_vva: one x with each y of an array; entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_SAXPY_ARRAY(kelmSaxpy_vva, V, A, kSaxpyVvaLimits, work_array_single)
}  // namespace kelm
