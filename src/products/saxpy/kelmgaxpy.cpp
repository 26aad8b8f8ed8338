// kelmGaxpy_mv: one matrix, one x, one z.
#include "args.h"

namespace kelm {
KELM_GAXPY_MV(kelmGaxpy_mv)
}  // namespace kelm
