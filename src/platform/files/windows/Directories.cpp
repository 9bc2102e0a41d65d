#include "platform/files/Directories.h"

#include <windows.h>

#include <shlobj.h>

#include "platform/files/NativePath.h"
#include "platform/system/Environment.h"

namespace platform {
namespace {

std::wstring KnownFolder(const KNOWNFOLDERID& id) {
    wchar_t* text = nullptr;
    const HRESULT result = SHGetKnownFolderPath(id, KF_FLAG_DONT_VERIFY, nullptr, &text);
    const std::wstring folder = SUCCEEDED(result) ? text : L"";
    CoTaskMemFree(text);
    return folder;
}

/// The variable first: it is what a user or a test turns to another place.
std::wstring UserFolder(const std::wstring& variable, const KNOWNFOLDERID& id) {
    const std::wstring value = GetEnvironment(variable).value_or(std::wstring());
    const std::wstring folder = IsAbsolute(value) ? value : KnownFolder(id);
    return folder.empty() ? folder : ResolveAgainst({}, folder);
}

/// The answer of a call that takes a size and a buffer, and tells the size that it needs.
template <typename Call>
std::wstring Answer(Call call) {
    std::wstring text(MAX_PATH, L'\0');
    DWORD length = call(DWORD{MAX_PATH}, text.data());
    if (length > text.size()) {
        text.resize(length);
        length = call(length, text.data());
    }
    text.resize(length);
    return text;
}

} // namespace

const wchar_t* const applicationFolderName = L"CommonController";

std::wstring UserConfigurationFolder() {
    return UserFolder(L"APPDATA", FOLDERID_RoamingAppData);
}

std::wstring UserDataFolder() {
    return UserFolder(L"LOCALAPPDATA", FOLDERID_LocalAppData);
}

std::wstring TemporaryFolder() {
    const std::wstring folder = Answer([](DWORD size, wchar_t* buffer) { return GetTempPathW(size, buffer); });
    return folder.empty() ? folder : ResolveAgainst({}, folder);
}

std::wstring CurrentFolder() {
    const std::wstring folder = Answer([](DWORD size, wchar_t* buffer) { return GetCurrentDirectoryW(size, buffer); });
    return folder.empty() ? folder : ResolveAgainst({}, folder);
}

std::wstring ProgramFolder() {
    std::wstring program(32 * 1024, L'\0');
    program.resize(GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size())));
    return ParentFolder(program);
}

} // namespace platform
