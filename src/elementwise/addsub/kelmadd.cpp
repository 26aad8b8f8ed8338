// kelmAdd on single objects.
#include "args.h"

namespace kelm {
KELM_EW_VV(kelmAdd_vv, AddOp)
KELM_EW_VC(kelmAdd_vc, AddOp)
KELM_EW_MM(kelmAdd_mm, AddOp, false, false)
KELM_EW_MM(kelmAdd_tm, AddOp, true, false)
KELM_EW_MM(kelmAdd_tt, AddOp, true, true)
}  // namespace kelm
