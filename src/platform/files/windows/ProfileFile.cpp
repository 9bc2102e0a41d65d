#include "platform/files/ProfileFile.h"

#include <windows.h>

#include "platform/files/NativePath.h"
#include "platform/files/windows/SystemPath.h"
#include "platform/system/Environment.h"

namespace platform {

std::wstring ReadProfileText(const std::wstring& path, const std::wstring& section, const std::wstring& key) {
    if (NamesNothing(path) || NamesNothing(section) || NamesNothing(key)) {
        return {};
    }
    // The system would look up a bare file name in the Windows directory.
    const std::wstring file = SystemPath(ResolveAgainst(CurrentDirectory(), path));
    wchar_t value[256] = {};
    const DWORD length =
        GetPrivateProfileStringW(section.c_str(), key.c_str(), L"", value, DWORD{std::size(value)}, file.c_str());
    return {value, length};
}

std::vector<std::wstring> ReadProfileTexts(const std::wstring& path, const std::wstring& section,
                                           const std::vector<std::wstring>& keys) {
    std::vector<std::wstring> values;
    for (const std::wstring& key : keys) {
        values.push_back(ReadProfileText(path, section, key));
    }
    return values;
}

} // namespace platform
