#pragma once

#include <cstddef>
#include <string>

#include "platform/system/Error.h"

namespace platform {

/// Reads the last `length` bytes of a file, or all of a shorter one; how long the file is does not matter. What another
/// process appends meanwhile may be missing. A failure leaves `bytes` as it was.
Error ReadFileEnd(const std::wstring& path, std::size_t length, std::string& bytes);

} // namespace platform
