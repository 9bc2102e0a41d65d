#pragma once

#include "platform/files/Directory.h"
#include "platform/files/File.h"
#include "platform/system/Error.h"

#include <cstdint>
#include <string>
#include <vector>

/// Files below a directory. No link is followed, so that nothing outside of it is reached, even if another process
/// changes the directories meanwhile. Paths are library text. Threads: any.
namespace web {

/// The most files of a listing, and how deep their directories are.
inline constexpr std::size_t mostListedFiles = 10'000;
inline constexpr std::size_t deepestListed = 64;

struct FoundEntry {
    /// Relative, with slashes.
    std::wstring path;
    bool isDirectory = false;
    /// Units: bytes.
    std::uint64_t size = 0;
    /// Units: seconds since 1970-01-01 UTC.
    std::int64_t modified = 0;
};

struct Listing {
    std::vector<FoundEntry> entries;
    /// False: entries are left out, because there are too many, or they are nested too deeply, or they have a name that
    /// library text cannot hold.
    bool isComplete = true;
};

/// True for a name of one entry that leads nowhere else.
bool IsPlainName(const std::wstring& name);

/// Opens the directory with these names below `root`. Fails with `NotFound` for a name that is not plain, and with
/// `NotSupported` for a link.
platform::Error OpenDirectoryBelow(const std::wstring& root, const std::vector<std::wstring>& names,
                                   platform::DirectoryHandle& directory);

/// The same for a regular file.
platform::Error OpenFileBelow(const std::wstring& root, const std::vector<std::wstring>& names, platform::File& file);

/// Appends the entries of one open directory, sorted by name; links are left out.
platform::Error ListEntries(const platform::DirectoryHandle& directory, Listing& listing);

/// Appends all files below `root`, sorted by path.
platform::Error ListFilesBelow(const std::wstring& root, Listing& listing);

} // namespace web
