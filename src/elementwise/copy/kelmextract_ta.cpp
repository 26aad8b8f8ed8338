// kelmExtract_ta: an array of objects into a dense buffer.
#include "args.h"

namespace kelm {
KELM_EXTRACT_ARRAY(kelmExtract_ta, ma, true)
}  // namespace kelm
