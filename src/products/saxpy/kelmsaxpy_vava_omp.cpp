// kelmSaxpy_vava: pairwise between two arrays; entries and parallel driver.
#include "args.h"

namespace kelm {
KELM_SAXPY_ARRAY(kelmSaxpy_vava, A, A, kSaxpyVavaLimits, work_two_arrays)
}  // namespace kelm
