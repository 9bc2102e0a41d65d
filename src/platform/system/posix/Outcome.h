#pragma once

#include "platform/system/Error.h"

namespace platform {

/// The error of a system call that returns -1 on failure.
inline Error OutcomeOf(int result) {
    return result == -1 ? LastError() : Error{};
}

} // namespace platform
