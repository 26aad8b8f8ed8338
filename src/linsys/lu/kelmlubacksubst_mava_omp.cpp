// kelmLUBackSubst_mava: arrays of factors and right-hand vectors, with the parallel driver.
#include "args.h"

namespace kelm {
KELM_LU_BACKSUBST_MAVA()
}  // namespace kelm
