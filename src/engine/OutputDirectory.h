#pragma once

#include <functional>
#include <string>

#include "CommonControllerLib/Export.h"
#include "platform/system/Error.h"

// The directory of a job in its output directory: its name and its creation.

/// Returns true if a path ends in an extension and a numeric version, as CAD systems number their files ("part.prt.3"):
/// at least one character, a dot, at least one character, a dot and decimal digits, without line breaks.
bool HasVersionSuffix(const std::wstring& path);

/// Returns the name of a job's directory in its output directory: the name of its first input file without extension
/// and version number. Returns an empty name for a path that ends in a separator or whose name consists of an extension
/// only.
CONTROLLER_API std::wstring OutputDirectoryName(const std::wstring& firstInputFile);

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
