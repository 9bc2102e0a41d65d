#pragma once

#include <string>

namespace platform {

/// The bytes of a path for system calls. A path with an embedded U+0000 yields the empty path, which names nothing.
std::string SystemPath(const std::wstring& path);

/// Library text (backslashes) for a path from the system.
std::wstring LibraryPath(const std::string& systemPath);

} // namespace platform
