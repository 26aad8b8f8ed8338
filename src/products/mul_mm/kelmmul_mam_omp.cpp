// kelmMul_mam, _mat, _tam, _tat: an array of matrices times one matrix.
#include "args.h"

namespace kelm {
KELM_MUL_ARR(kelmMul_mam, false, false, 1, 0)
KELM_MUL_ARR(kelmMul_mat, false, true, 1, 0)
KELM_MUL_ARR(kelmMul_tam, true, false, 1, 0)
KELM_MUL_ARR(kelmMul_tat, true, true, 1, 0)
}  // namespace kelm
