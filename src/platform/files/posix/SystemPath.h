#pragma once

#include <algorithm>
#include <string>

#include "platform/files/NativePath.h"
#include "text/Text.h"

namespace platform {

/// The bytes of a path for system calls. A path with an embedded U+0000 yields the empty path, which names nothing.
inline std::string SystemPath(const std::wstring& path) {
    std::string bytes = NamesNothing(path) ? std::string() : text::ToUtf8(path);
    std::replace(bytes.begin(), bytes.end(), '\\', '/');
    return bytes;
}

/// Library text (backslashes) for a path from the system.
inline std::wstring LibraryPath(const std::string& systemPath) {
    std::wstring path = text::FromUtf8(systemPath);
    std::replace(path.begin(), path.end(), L'/', L'\\');
    return path;
}

} // namespace platform
