// kelmCopy_va: arrays of vectors between any two descriptions.
#include "args.h"

namespace kelm {
#define O KELM_COPY_ORDER
#define O_SHF KELM_COPY_ORDER_SHIFTS_FIRST
KELM_COPY(va, S, S, O, O)
KELM_COPY(va, S, P, O_SHF, O)  // 32f tests the shifts first; 64f does not
KELM_COPY(va, S, L, O, O)
KELM_COPY(va, P, S, O, O)
KELM_COPY(va, P, P, O_SHF, O_SHF)
KELM_COPY(va, P, L, O, O)
KELM_COPY(va, L, S, O, O)
KELM_COPY(va, L, P, O_SHF, O)  // 32f tests the shifts first; 64f does not
KELM_COPY(va, L, L, O, O)
}  // namespace kelm
