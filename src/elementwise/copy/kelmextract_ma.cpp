// kelmExtract_ma: an array of objects into a dense buffer.
#include "args.h"

namespace kelm {
KELM_EXTRACT_ARRAY(kelmExtract_ma, ma, false)
}  // namespace kelm
