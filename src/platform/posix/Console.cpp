#include "platform/Console.h"

#include <algorithm>
#include <cerrno>
#include <csignal>

#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include "platform/Environment.h"
#include "platform/WideOutput.h"

namespace platform {
namespace {

/// True when writing can go on after a failed write.
bool WaitUntilWritable(int descriptor) {
    if (errno != EAGAIN) {
        return errno == EINTR;
    }
    pollfd writable = {descriptor, POLLOUT, 0};
    return poll(&writable, 1, -1) == 1 || errno == EINTR;
}

/// While it lives, a write to a pipe without a reader fails with EPIPE and ends nobody. Child processes inherit nothing
/// of it, as they would if the signal were ignored for the whole process.
class BrokenPipeGuard {
public:
    BrokenPipeGuard() {
        sigemptyset(&brokenPipe);
        sigaddset(&brokenPipe, SIGPIPE);
        pthread_sigmask(SIG_BLOCK, &brokenPipe, &previousMask);
    }
    ~BrokenPipeGuard() {
        if (sigismember(&previousMask, SIGPIPE) == 0) {
            const timespec atOnce = {};
            sigtimedwait(&brokenPipe, nullptr, &atOnce);
        }
        pthread_sigmask(SIG_SETMASK, &previousMask, nullptr);
    }
    BrokenPipeGuard(const BrokenPipeGuard&) = delete;
    BrokenPipeGuard& operator=(const BrokenPipeGuard&) = delete;

private:
    sigset_t brokenPipe;
    sigset_t previousMask;
};

void WriteAll(int descriptor, std::string_view bytes) {
    const BrokenPipeGuard guard;
    while (!bytes.empty()) {
        const ssize_t written = write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && !WaitUntilWritable(descriptor)) {
            return;
        }
        bytes.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(written, 0)));
    }
}

/// All zero when it cannot be told.
winsize TerminalSize() {
    winsize size = {};
    return ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 ? size : winsize{};
}

} // namespace

// UTF-8 without any change of line ends is what a terminal here takes anyway.
void PrepareConsole() {
    MakeWideOutputUtf8();
}

bool IsOutputTerminal() {
    return isatty(STDOUT_FILENO) == 1 && GetEnvironment(L"TERM") != L"dumb";
}

std::size_t TerminalWidth() {
    constexpr std::size_t usualWidth = 80;
    const std::size_t columns = TerminalSize().ws_col;
    return columns != 0 ? columns : usualWidth;
}

std::size_t TerminalHeight() {
    constexpr std::size_t usualHeight = 24;
    const std::size_t lines = TerminalSize().ws_row;
    return lines != 0 ? lines : usualHeight;
}

void WriteOutput(std::string_view utf8) {
    WriteAll(STDOUT_FILENO, utf8);
}

void WriteErrorOutput(std::string_view utf8) {
    WriteAll(STDERR_FILENO, utf8);
}

} // namespace platform
