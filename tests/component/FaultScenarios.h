// What containers, users and devices do with the component, each made to be done while something fails, and once more.
#pragma once

#include <ostream>
#include <span>

#include "FaultRig.h"

namespace component {

struct FaultScenario {
    enum Needs { Nothing, Framework, FreshServer };
    const char* name;
    Needs needs;
    void (*prepare)(FaultRig&);
    void (*act)(FaultRig&);
    /// After it was done without a failure.
    bool (*isDone)(FaultRig&);
};

void PrintTo(const FaultScenario& scenario, std::ostream* out);
std::span<const FaultScenario> FaultScenarios();

}  // namespace component
