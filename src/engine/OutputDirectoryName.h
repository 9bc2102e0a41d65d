#pragma once

#include "CommonControllerLib/Export.h"

#include <string>

/// Returns the name of a job's directory in its output directory: the name of its first input file without extension
/// and version number. Returns an empty name for a path that ends in a separator or whose name consists of an extension
/// only.
CONTROLLER_API std::wstring OutputDirectoryName(const std::wstring& firstInputFile);
