// kelmGaxpy_mvav: one matrix and one z with each x of an array; entries and
// parallel driver.
#include "args.h"

namespace kelm {
KELM_GAXPY_ARRAY(kelmGaxpy_mvav, V, work_gaxpy_mvav)
}  // namespace kelm
