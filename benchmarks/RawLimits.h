#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// The least that the machine needs for the same work, by bare system calls: what our own figures stand beside. Each
/// throws std::system_error when a call fails.
namespace raw_limits {

/// Writes a temporary file and renames it over `path`; with `flush` it is on the disk before the rename.
void WriteAndRename(const std::string& path, std::string_view bytes, bool flush);

/// Reads every directory below `path` once and counts the files.
std::size_t CountFiles(const std::string& path);

/// Starts `program` without arguments and waits for its end.
void SpawnAndWait(const std::string& program);

} // namespace raw_limits
