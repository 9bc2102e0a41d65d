#pragma once

#include <cstdio>
#include <cstdlib>

namespace fuzz {

/// Ends the process if a property does not hold, so that the fuzzer saves the input.
inline void Require(bool holds, const char* property) {
    if (!holds) {
        std::fprintf(stderr, "A property does not hold: %s\n", property);
        std::fflush(stderr);
        std::abort();
    }
}

} // namespace fuzz
