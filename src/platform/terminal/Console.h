#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/system/Error.h"

/// The terminal and the standard streams of a console program.
namespace platform {

/// Sets standard output and error to UTF-8 without line end conversion, and enables escape sequences on a terminal.
/// Text written through std::wcout is escaped (`MakeWideOutputUtf8`). If the program was started without one of the
/// streams, writing to it fails, and no file opened later takes its descriptor. Called once by main(), before anything
/// is opened.
void PrepareConsole();

/// True if standard output is a terminal whose lines can be overwritten. False with TERM=dumb and, on Linux, with an
/// empty or missing TERM.
bool IsOutputTerminal();

/// Columns of the terminal; 80 if standard output is not a terminal.
std::size_t TerminalWidth();

/// Lines of the terminal; 24 if standard output is not a terminal.
std::size_t TerminalHeight();

/// Writes UTF-8 to standard output in one piece. Returns an error if not all of it was written. Threads: any.
Error WriteOutput(std::string_view utf8);
/// True if `WriteOutput` failed because standard output is a pipe without a reader.
bool IsReaderGone(const Error& failedWrite);
/// Signalled when standard output has lost its reader, for callers that wait without writing. Null if only a write
/// detects that: standard output is not a pipe, or the system is Windows. The caller must not close it.
void* OutputReaderGone();

/// Same for standard error. A failure is ignored, because it cannot be reported.
void WriteErrorOutput(std::string_view utf8);

/// Makes std::wcout write UTF-8 to standard output, independent of the locale. By default it fails on characters beyond
/// ASCII on Linux, and writes UTF-16 on Windows. Each inserted text, such as a line of the log, is shown as one line:
/// line breaks before its end and other terminal control characters are escaped like in `Escaped`. Part of
/// `PrepareConsole`.
void MakeWideOutputUtf8();

// Standard input. Threads: one at a time.

/// True if standard input is a terminal.
bool IsInputTerminal();

/// Reads at most `capacity` bytes of standard input, and waits until there are some; `count` is 0 at its end.
Error ReadInput(char* buffer, std::size_t capacity, std::size_t& count);

/// The next line without its line end, of at most 4096 bytes; what was read at the end of the input or at an error.
std::string ReadInputLine();

/// Reads standard input up to its end. Fails with `TooLarge` if there are more than `most` bytes.
Error ReadWholeInput(std::size_t most, std::string& bytes);

} // namespace platform
