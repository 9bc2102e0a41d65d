#pragma once

namespace platform {

/// Makes std::wcout write UTF-8 to standard output, independent of the locale. By default it fails on characters beyond
/// ASCII on Linux, and writes UTF-16 on Windows. Each inserted text, such as a line of the log, is shown as one line:
/// line breaks before its end and other terminal control characters are escaped like in `Escaped`.
void MakeWideOutputUtf8();

} // namespace platform
