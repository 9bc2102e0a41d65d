#pragma once

#include <cstdint>
#include <string>

namespace controller_c {

/// Why a call failed. Thrown inside this directory; the exported functions catch it.
struct Failure {
    /// One of the results of the header.
    std::int32_t result = 0;
    /// Sentences for people.
    std::wstring text;
};

} // namespace controller_c
