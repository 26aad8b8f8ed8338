// kelmTranspose_ma: arrays of matrices.
#include "args.h"

namespace kelm {
KELM_TRANSPOSE_MA()
}  // namespace kelm
