#pragma once

namespace platform {

/// From now on std::wcout writes UTF-8 to standard output, whatever the locale: as it stands, it fails on characters
/// beyond ASCII on Linux, and gives out UTF-16 on Windows.
void MakeWideOutputUtf8();

} // namespace platform
