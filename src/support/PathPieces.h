#pragma once

#include <string>

/// The four pieces of a path. `drive` has its colon, `directory` its last separator, `extension` its dot; put together
/// again they are the path.
struct PathPieces {
    std::wstring drive;
    std::wstring directory;
    std::wstring name;
    std::wstring extension;

    bool operator==(const PathPieces&) const = default;
};

/// Splits a path as the Windows runtime does with its usual limits, on both systems: either separator counts; a colon
/// in second place ends a drive; the extension begins at the last dot behind the last separator. When directory, name
/// or extension is longer than 255 characters, all four pieces are empty.
PathPieces SplitPath(const std::wstring& path);
