#include "platform/files/Directories.h"

#include <windows.h>

#include <shlobj.h>

#include "platform/files/NativePath.h"
#include "platform/system/Environment.h"

namespace platform {
namespace {

std::wstring KnownDirectory(const KNOWNFOLDERID& id) {
    wchar_t* text = nullptr;
    const HRESULT result = SHGetKnownFolderPath(id, KF_FLAG_DONT_VERIFY, nullptr, &text);
    const std::wstring directory = SUCCEEDED(result) ? text : L"";
    CoTaskMemFree(text);
    return directory;
}

/// The environment variable has precedence, so that users and tests can redirect the directory.
std::wstring UserDirectory(const std::wstring& variable, const KNOWNFOLDERID& id) {
    const std::wstring value = GetEnvironment(variable).value_or(std::wstring());
    const std::wstring directory = IsAbsolute(value) ? value : KnownDirectory(id);
    return directory.empty() ? directory : ResolveAgainst({}, directory);
}

/// The result of a function that takes a size and a buffer, and returns the required size.
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

const wchar_t* const applicationDirectoryName = L"CommonController";

std::wstring UserConfigurationDirectory() {
    return UserDirectory(L"APPDATA", FOLDERID_RoamingAppData);
}

std::wstring UserDataDirectory() {
    return UserDirectory(L"LOCALAPPDATA", FOLDERID_LocalAppData);
}

std::wstring TemporaryDirectory() {
    const std::wstring directory = Answer([](DWORD size, wchar_t* buffer) { return GetTempPathW(size, buffer); });
    return directory.empty() ? directory : ResolveAgainst({}, directory);
}

std::wstring CurrentDirectory() {
    const std::wstring directory =
        Answer([](DWORD size, wchar_t* buffer) { return GetCurrentDirectoryW(size, buffer); });
    return directory.empty() ? directory : ResolveAgainst({}, directory);
}

std::wstring ProgramDirectory() {
    std::wstring program(32 * 1024, L'\0');
    program.resize(GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size())));
    return ParentDirectory(program);
}

} // namespace platform
