#include "platform/terminal/Console.h"

#include <algorithm>
#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/system/Environment.h"
#include "platform/system/posix/Descriptor.h"

namespace platform {
namespace {

/// True if writing can continue after a failed write.
bool WaitUntilWritable(int descriptor) {
    if (errno != EAGAIN) {
        return errno == EINTR;
    }
    pollfd writable = {descriptor, POLLOUT, 0};
    return poll(&writable, 1, -1) == 1 || errno == EINTR;
}

/// While it exists, a write to a pipe without a reader fails with EPIPE and raises no signal. Child processes do not
/// inherit this, as they would if the signal were ignored for the whole process.
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

Error WriteAll(int descriptor, std::string_view bytes) {
    const BrokenPipeGuard guard;
    while (!bytes.empty()) {
        const ssize_t written = write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && !WaitUntilWritable(descriptor)) {
            return LastError();
        }
        bytes.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(written, 0)));
    }
    return {};
}

/// Otherwise the next opened file would get the lowest free descriptor, and standard output would end up in a log or a
/// socket. A stream opened for the wrong direction fails like a closed one.
void OccupyClosedStreams() {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(descriptor, F_GETFD) < 0 && errno == EBADF) {
            open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY);
        }
    }
}

/// The write-only end of a pipe: poll signals it only when the last reader has closed.
bool IsWriteEndOfPipe(int descriptor) {
    struct stat status {};
    const int flags = fcntl(descriptor, F_GETFL);
    return fstat(descriptor, &status) == 0 && S_ISFIFO(status.st_mode) && flags >= 0 && (flags & O_ACCMODE) == O_WRONLY;
}

/// All zero if unknown.
winsize TerminalSize() {
    winsize size = {};
    return ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 ? size : winsize{};
}

} // namespace

// A Linux terminal already takes UTF-8 without line end conversion.
void PrepareConsole() {
    OccupyClosedStreams();
    MakeWideOutputUtf8();
}

bool IsOutputTerminal() {
    const std::wstring kind = GetEnvironment(L"TERM").value_or(std::wstring());
    return isatty(STDOUT_FILENO) == 1 && !kind.empty() && kind != L"dumb";
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

Error WriteOutput(std::string_view utf8) {
    return WriteAll(STDOUT_FILENO, utf8);
}

bool IsReaderGone(const Error& failedWrite) {
    return failedWrite.systemCode == EPIPE;
}

void* OutputReaderGone() {
    return IsWriteEndOfPipe(STDOUT_FILENO) ? HandleOf(STDOUT_FILENO) : nullptr;
}

void WriteErrorOutput(std::string_view utf8) {
    (void)WriteAll(STDERR_FILENO, utf8);
}

bool IsInputTerminal() {
    return isatty(STDIN_FILENO) == 1;
}

Error ReadInput(char* buffer, std::size_t capacity, std::size_t& count) {
    ssize_t taken = read(STDIN_FILENO, buffer, capacity);
    while (taken < 0 && errno == EINTR) {
        taken = read(STDIN_FILENO, buffer, capacity);
    }
    count = taken < 0 ? 0 : static_cast<std::size_t>(taken);
    return taken < 0 ? LastError() : Error();
}

} // namespace platform
