// kelmInvert_ma: arrays of matrices, strided, _P and _L, with the parallel driver.
#include "args.h"

namespace kelm {
KELM_FOR_TYPES(KELM_INVERT_MA_T, _)
}  // namespace kelm
