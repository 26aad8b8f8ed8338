// kelmQRBackSubst_mava: arrays of factors and right-hand vectors, with the parallel driver.
#include "args.h"

namespace kelm {
KELM_QR_BACKSUBST_MAVA()
}  // namespace kelm
