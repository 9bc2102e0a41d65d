#include "platform/system/Environment.h"

#include <csignal>
#include <cstdlib>
#include <memory>
#include <vector>

#include <malloc.h>
#include <pwd.h>
#include <unistd.h>

#include "platform/files/NativePath.h"
#include "platform/files/posix/SystemPath.h"
#include "text/Text.h"

namespace platform {
namespace {

/// The value of a variable if it is an absolute path; XDG requires other values to be ignored.
std::wstring DirectoryFromEnvironment(const std::wstring& name) {
    const std::wstring value = GetEnvironment(name).value_or(std::wstring());
    return IsAbsolute(value) ? ResolveAgainst({}, value) : std::wstring();
}

std::wstring HomeDirectoryOfAccount() {
    std::vector<char> buffer(16 * 1024);
    passwd entry = {};
    passwd* found = nullptr;
    const int code = getpwuid_r(geteuid(), &entry, buffer.data(), buffer.size(), &found);
    return code == 0 && found != nullptr ? LibraryPath(found->pw_dir) : std::wstring();
}

std::wstring DirectoryBelowHome(const std::wstring& relativePath) {
    std::wstring home = DirectoryFromEnvironment(L"HOME");
    if (home.empty()) {
        home = HomeDirectoryOfAccount();
    }
    return home.empty() ? home : ResolveAgainst(home, relativePath);
}

struct FreeDeleter {
    void operator()(char* text) const { std::free(text); }
};

} // namespace

// The default asks the processor what it supports, which takes long in a virtual machine.
const char* const randomSource = "getentropy";

std::optional<std::wstring> ReadVariable(const std::wstring& name) {
    const char* const value = std::getenv(text::ToUtf8(name).c_str());
    return value == nullptr ? std::nullopt : std::optional(text::FromUtf8(value));
}

void WriteVariable(const std::wstring& name, const std::wstring& value) {
    setenv(text::ToUtf8(name).c_str(), text::ToUtf8(value).c_str(), 1);
}

void RemoveVariable(const std::wstring& name) {
    unsetenv(text::ToUtf8(name).c_str());
}

std::vector<std::wstring> ProgramArguments(int count, const char* const* values) {
    std::vector<std::wstring> arguments;
    for (int i = 1; i < count; ++i) {
        arguments.push_back(text::FromUtf8(values[i]));
    }
    return arguments;
}

const wchar_t* const applicationDirectoryName = L"common_controller";

std::wstring UserConfigurationDirectory() {
    const std::wstring directory = DirectoryFromEnvironment(L"XDG_CONFIG_HOME");
    return directory.empty() ? DirectoryBelowHome(L".config") : directory;
}

std::wstring UserDataDirectory() {
    const std::wstring directory = DirectoryFromEnvironment(L"XDG_DATA_HOME");
    return directory.empty() ? DirectoryBelowHome(L".local\\share") : directory;
}

std::wstring TemporaryDirectory() {
    const std::wstring directory = DirectoryFromEnvironment(L"TMPDIR");
    return directory.empty() ? L"\\tmp" : directory;
}

std::wstring CurrentDirectory() {
    const std::unique_ptr<char, FreeDeleter> directory(getcwd(nullptr, 0));
    return directory ? LibraryPath(directory.get()) : std::wstring();
}

std::wstring ProgramDirectory() {
    std::string program(4096, '\0');
    const ssize_t length = readlink("/proc/self/exe", program.data(), program.size());
    program.resize(length < 0 ? 0 : static_cast<std::size_t>(length));
    return ParentDirectory(LibraryPath(program));
}

/// glibc raises its mmap threshold with each large block that is freed; later blocks of that size then stay in the
/// heap, pinned by small allocations behind them. A fixed threshold prevents this.
void TrimHeapEagerly() {
    constexpr int large = 128 * 1024;
    mallopt(M_MMAP_THRESHOLD, large);
    mallopt(M_TRIM_THRESHOLD, large);
}

void ReleaseFreeMemory() {
    malloc_trim(0);
}

void IgnoreFileSizeSignal() {
    std::signal(SIGXFSZ, SIG_IGN);
}

} // namespace platform
