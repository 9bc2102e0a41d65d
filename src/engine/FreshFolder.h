#pragma once

#include "platform/system/Error.h"

#include <functional>
#include <string>

/// What `MakeFreshFolder` asks of the system.
struct FolderCalls {
    std::function<bool(const std::wstring& path)> exists;
    /// Fails with `AlreadyExists` where something of this name stands.
    std::function<platform::Error(const std::wstring& path)> create;
};

/// Makes the first of `path`, `path`_1, `path`_2 ... that does not exist. What others make between the look and the
/// making counts as taken, so that no two share a folder. `folder` becomes the folder made, or on failure the one that
/// could not be.
platform::Error MakeFreshFolder(const std::wstring& path, const FolderCalls& calls, std::wstring& folder);
