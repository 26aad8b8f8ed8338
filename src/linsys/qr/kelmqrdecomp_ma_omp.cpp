// kelmQRDecomp_ma: arrays of matrices, strided, _P and _L, with the parallel driver.
#include "args.h"

namespace kelm {
KELM_QR_DECOMP_MA()
}  // namespace kelm
