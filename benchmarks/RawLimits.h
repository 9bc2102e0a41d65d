#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// The minimal cost of the same work with plain system calls, shown beside the measured figures. Each function throws
/// std::system_error when a call fails.
namespace raw_limits {

/// Writes a temporary file and renames it to `path`; with `flush` the data is on the disk before the rename.
void WriteAndRename(const std::string& path, std::string_view bytes, bool flush);

/// Reads every directory below `path` once and counts the files.
std::size_t CountFiles(const std::string& path);

/// The same, and reads every file whose name ends with `ending`.
std::size_t CountAndReadFiles(const std::string& path, std::string_view ending);

/// Starts `program` without arguments and waits for its end.
void SpawnAndWait(const std::string& program);

} // namespace raw_limits
