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

/// The value of a variable when it is an absolute path: the rules of XDG ignore anything else.
std::wstring FolderFromEnvironment(const std::wstring& name) {
    const std::wstring value = GetEnvironment(name).value_or(std::wstring());
    return IsAbsolute(value) ? ResolveAgainst({}, value) : std::wstring();
}

std::wstring HomeFolderOfAccount() {
    std::vector<char> buffer(16 * 1024);
    passwd entry = {};
    passwd* found = nullptr;
    const int code = getpwuid_r(geteuid(), &entry, buffer.data(), buffer.size(), &found);
    return code == 0 && found != nullptr ? LibraryPath(found->pw_dir) : std::wstring();
}

std::wstring FolderBelowHome(const std::wstring& relativePath) {
    std::wstring home = FolderFromEnvironment(L"HOME");
    if (home.empty()) {
        home = HomeFolderOfAccount();
    }
    return home.empty() ? home : ResolveAgainst(home, relativePath);
}

struct FreeDeleter {
    void operator()(char* text) const { std::free(text); }
};

} // namespace

const wchar_t* const applicationFolderName = L"common_controller";

std::wstring UserConfigurationFolder() {
    const std::wstring folder = FolderFromEnvironment(L"XDG_CONFIG_HOME");
    return folder.empty() ? FolderBelowHome(L".config") : folder;
}

std::wstring UserDataFolder() {
    const std::wstring folder = FolderFromEnvironment(L"XDG_DATA_HOME");
    return folder.empty() ? FolderBelowHome(L".local\\share") : folder;
}

std::wstring TemporaryFolder() {
    const std::wstring folder = FolderFromEnvironment(L"TMPDIR");
    return folder.empty() ? L"\\tmp" : folder;
}

std::wstring CurrentFolder() {
    const std::unique_ptr<char, FreeDeleter> folder(getcwd(nullptr, 0));
    return folder ? LibraryPath(folder.get()) : std::wstring();
}

std::wstring ProgramFolder() {
    std::string program(4096, '\0');
    const ssize_t length = readlink("/proc/self/exe", program.data(), program.size());
    program.resize(length < 0 ? 0 : static_cast<std::size_t>(length));
    return ParentFolder(LibraryPath(program));
}

} // namespace platform
