#include "platform/terminal/Input.h"

#include <array>

namespace platform {

std::string ReadInputLine() {
    constexpr std::size_t longestLine = 4096;
    std::string line;
    char letter = '\0';
    std::size_t count = 0;
    while (line.size() < longestLine && !ReadInput(&letter, 1, count) && count == 1 && letter != '\n') {
        line += letter;
    }
    return line;
}

Error ReadWholeInput(std::size_t most, std::string& bytes) {
    bytes.clear();
    std::array<char, 65536> block{};
    for (;;) {
        std::size_t count = 0;
        if (const Error error = ReadInput(block.data(), block.size(), count)) {
            return error;
        }
        if (count == 0) {
            return {};
        }
        if (count > most - bytes.size()) {
            return {ErrorKind::TooLarge};
        }
        bytes.append(block.data(), count);
    }
}

} // namespace platform
