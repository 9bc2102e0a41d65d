#pragma once

#include "CommonControllerLib/Export.h"

#include <string>

/// The name of the directory that a job gets in its output directory: that of its first input file without its
/// extension, and without a version number behind that. Empty for a path that ends in a separator or names nothing but
/// an extension.
CONTROLLER_API std::wstring OutputDirectoryName(const std::wstring& firstInputFile);
