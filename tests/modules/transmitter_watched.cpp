#include "CommonControllerLib/Export.h"

namespace {

/// Tells a test when the module is unloaded. What a transmitter module exports it has not.
struct UnloadWatch {
    UnloadWatch() = default;
    UnloadWatch(const UnloadWatch&) = delete;
    UnloadWatch& operator=(const UnloadWatch&) = delete;
    ~UnloadWatch() {
        if (isUnloaded != nullptr) {
            *isUnloaded = true;
        }
    }

    bool* isUnloaded = nullptr;
};

UnloadWatch watch;

} // namespace

extern "C" CONTROLLER_API void WatchUnload(bool* isUnloaded) {
    watch.isUnloaded = isUnloaded;
}
