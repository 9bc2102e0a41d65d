#pragma once

#include "CommonControllerLib/Export.h"

#include <cstddef>
#include <string>

/// Packaged scenarios: ZIP files read strictly (stored and deflated entries, checksums verified, sizes, count and ratio
/// capped; no absolute names, drives, backslashes, "..", links, encrypted or duplicate names).
namespace scenario_package {

/// Reads one entry of a package; false, with `problem`, when the package or the entry is not usable or larger than
/// `limit` bytes.
[[nodiscard]] CONTROLLER_API bool ReadEntry(const std::wstring& packagePath, const std::string& name, std::size_t limit,
                                            std::string& bytes, std::wstring& problem);

/// True when the package is usable and has a file of this name.
CONTROLLER_API bool HasFile(const std::wstring& packagePath, const std::string& name);

/// Unpacks everything below `directory`, which is made and must not exist before. False, with `problem`; nothing is
/// left then. Files get the execute permission on Linux, because a package may hold programs.
[[nodiscard]] CONTROLLER_API bool Unpack(const std::wstring& packagePath, const std::wstring& directory,
                                         std::wstring& problem);

} // namespace scenario_package
