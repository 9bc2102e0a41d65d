#include "kit/SystemHelpers.h"

#include <cstdlib>
#include <ctime>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/files/NativePath.h"
#include "platform/system/Environment.h"
#include "text/Text.h"

namespace {

std::string Bytes(const std::wstring& path) {
    return text::ToUtf8(platform::ToNativeText(path));
}

} // namespace

bool OnWindows() {
    return false;
}

bool MakeLink(const std::wstring& target, const std::wstring& link) {
    return symlink(Bytes(target).c_str(), Bytes(link).c_str()) == 0;
}

void MakeReadOnly(const std::wstring& path) {
    SetPermissions(path, 0555);
}

std::optional<std::uint32_t> PermissionsOf(const std::wstring& path) {
    struct stat status = {};
    return stat(Bytes(path).c_str(), &status) == 0 ? std::optional<std::uint32_t>(status.st_mode & 0777) : std::nullopt;
}

void SetPermissions(const std::wstring& path, std::uint32_t permissions) {
    chmod(Bytes(path).c_str(), permissions);
}

void LetEverybodyWrite(const std::wstring& path) {
    SetPermissions(path, 0777);
}

bool GiveAway(const std::wstring& path) {
    constexpr uid_t nobody = 65534;
    return geteuid() == 0 && chown(Bytes(path).c_str(), nobody, nobody) == 0;
}

bool MakeFileOfBytes(const std::wstring& directory, const std::string& name) {
    const int descriptor = open((Bytes(directory) + "/" + name).c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    return descriptor != -1 && close(descriptor) == 0;
}

bool MakeNamedPipe(const std::wstring& path) {
    return mkfifo(Bytes(path).c_str(), 0600) == 0;
}

ScopedTimeZone::ScopedTimeZone(const char* zone) {
    setenv("TZ", zone, 1);
    tzset();
}

ScopedTimeZone::~ScopedTimeZone() {
    unsetenv("TZ");
    tzset();
}

ScopedCurrentDirectory::ScopedCurrentDirectory(const std::wstring& directory) : previous(platform::CurrentDirectory()) {
    EXPECT_EQ(chdir(Bytes(directory).c_str()), 0);
}

ScopedCurrentDirectory::~ScopedCurrentDirectory() {
    EXPECT_EQ(chdir(Bytes(previous).c_str()), 0);
}

ScopedOpenFileLimit::ScopedOpenFileLimit(std::uint64_t limit) {
    rlimit current = {};
    getrlimit(RLIMIT_NOFILE, &current);
    previous = current.rlim_cur;
    current.rlim_cur = limit;
    setrlimit(RLIMIT_NOFILE, &current);
}

ScopedOpenFileLimit::~ScopedOpenFileLimit() {
    rlimit current = {};
    getrlimit(RLIMIT_NOFILE, &current);
    current.rlim_cur = previous;
    setrlimit(RLIMIT_NOFILE, &current);
}

FileHold::FileHold(const std::wstring& path) : handle(open(Bytes(path).c_str(), O_RDONLY | O_CLOEXEC)) {}

FileHold::~FileHold() {
    close(static_cast<int>(handle));
}

bool FileHold::Protects() {
    return false;
}

RedirectedOutput::RedirectedOutput(std::intptr_t target) : previous(dup(STDOUT_FILENO)) {
    dup2(static_cast<int>(target), STDOUT_FILENO);
    close(static_cast<int>(target));
}

RedirectedOutput RedirectedOutput::ToFile(const std::wstring& path) {
    return RedirectedOutput(open(Bytes(path).c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
}

RedirectedOutput RedirectedOutput::ToUnwritable() {
    return RedirectedOutput(open("/dev/full", O_WRONLY | O_CLOEXEC));
}

RedirectedOutput RedirectedOutput::ToBrokenPipe() {
    int ends[2] = {-1, -1};
    if (pipe(ends) == 0) {
        close(ends[0]);
    }
    return RedirectedOutput(ends[1]);
}

RedirectedOutput::~RedirectedOutput() {
    dup2(static_cast<int>(previous), STDOUT_FILENO);
    close(static_cast<int>(previous));
}
