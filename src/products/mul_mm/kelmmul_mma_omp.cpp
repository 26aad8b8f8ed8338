// kelmMul_mma, _mta, _tma, _tta: one matrix times an array of matrices.
#include "args.h"

namespace kelm {
KELM_MUL_ARR_ALL(, a, 0, 1)
}  // namespace kelm
