// kelmCholeskyBackSubst_mava: arrays of factors and right-hand vectors, with the parallel driver.
#include "args.h"

namespace kelm {
KELM_CHOL_BACKSUBST_MAVA()
}  // namespace kelm
