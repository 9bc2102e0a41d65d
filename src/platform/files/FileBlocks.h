#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/system/Error.h"

namespace platform {

/// What becomes of the rest of a file after one block.
enum class Reading { GoOn, Stop };

/// Reads a regular file from its beginning and passes it on in blocks of at most 1 MiB, so that the memory does not
/// depend on its size. After `Reading::Stop` the rest is not read, which is no error. Fails with `NotSupported` for
/// anything but a file, with `InUse` if the file changes meanwhile (size or time of the last write).
Error ReadFileInBlocks(const std::wstring& path, const std::function<Reading(std::string_view block)>& visit);

} // namespace platform
