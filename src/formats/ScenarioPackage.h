#pragma once

#include "CommonControllerLib/Export.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace zip {
class Archive;
}

/// Packaged scenarios: ZIP files parsed strictly. Entries are stored or deflated; checksums are verified; sizes, number
/// of entries and compression ratio are limited; absolute names, drives, backslashes, "..", links, encrypted entries
/// and duplicate names are rejected.
namespace scenario_package {

/// A package that is open for reading: all that is read of it is of one version of the file. Threads: one at a time.
class CONTROLLER_API Package {
public:
    Package();
    ~Package();
    Package(const Package&) = delete;
    Package& operator=(const Package&) = delete;

    /// Opens and validates the file. Called once, before the other functions. On failure returns false and sets
    /// `problem`.
    [[nodiscard]] bool Open(const std::wstring& packagePath, std::wstring& problem);

    const std::wstring& Path() const { return path; }
    bool HasFile(const std::string& name) const;

    /// Reads one entry. On failure (a missing or invalid entry, or one larger than `limit` bytes) returns false and
    /// sets `problem`.
    [[nodiscard]] bool ReadEntry(const std::string& name, std::size_t limit, std::string& bytes,
                                 std::wstring& problem) const;

    /// Unpacks everything into `directory`, which must not exist and is created. On failure removes the directory,
    /// returns false and sets `problem`. Files get the execute permission on Linux, because a package may contain
    /// programs.
    [[nodiscard]] bool Unpack(const std::wstring& directory, std::wstring& problem) const;

private:
    std::wstring path;
    std::unique_ptr<zip::Archive> archive;
};

/// Opens and unpacks a package, as `Package` does.
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
