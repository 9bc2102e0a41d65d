#pragma once

#include "platform/system/Error.h"

namespace platform {

/// What a call of the system that returns -1 for a failure has come to.
inline Error OutcomeOf(int result) {
    return result == -1 ? LastError() : Error{};
}

} // namespace platform
