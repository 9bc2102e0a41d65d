#include "platform/terminal/Input.h"

#include <algorithm>

#include <windows.h>

namespace platform {

bool IsInputTerminal() {
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(STD_INPUT_HANDLE), &mode) != 0;
}

Error ReadInput(char* buffer, std::size_t capacity, std::size_t& count) {
    constexpr std::size_t largestRead = std::size_t{1} << 20;
    DWORD taken = 0;
    const bool isRead = ReadFile(GetStdHandle(STD_INPUT_HANDLE), buffer,
                                 static_cast<DWORD>(std::min(capacity, largestRead)), &taken, nullptr) != 0;
    count = isRead ? taken : 0;
    // The writer of a pipe that has closed it: the end of the input.
    return isRead || GetLastError() == ERROR_BROKEN_PIPE ? Error() : LastError();
}

} // namespace platform
