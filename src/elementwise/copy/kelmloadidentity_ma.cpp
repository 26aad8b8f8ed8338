// kelmLoadIdentity_ma: identity matrices into an array.
#include "args.h"

namespace kelm {
// The 32f pointer member tests its shift before count, the 64f one after it.
KELM_IDENTITY((nul, siz, shf, cnt, obj), (nul, siz, cnt, shf, obj))
}  // namespace kelm
