#pragma once

#include <string>

namespace platform {

/// A path as the wide system calls take it: backslashes, and the prefix that lifts the limit of 260 characters where an
/// absolute path needs it. A path with an embedded U+0000 gives the empty path, which to every call names nothing.
std::wstring SystemPath(const std::wstring& path);

/// As `SystemPath`, with the prefix for every absolute path: for the root of what is walked, which may grow long.
std::wstring LongSystemPath(const std::wstring& path);

/// The plain path of one with that prefix; any other stays as it is.
std::wstring WithoutSystemPrefix(const std::wstring& path);

} // namespace platform
