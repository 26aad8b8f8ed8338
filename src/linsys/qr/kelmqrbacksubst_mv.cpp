// kelmQRBackSubst_mv: one factor, one right-hand vector, strided and _P.
#include "args.h"

namespace kelm {
KELM_QR_BACKSUBST_MV()
}  // namespace kelm
