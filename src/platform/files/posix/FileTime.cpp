#include "platform/files/FileTime.h"

namespace platform {

std::int64_t LastWriteTime(const FileStamp& stamp) {
    return stamp.lastWrite / 1'000'000'000;
}

} // namespace platform
