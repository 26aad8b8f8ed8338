// kelmTranspose_m: one matrix.
#include "args.h"

namespace kelm {
KELM_TRANSPOSE_M()
}  // namespace kelm
