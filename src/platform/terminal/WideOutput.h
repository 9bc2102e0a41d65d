#pragma once

namespace platform {

/// From now on std::wcout writes UTF-8 to standard output, whatever the locale: as it stands, it fails on characters
/// beyond ASCII on Linux, and gives out UTF-16 on Windows. Each text that is put in, such as a line of the log, is
/// shown as one line: line breaks before its end, and all else that steers a terminal, are escaped as `Escaped` does.
void MakeWideOutputUtf8();

} // namespace platform
