#include "scenarios/FolderLink.h"

#include "platform/NativePath.h"
#include "platform/Text.h"

#include <unistd.h>

bool MakeFolderLink(const std::wstring& link, const std::wstring& target) {
    const auto native = [](const std::wstring& path) { return platform::ToUtf8(platform::ToNativeText(path)); };
    return symlink(native(target).c_str(), native(link).c_str()) == 0;
}
