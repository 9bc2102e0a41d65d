#pragma once

#include <cstddef>
#include <string>

#include "platform/system/Error.h"

/// Standard input. Threads: one at a time.
namespace platform {

/// True if standard input is a terminal.
bool IsInputTerminal();

/// Reads at most `capacity` bytes of standard input, and waits until there are some; `count` is 0 at its end.
Error ReadInput(char* buffer, std::size_t capacity, std::size_t& count);

/// The next line without its line end, of at most 4096 bytes; what was read at the end of the input or at an error.
std::string ReadInputLine();

/// Reads standard input up to its end. Fails with `TooLarge` if there are more than `most` bytes.
Error ReadWholeInput(std::size_t most, std::string& bytes);

} // namespace platform
