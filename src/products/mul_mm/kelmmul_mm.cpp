// kelmMul_mm, _mt, _tm, _tt: one pair of matrices, strided and _P.
#include "args.h"

namespace kelm {
KELM_MUL_MM(kelmMul_mm, false, false)
KELM_MUL_MM(kelmMul_mt, false, true)
KELM_MUL_MM(kelmMul_tm, true, false)
KELM_MUL_MM(kelmMul_tt, true, true)
}  // namespace kelm
