// kelmInvert_m: one matrix, strided and _P.
#include "args.h"

namespace kelm {
KELM_FOR_TYPES(KELM_INVERT_M_T, _)
}  // namespace kelm
