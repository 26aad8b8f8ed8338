// kelmMul with a vector or constant operand on single objects.
#include "args.h"

namespace kelm {
KELM_MUL_MV(kelmMul_mv, false)
KELM_MUL_MV(kelmMul_tv, true)
KELM_MUL_MC(kelmMul_mc, false)
KELM_MUL_MC(kelmMul_tc, true)
KELM_MUL_VC(kelmMul_vc)
}  // namespace kelm
