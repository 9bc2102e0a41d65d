#pragma once

#include <string>

namespace platform {

/// The path for wide system functions: backslashes, and the long path prefix if an absolute path needs it (limit of 260
/// characters). A path with an embedded U+0000 yields the empty path, which names nothing.
std::wstring SystemPath(const std::wstring& path);

/// Same as `SystemPath`, but every absolute path gets the prefix: for the root of a traversal, whose paths may grow
/// long.
std::wstring LongSystemPath(const std::wstring& path);

/// Removes the long path prefix; other paths are returned unchanged.
std::wstring WithoutSystemPrefix(const std::wstring& path);

} // namespace platform
