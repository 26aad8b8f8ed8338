// The work-buffer size queries.
#include "args.h"

namespace kelm {
KELM_FOR_TYPES(KELM_EIG_BUFSIZE_T, _)
}  // namespace kelm
