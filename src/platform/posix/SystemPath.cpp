#include "platform/posix/SystemPath.h"

#include <algorithm>

#include "platform/NativePath.h"
#include "platform/PathRoot.h"
#include "platform/Text.h"

namespace platform {

std::string SystemPath(const std::wstring& path) {
    return NamesNothing(path) ? std::string() : ToUtf8(ToNativeText(path));
}

std::wstring LibraryPath(const std::string& systemPath) {
    std::wstring path = FromUtf8(systemPath);
    std::replace(path.begin(), path.end(), L'/', L'\\');
    return path;
}

} // namespace platform
