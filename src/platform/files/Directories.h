#pragma once

#include <string>

/// Well-known directories of this machine, as library text: absolute, without a trailing separator. Empty if the system
/// does not define the directory.
namespace platform {

/// Name of the application's own directory below the next two, in the convention of this system.
extern const wchar_t* const applicationDirectoryName;

/// Directory of the user's settings: %APPDATA% on Windows; $XDG_CONFIG_HOME or ~/.config on Linux.
std::wstring UserConfigurationDirectory();

/// Directory of the user's data on this machine: %LOCALAPPDATA% on Windows; $XDG_DATA_HOME or ~/.local/share on Linux.
std::wstring UserDataDirectory();

/// The directory for temporary files.
std::wstring TemporaryDirectory();

std::wstring CurrentDirectory();

/// The directory of the running program.
std::wstring ProgramDirectory();

} // namespace platform
