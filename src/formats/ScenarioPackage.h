#pragma once

#include "CommonControllerLib/Export.h"

#include <cstddef>
#include <string>
#include <vector>

/// Packaged scenarios: ZIP files parsed strictly. Entries are stored or deflated; checksums are verified; sizes, number
/// of entries and compression ratio are limited; absolute names, drives, backslashes, "..", links, encrypted entries
/// and duplicate names are rejected.
namespace scenario_package {

/// Reads one entry of a package. On failure (package or entry invalid, or entry larger than `limit` bytes) returns
/// false and sets `problem`.
[[nodiscard]] CONTROLLER_API bool ReadEntry(const std::wstring& packagePath, const std::string& name, std::size_t limit,
                                            std::string& bytes, std::wstring& problem);

/// Returns true if the package is valid and contains a file of this name.
CONTROLLER_API bool HasFile(const std::wstring& packagePath, const std::string& name);

/// Unpacks a package into `directory`, which must not exist and is created. On failure removes the directory, returns
/// false and sets `problem`. Files get the execute permission on Linux, because a package may contain programs.
[[nodiscard]] CONTROLLER_API bool Unpack(const std::wstring& packagePath, const std::wstring& directory,
                                         std::wstring& problem);

/// A file to be packed.
struct PackedFile {
    /// In the package, in UTF-8 with slashes.
    std::string name;
    std::wstring path;
};

/// Packs files, in this order, into the package `packagePath`, which is replaced atomically. Equal files give equal
/// bytes. On failure (a file that cannot be read, a name that a package may not have, a package beyond the limits)
/// returns false and sets `problem`; an existing package stays as it was.
[[nodiscard]] CONTROLLER_API bool Pack(const std::vector<PackedFile>& files, const std::wstring& packagePath,
                                       std::wstring& problem);

} // namespace scenario_package
