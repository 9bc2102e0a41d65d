#pragma once

#include <string>

namespace platform {

/// The bytes of a path as the kernel takes them. A path with an embedded U+0000 gives the empty path, which to every
/// system call names nothing.
std::string SystemPath(const std::wstring& path);

/// Library text (backslashes) for a path that the system gave.
std::wstring LibraryPath(const std::string& systemPath);

} // namespace platform
