#pragma once

#include <string>

/// Where the parts of an installation are, seen from the library, plug-in or program that contains the calling code.
/// Each function returns the first of its places that exists, or else the place beside that file: in the build tree,
/// all programs and plug-ins are in one directory. The whole installation can be moved.
namespace platform {

/// A program that other programs start and users do not: beside the caller, or in libexec/common_controller. `fileName`
/// has no extension.
std::wstring InstalledProgram(const std::wstring& fileName, const std::wstring& ownDirectory);

/// A plug-in: beside the caller, or in common_controller/plugins below the directory of the libraries. `fileName` has
/// no extension.
std::wstring InstalledPlugin(const std::wstring& fileName, const std::wstring& ownDirectory);

/// A file or directory in share/common_controller.
std::wstring InstalledData(const std::wstring& fileName, const std::wstring& ownDirectory);

/// The directory of the shared library, plug-in or program that contains this code.
std::wstring OwnDirectory();

} // namespace platform
