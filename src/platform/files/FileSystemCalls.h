#pragma once

#include <string>

#include "platform/system/Error.h"

/// System-specific operations behind FileSystem.cpp and ReplaceFile.cpp.
namespace platform {

/// Creates one directory; its parent must exist. Fails with `AlreadyExists` if the name is taken.
Error MakeDirectory(const std::wstring& path);

/// Creates the directory `path` and its missing parents, for the owner only. Existing directories are unchanged.
Error MakeMissingPrivateDirectories(const std::wstring& path);

/// Same as `MakeDirectory`, for the owner only.
Error MakePrivateDirectory(const std::wstring& path);

/// Succeeds if the existing directory `path` belongs to the user of this process. Always succeeds on Windows, where the
/// inherited permissions control access.
Error RequireOwnDirectory(const std::wstring& path);

/// Creates a hard link `name` to the file `existing`. Fails with `NotSupported` or a similar error if the volume has no
/// hard links.
Error LinkFile(const std::wstring& existing, const std::wstring& name);

/// The argument of `std::random_device` that is fastest on this system.
extern const char* const randomSource;

/// Blocks until the renames in `directory` are on the disk.
Error FlushDirectory(const std::wstring& directory);

} // namespace platform
