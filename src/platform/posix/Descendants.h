#pragma once

#include <vector>

#include <sys/types.h>

namespace platform {

struct Descendant {
    pid_t number = 0;
    /// A child of this process itself.
    bool isChild = false;
};

/// All processes below this one at this moment, parents before their children; ended ones that nobody has reaped count.
std::vector<Descendant> ListDescendants();

} // namespace platform
