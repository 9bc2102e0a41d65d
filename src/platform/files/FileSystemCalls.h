#pragma once

#include <string>

#include "platform/system/Error.h"

/// The steps that FileSystem.cpp and ReplaceFile.cpp are made of.
namespace platform {

/// Makes one folder; its parent must exist. `AlreadyExists` when the name is taken by anything.
Error MakeFolder(const std::wstring& path);

/// Makes the folder `path` and what is missing above it, for the owner alone; what exists is left as it is.
Error MakeMissingPrivateFolders(const std::wstring& path);

/// As `MakeFolder`, for the owner alone.
Error MakePrivateFolder(const std::wstring& path);

/// Succeeds when the existing folder `path` belongs to the user of this process; on Windows always, where the folder's
/// parent has said who may enter.
Error RequireOwnFolder(const std::wstring& path);

/// Gives the file `existing` a second name; `NotSupported` and the like where the volume has no links.
Error LinkFile(const std::wstring& existing, const std::wstring& name);

/// Waits until the renames in `folder` are on the disk.
Error FlushFolder(const std::wstring& folder);

} // namespace platform
