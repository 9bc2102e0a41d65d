#include "platform/files/FileLock.h"

#include <utility>

namespace platform {

FileLock::FileLock(FileLock&& other) noexcept
    : handle(std::exchange(other.handle, invalidHandle)), place(std::move(other.place)) {}

FileLock& FileLock::operator=(FileLock&& other) noexcept {
    if (this != &other) {
        Release();
        handle = std::exchange(other.handle, invalidHandle);
        place = std::move(other.place);
    }
    return *this;
}

} // namespace platform
