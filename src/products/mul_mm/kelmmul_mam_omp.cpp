// kelmMul_mam, _mat, _tam, _tat: an array of matrices times one matrix.
#include "args.h"

namespace kelm {
KELM_MUL_ARR_ALL(a, , 1, 0)
}  // namespace kelm
