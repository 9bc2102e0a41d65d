#pragma once

#include <string>

#include "platform/system/Error.h"

/// The steps that FileSystem.cpp and ReplaceFile.cpp are made of.
namespace platform {

/// Makes one directory; its parent must exist. `AlreadyExists` when the name is taken by anything.
Error MakeDirectory(const std::wstring& path);

/// Makes the directory `path` and what is missing above it, for the owner alone; what exists is left as it is.
Error MakeMissingPrivateDirectories(const std::wstring& path);

/// As `MakeDirectory`, for the owner alone.
Error MakePrivateDirectory(const std::wstring& path);

/// Succeeds when the existing directory `path` belongs to the user of this process; on Windows always, where the
/// directory's parent has said who may enter.
Error RequireOwnDirectory(const std::wstring& path);

/// Gives the file `existing` a second name; `NotSupported` and the like where the volume has no links.
Error LinkFile(const std::wstring& existing, const std::wstring& name);

/// Waits until the renames in `directory` are on the disk.
Error FlushDirectory(const std::wstring& directory);

} // namespace platform
