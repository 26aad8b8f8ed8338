// The harness that every family's workload file registers with.
#pragma once

#include "job.h"
#include "kelm.h"

namespace kb {

// A library workload: the calls that do the job's work, returning the first
// status that is not kelOk.
using LibFn = kelStatus (*)(const Job&);

struct WorkloadDef {
    Workload id;
    const char* name;  // e.g. "Mul_mama"
    LibFn lib;
    bool streaming;  // stated as a fraction of copy bandwidth at large counts
    bool (*accepts)(int elem, int n) = nullptr;  // null: every type and order
};

// Called from a static initialiser in each workload file.
bool register_workload(const WorkloadDef& def);

}  // namespace kb
