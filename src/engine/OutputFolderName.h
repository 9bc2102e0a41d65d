#pragma once

#include "CommonControllerLib/Export.h"

#include <string>

/// The name of the folder that a job gets in its output directory: that of its first input file without its extension,
/// and without a version number behind that. Empty for a path that ends in a separator or names nothing but an
/// extension.
CONTROLLER_API std::wstring OutputFolderName(const std::wstring& firstInputFile);
