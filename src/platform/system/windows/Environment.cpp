#include "platform/system/Environment.h"

#include <cstdlib>

#include <windows.h>

#include <shellapi.h>
#include <shlobj.h>

#include "platform/files/NativePath.h"
#include "platform/system/windows/Handle.h"

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

const char* const randomSource = "default";

std::optional<std::wstring> ReadVariable(const std::wstring& name) {
    // The size query returns ERANGE; only the size is used.
    std::size_t size = 0;
    _wgetenv_s(&size, nullptr, 0, name.c_str());
    if (size == 0) {
        return std::nullopt;
    }
    std::wstring value(size, L'\0');
    _wgetenv_s(&size, value.data(), value.size(), name.c_str());
    value.resize(size == 0 ? 0 : size - 1);
    return value;
}

// Sets the runtime's copy, and the system's, which child processes and other runtimes in this process see.
void WriteVariable(const std::wstring& name, const std::wstring& value) {
    _wputenv_s(name.c_str(), value.c_str());
    SetEnvironmentVariableW(name.c_str(), value.c_str());
}

void RemoveVariable(const std::wstring& name) {
    _wputenv_s(name.c_str(), L"");
    SetEnvironmentVariableW(name.c_str(), nullptr);
}

// The narrow arguments have lost the characters outside the code page, so the wide command line is read instead.
std::vector<std::wstring> ProgramArguments(int, const char* const*) {
    int count = 0;
    const LocalMemory<wchar_t*> values(CommandLineToArgvW(GetCommandLineW(), &count));
    std::vector<std::wstring> arguments;
    for (int i = 1; values && i < count; ++i) {
        arguments.emplace_back(values.get()[i]);
    }
    return arguments;
}

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

/// The heap of Windows already returns large blocks.
void TrimHeapEagerly() {}

void ReleaseFreeMemory() {}

void IgnoreFileSizeSignal() {}

} // namespace platform
