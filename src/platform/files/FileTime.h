#pragma once

#include <cstdint>

#include "platform/files/FileSystem.h"

namespace platform {

/// The time of the last write. Units: seconds since 1970-01-01 UTC.
std::int64_t LastWriteTime(const FileStamp& stamp);

} // namespace platform
