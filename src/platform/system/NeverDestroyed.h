#pragma once

#include <memory>

namespace platform {

/// Creates an object that is never destroyed, for a static reference: other code may use it during static destruction.
template <typename Object>
Object& MakeNeverDestroyed() {
    return *std::make_unique<Object>().release();
}

} // namespace platform
