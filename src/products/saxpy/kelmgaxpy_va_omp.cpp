// kelmGaxpy_mva: one matrix with each x and z of two arrays; entries and
// parallel driver.
#include "args.h"

namespace kelm {
KELM_GAXPY_ARRAY(kelmGaxpy_mva, A, work_gaxpy_mva)
}  // namespace kelm
