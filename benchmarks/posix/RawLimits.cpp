#include "../RawLimits.h"

#include <array>
#include <cerrno>
#include <memory>
#include <system_error>

#include <dirent.h>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace raw_limits {
namespace {

int Checked(int result, const char* what) {
    if (result < 0) {
        throw std::system_error(errno, std::generic_category(), what);
    }
    return result;
}

void WriteAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(file, bytes.data(), bytes.size());
        Checked(written > 0 ? 0 : -1, "write");
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

bool IsDots(const char* name) {
    return std::string_view(name) == "." || std::string_view(name) == "..";
}

/// Calls `visit` with the descriptor of the directory and the name of each file; returns the number of files.
template <class Visit>
std::size_t Walk(const std::string& path, const Visit& visit) {
    const std::unique_ptr<DIR, int (*)(DIR*)> directory(::opendir(path.c_str()), &::closedir);
    std::size_t count = 0;
    while (const dirent* entry = directory ? ::readdir(directory.get()) : nullptr) {
        if (entry->d_type == DT_DIR) {
            count += IsDots(entry->d_name) ? 0 : Walk(path + "/" + entry->d_name, visit);
        } else {
            visit(::dirfd(directory.get()), entry->d_name);
            ++count;
        }
    }
    return count;
}

void ReadWhole(int directory, const char* name) {
    std::array<char, 4096> bytes;
    const int file = Checked(::openat(directory, name, O_RDONLY | O_CLOEXEC), "openat");
    while (Checked(static_cast<int>(::read(file, bytes.data(), bytes.size())), "read") > 0) {
    }
    ::close(file);
}

} // namespace

void WriteAndRename(const std::string& path, std::string_view bytes, bool flush) {
    const std::string temporary = path + ".raw";
    const int file = Checked(::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600), "open");
    WriteAll(file, bytes);
    if (flush) {
        Checked(::fdatasync(file), "fdatasync");
    }
    ::close(file);
    Checked(::rename(temporary.c_str(), path.c_str()), "rename");
}

std::size_t CountFiles(const std::string& path) {
    return Walk(path, [](int, const char*) {});
}

std::size_t CountAndReadFiles(const std::string& path, std::string_view ending) {
    return Walk(path, [ending](int directory, const char* name) {
        if (std::string_view(name).ends_with(ending)) {
            ReadWhole(directory, name);
        }
    });
}

void SpawnAndWait(const std::string& program) {
    std::string name = program;
    char* arguments[] = {name.data(), nullptr};
    pid_t child = 0;
    if (const int error = ::posix_spawn(&child, program.c_str(), nullptr, nullptr, arguments, environ); error != 0) {
        throw std::system_error(error, std::generic_category(), "posix_spawn");
    }
    const int descriptor = Checked(static_cast<int>(::syscall(SYS_pidfd_open, child, 0)), "pidfd_open");
    pollfd ended{descriptor, POLLIN, 0};
    Checked(::poll(&ended, 1, -1), "poll");
    siginfo_t information{};
    Checked(::waitid(P_PIDFD, static_cast<id_t>(descriptor), &information, WEXITED), "waitid");
    ::close(descriptor);
}

} // namespace raw_limits
