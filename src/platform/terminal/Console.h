#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/system/Error.h"

/// The terminal of a program with a console.
namespace platform {

/// Makes standard output and error take UTF-8 and leave line ends alone, and a terminal obey escape sequences; what
/// goes through std::wcout is escaped (`MakeWideOutputUtf8`). Where the program was started without one of them,
/// writing to it fails, and no file that is opened later takes its place. Called once by main(), before anything is
/// opened.
void PrepareConsole();

/// True when standard output is a terminal that lines can be drawn over on: not with TERM=dumb, nor on Linux with an
/// empty TERM or none.
bool IsOutputTerminal();

/// Columns of the terminal; 80 when it is none.
std::size_t TerminalWidth();

/// Lines of the terminal; 24 when it is none.
std::size_t TerminalHeight();

/// Writes UTF-8 to standard output in one piece; why not all of it could be written. Any thread.
Error WriteOutput(std::string_view utf8);
/// True when `WriteOutput` failed because nobody reads standard output any more (a closed pipe).
bool IsReaderGone(const Error& failedWrite);
/// Signalled when nobody reads standard output any more, for whoever waits without writing. Null where only a write
/// tells so: standard output is no pipe, or the system is Windows. Not to be closed.
void* OutputReaderGone();

/// The same to standard error; a failure is ignored, as there is nowhere to tell it.
void WriteErrorOutput(std::string_view utf8);

} // namespace platform
