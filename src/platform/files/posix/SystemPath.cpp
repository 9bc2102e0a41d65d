#include "platform/files/posix/SystemPath.h"

#include <algorithm>

#include "platform/files/NativePath.h"
#include "platform/files/PathRoot.h"
#include "text/Text.h"

namespace platform {

std::string SystemPath(const std::wstring& path) {
    return NamesNothing(path) ? std::string() : text::ToUtf8(ToNativeText(path));
}

std::wstring LibraryPath(const std::string& systemPath) {
    std::wstring path = text::FromUtf8(systemPath);
    std::replace(path.begin(), path.end(), L'/', L'\\');
    return path;
}

} // namespace platform
