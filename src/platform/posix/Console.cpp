#include "platform/Console.h"

#include <algorithm>
#include <cerrno>

#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include "platform/Environment.h"

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

void WriteAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && !WaitUntilWritable(descriptor)) {
            return;
        }
        bytes.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(written, 0)));
    }
}

} // namespace

// UTF-8 without any change of line ends is what a terminal here takes anyway.
void PrepareConsole() {}

bool IsOutputTerminal() {
    return isatty(STDOUT_FILENO) == 1 && GetEnvironment(L"TERM") != L"dumb";
}

std::size_t TerminalWidth() {
    constexpr std::size_t usualWidth = 80;
    winsize size = {};
    const bool known = ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col != 0;
    return known ? size.ws_col : usualWidth;
}

void WriteOutput(std::string_view utf8) {
    WriteAll(STDOUT_FILENO, utf8);
}

void WriteErrorOutput(std::string_view utf8) {
    WriteAll(STDERR_FILENO, utf8);
}

} // namespace platform
