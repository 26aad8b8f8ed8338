// kelmMul_mama, _mata, _tama, _tata: two arrays of matrices, pairwise.
#include "args.h"

namespace kelm {
KELM_MUL_ARR(kelmMul_mama, false, false, 1, 1)
KELM_MUL_ARR(kelmMul_mata, false, true, 1, 1)
KELM_MUL_ARR(kelmMul_tama, true, false, 1, 1)
KELM_MUL_ARR(kelmMul_tata, true, true, 1, 1)
}  // namespace kelm
