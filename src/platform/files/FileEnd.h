#pragma once

#include <cstddef>
#include <string>

#include "platform/system/Error.h"

namespace platform {

/// Reads the last `length` bytes of a file, or all of a shorter one. The cost does not depend on the file's size. Bytes
/// that another process appends during the read may be missing. On failure, `bytes` is unchanged.
Error ReadFileEnd(const std::wstring& path, std::size_t length, std::string& bytes);

} // namespace platform
