// kelmExtract_va: an array of objects into a dense buffer.
#include "args.h"

namespace kelm {
KELM_EXTRACT_ARRAY(kelmExtract_va, va, false)
}  // namespace kelm
