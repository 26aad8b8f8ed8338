// The library's identification record.
#include "kelm.h"

namespace {
const KelLibVersion libVersion = {
    5, 2, 108, 345, {'v', '8', '\0', '\0'}, "libkelmv8.so.5.2", "5.2", "Jul 11 2007",
};
}

extern "C" KELM_API const KelLibVersion* kelmGetLibVersion(void) { return &libVersion; }
