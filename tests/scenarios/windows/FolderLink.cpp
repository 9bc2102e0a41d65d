#include "scenarios/FolderLink.h"

#include "platform/FileSystem.h"

#include <windows.h>

bool MakeFolderLink(const std::wstring& link, const std::wstring& target) {
    constexpr DWORD flags = SYMBOLIC_LINK_FLAG_DIRECTORY | SYMBOLIC_LINK_FLAG_ALLOW_UNPRIVILEGED_CREATE;
    // Wine says that it made one, and made nothing.
    return CreateSymbolicLinkW(link.c_str(), target.c_str(), flags) != 0 && platform::IsFolder(link);
}
