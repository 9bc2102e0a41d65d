#pragma once

#include "platform/system/Error.h"

#include <functional>
#include <string>

/// The system calls that `MakeFreshDirectory` needs; tests replace them.
struct DirectoryCalls {
    std::function<bool(const std::wstring& path)> exists;
    /// Fails with `AlreadyExists` if the name is in use.
    std::function<platform::Error(const std::wstring& path)> create;
};

/// Creates the first of `path`, `path`_1, `path`_2 ... that does not exist. A name that another process takes between
/// the check and the creation is skipped, so that no two jobs share a directory. Sets `directory` to the created
/// directory, or on failure to the one that could not be created.
platform::Error MakeFreshDirectory(const std::wstring& path, const DirectoryCalls& calls, std::wstring& directory);
