#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// The terminal of a program with a console.
namespace platform {

/// Makes standard output and error take UTF-8 and leave line ends alone, and a terminal obey escape sequences; what
/// goes through std::wcout is escaped (`MakeWideOutputUtf8`). Called once by main().
void PrepareConsole();

/// True when standard output is a terminal (and not TERM=dumb).
bool IsOutputTerminal();

/// Columns of the terminal; 80 when it is none.
std::size_t TerminalWidth();

/// Lines of the terminal; 24 when it is none.
std::size_t TerminalHeight();

/// Writes UTF-8 to standard output in one piece; failures (a closed pipe) are ignored.
void WriteOutput(std::string_view utf8);
void WriteErrorOutput(std::string_view utf8);

} // namespace platform
