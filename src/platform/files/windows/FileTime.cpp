#include "platform/files/FileTime.h"

namespace platform {

std::int64_t LastWriteTime(const FileStamp& stamp) {
    // Windows counts 100 ns since 1601-01-01.
    constexpr std::int64_t unitsPerSecond = 10'000'000;
    constexpr std::int64_t secondsFrom1601To1970 = 11'644'473'600;
    return stamp.lastWrite / unitsPerSecond - secondsFrom1601To1970;
}

} // namespace platform
