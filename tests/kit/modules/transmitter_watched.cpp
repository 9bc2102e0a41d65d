#include "CommonControllerLib/Export.h"

namespace {

/// Reports the unloading of the module, which has no transmitter exports.
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
