#include "table.h"

#include <cstring>

namespace kg {

const std::vector<Op>& ops()
{
#define KELM_PARAMS(...) std::vector<Param>{__VA_ARGS__}
#define KELM_GROUPS(...) std::vector<Group>{__VA_ARGS__}
#define KELM_OP(NAME, FAMILY, ESIZE, DESC, ARRAY, CALL, PARAMS, GROUPS) \
    Op{#NAME, FAMILY, ESIZE, DESC, ARRAY, CALL, PARAMS, GROUPS},
    static const std::vector<Op> table{
#include "ops.inc"
    };
#undef KELM_OP
#undef KELM_GROUPS
#undef KELM_PARAMS
    return table;
}

const Op* find(const char* name)
{
    for (const Op& op : ops())
        if (std::strcmp(op.name, name) == 0) return &op;
    return nullptr;
}

}  // namespace kg
