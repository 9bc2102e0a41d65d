#include "platform/files/Directories.h"

#include <cstdlib>
#include <memory>
#include <vector>

#include <pwd.h>
#include <unistd.h>

#include "platform/files/NativePath.h"
#include "platform/files/posix/SystemPath.h"
#include "platform/system/Environment.h"

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

} // namespace platform
