#pragma once

#include "platform/system/Error.h"

#include <functional>
#include <string>

/// What `MakeFreshDirectory` asks of the system.
struct DirectoryCalls {
    std::function<bool(const std::wstring& path)> exists;
    /// Fails with `AlreadyExists` where something of this name stands.
    std::function<platform::Error(const std::wstring& path)> create;
};

/// Makes the first of `path`, `path`_1, `path`_2 ... that does not exist. What others make between the look and the
/// making counts as taken, so that no two share a directory. `directory` becomes the directory made, or on failure the
/// one that could not be.
platform::Error MakeFreshDirectory(const std::wstring& path, const DirectoryCalls& calls, std::wstring& directory);
