// kelmQRDecomp_m: one matrix, strided and _P.
#include "args.h"

namespace kelm {
KELM_QR_DECOMP_M()
}  // namespace kelm
