// kelmQRBackSubst_mva: one factor, an array of right-hand vectors, with the parallel driver.
#include "args.h"

namespace kelm {
KELM_QR_BACKSUBST_MVA()
}  // namespace kelm
