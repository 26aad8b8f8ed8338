// kelmMul_mama, _mata, _tama, _tata: two arrays of matrices, pairwise.
#include "args.h"

namespace kelm {
KELM_MUL_ARR_ALL(a, a, 1, 1)
}  // namespace kelm
