// The table as static data: one parameter array, one group array and one call
// thunk per operation, then the operations themselves.
#include "table.h"

#include <cstring>

namespace kg {
namespace {

#define KELM_PARAMS(...) __VA_ARGS__
#define KELM_GROUPS(...) __VA_ARGS__
#define KELM_OP(NAME, FAMILY, ESIZE, DESC, ARRAY, CALL, PARAMS, GROUPS) \
    const Param NAME##_params[] = {PARAMS};                             \
    const Group NAME##_groups[] = {GROUPS};                             \
    constexpr Call NAME##_call = CALL;
#include "ops.inc"
#undef KELM_OP

template <class T, std::size_t N>
constexpr Span<T> span(const T (&a)[N]) { return {a, N}; }

#define KELM_OP(NAME, FAMILY, ESIZE, DESC, ARRAY, CALL, PARAMS, GROUPS) \
    {#NAME, FAMILY, ESIZE, DESC, ARRAY, NAME##_call, span(NAME##_params), span(NAME##_groups)},
const Op table[] = {
#include "ops.inc"
};
#undef KELM_OP
#undef KELM_GROUPS
#undef KELM_PARAMS

}  // namespace

const Span<Op>& ops()
{
    static const Span<Op> all = span(table);
    return all;
}

const Op* find(const char* name)
{
    for (const Op& op : ops())
        if (std::strcmp(op.name, name) == 0) return &op;
    return nullptr;
}

}  // namespace kg
