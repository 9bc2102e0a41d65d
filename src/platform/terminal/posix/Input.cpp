#include "platform/terminal/Input.h"

#include <cerrno>

#include <unistd.h>

namespace platform {

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
