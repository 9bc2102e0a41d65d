#include "platform/FileLock.h"

#include <utility>

namespace platform {

FileLock::FileLock(FileLock&& other) noexcept : handle(std::exchange(other.handle, invalidHandle)) {}

FileLock& FileLock::operator=(FileLock&& other) noexcept {
    if (this != &other) {
        Release();
        handle = std::exchange(other.handle, invalidHandle);
    }
    return *this;
}

} // namespace platform
