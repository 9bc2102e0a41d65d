#pragma once

#include <stdexcept>
#include <string>

#include "platform/system/Error.h"
#include "text/Text.h"

namespace test_support {

/// Throws std::runtime_error with the text `problem` if something failed without which the test cannot go on.
inline void Require(bool hasSucceeded, const std::string& problem) {
    if (!hasSucceeded) {
        throw std::runtime_error(problem);
    }
}

/// The same; the text also has the reason of the system.
inline void Require(const platform::Error& result, const std::string& problem) {
    if (!result) {
        throw std::runtime_error(problem + ": " + text::ToUtf8(result.Text()));
    }
}

} // namespace test_support
