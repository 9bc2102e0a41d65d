#include "../system_calls.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>

#include <spawn.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// The bytes of a path, in UTF-8. A byte of a name that is not valid UTF-8 has become an element from U+DC80 to U+DCFF.
std::string Bytes(const std::wstring& path) {
    std::string bytes;
    const auto append = [&bytes](unsigned long value) { bytes += static_cast<char>(value); };
    for (const wchar_t element : path) {
        const auto code = static_cast<unsigned long>(element);
        if (code < 0x80) {
            append(code);
        } else if (code >= 0xDC80 && code <= 0xDCFF) {
            append(code & 0xFF);
        } else {
            if (code >= 0x10000) {
                append(0xF0 | (code >> 18));
                append(0x80 | ((code >> 12) & 0x3F));
            } else if (code >= 0x800) {
                append(0xE0 | (code >> 12));
            }
            append(code >= 0x800 ? 0x80 | ((code >> 6) & 0x3F) : 0xC0 | (code >> 6));
            append(0x80 | (code & 0x3F));
        }
    }
    return bytes;
}

/// The text of a system error, which is ASCII in the "C" locale.
std::wstring ErrorText(int code) {
    const std::string text = std::strerror(code);
    return {text.begin(), text.end()};
}

} // namespace

std::wstring NativePath(std::wstring path) {
    std::replace(path.begin(), path.end(), L'\\', L'/');
    return path;
}

bool MakeDirectory(const std::wstring& path) {
    const std::filesystem::path directory = Bytes(path);
    std::error_code ignored;
    std::filesystem::create_directories(directory.parent_path(), ignored);
    return mkdir(directory.c_str(), S_IRWXU) == 0 || errno == EEXIST;
}

std::uint64_t StartProgram(const std::wstring& program, const std::wstring& argument, const std::wstring& directory,
                           std::wstring& problem) {
    std::string words[] = {Bytes(program), Bytes(argument)};
    char* arguments[] = {words[0].data(), words[1].data(), nullptr};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addchdir_np(&actions, Bytes(directory).c_str());
    pid_t child = 0;
    const int failure = posix_spawn(&child, arguments[0], &actions, nullptr, arguments, environ);
    posix_spawn_file_actions_destroy(&actions);
    if (failure != 0) {
        problem = ErrorText(failure);
        return 0;
    }
    const long descriptor = syscall(SYS_pidfd_open, child, 0);
    if (descriptor <= 0) {
        problem = ErrorText(errno);
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        return 0;
    }
    return static_cast<std::uint64_t>(descriptor);
}
