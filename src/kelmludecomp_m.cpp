// kelmLUDecomp_m: one matrix, strided and _P.
#include "lu_entries.h"

namespace kelm {
KELM_LU_DECOMP_M()
}  // namespace kelm
