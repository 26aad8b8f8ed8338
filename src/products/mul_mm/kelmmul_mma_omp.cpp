// kelmMul_mma, _mta, _tma, _tta: one matrix times an array of matrices.
#include "args.h"

namespace kelm {
KELM_MUL_ARR(kelmMul_mma, false, false, 0, 1)
KELM_MUL_ARR(kelmMul_mta, false, true, 0, 1)
KELM_MUL_ARR(kelmMul_tma, true, false, 0, 1)
KELM_MUL_ARR(kelmMul_tta, true, true, 0, 1)
}  // namespace kelm
