// kelmSub on single objects.
#include "args.h"

namespace kelm {
KELM_EW_VV(kelmSub_vv, SubOp)
KELM_EW_VC(kelmSub_vc, SubOp)
KELM_EW_VC(kelmSub_cv, SubFromOp)
KELM_EW_MM(kelmSub_mm, SubOp, false, false)
KELM_EW_MM(kelmSub_mt, SubOp, false, true)
KELM_EW_MM(kelmSub_tm, SubOp, true, false)
KELM_EW_MM(kelmSub_tt, SubOp, true, true)
}  // namespace kelm
