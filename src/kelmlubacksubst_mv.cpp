// kelmLUBackSubst_mv: one factor, one right-hand vector, strided and _P.
#include "lu_entries.h"

namespace kelm {
KELM_LU_BACKSUBST_MV()
}  // namespace kelm
