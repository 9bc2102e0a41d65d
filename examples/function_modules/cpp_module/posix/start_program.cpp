#include "../start_program.h"

#include <cerrno>
#include <csignal>
#include <cstring>

#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

std::uint64_t StartProgram(const std::string& program, const std::string& argument, const std::string& directory,
                           std::string& problem) {
    std::string words[] = {program, argument};
    char* arguments[] = {words[0].data(), words[1].data(), nullptr};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addchdir_np(&actions, directory.c_str());
    pid_t child = 0;
    const int failure = posix_spawn(&child, program.c_str(), &actions, nullptr, arguments, environ);
    posix_spawn_file_actions_destroy(&actions);
    if (failure != 0) {
        problem = std::strerror(failure);
        return 0;
    }
    const long descriptor = syscall(SYS_pidfd_open, child, 0);
    if (descriptor <= 0) {
        problem = std::strerror(errno);
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        return 0;
    }
    return static_cast<std::uint64_t>(descriptor);
}
