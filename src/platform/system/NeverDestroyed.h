#pragma once

#include <memory>

namespace platform {

/// Makes an object that stays until the process has gone, for a static reference: others may use it while statics are
/// destroyed.
template <typename Object>
Object& MakeNeverDestroyed() {
    return *std::make_unique<Object>().release();
}

} // namespace platform
