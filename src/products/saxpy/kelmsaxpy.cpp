// kelmSaxpy_vv: one pair of vectors.
#include "args.h"

namespace kelm {
KELM_SAXPY_VV(kelmSaxpy_vv)
}  // namespace kelm
