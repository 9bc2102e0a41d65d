#pragma once

#include <string>

/// The four pieces of a path. `drive` includes its colon, `directory` its last separator, `extension` its dot;
/// concatenated they are the path.
struct PathPieces {
    std::wstring drive;
    std::wstring directory;
    std::wstring name;
    std::wstring extension;

    bool operator==(const PathPieces&) const = default;
};

/// Splits a path as the Windows runtime does, with its usual limits, on both systems. Both separators are accepted; a
/// colon in second position ends a drive; the extension begins at the last dot after the last separator. If directory,
/// name or extension is longer than 255 characters, all four pieces are empty.
PathPieces SplitPath(const std::wstring& path);
