// kelmCopy_ma: arrays of matrices between any two descriptions.
#include "args.h"

namespace kelm {
#define O KELM_COPY_ORDER
#define O_SHF KELM_COPY_ORDER_SHIFTS_FIRST
KELM_COPY(ma, S, S, O, O)
KELM_COPY(ma, S, P, O, O)
KELM_COPY(ma, S, L, O, O)
KELM_COPY(ma, P, S, O, O)
KELM_COPY(ma, P, P, O_SHF, O_SHF)
KELM_COPY(ma, P, L, O, O)
KELM_COPY(ma, L, S, O, O)
KELM_COPY(ma, L, P, O, O)
KELM_COPY(ma, L, L, O, O)
}  // namespace kelm
