// kelmCholeskyBackSubst_mva: one factor, an array of right-hand vectors, with the parallel driver.
#include "args.h"

namespace kelm {
KELM_CHOL_BACKSUBST_MVA()
}  // namespace kelm
