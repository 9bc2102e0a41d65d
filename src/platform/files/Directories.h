#pragma once

#include <string>

/// Where things stand on this machine, as library text, absolute, without a trailing separator. Empty when the system
/// does not say.
namespace platform {

/// What the application's own directory in the two below is named, as is the custom on this system.
extern const wchar_t* const applicationDirectoryName;

/// The directory of the user's settings: %APPDATA%; $XDG_CONFIG_HOME or ~/.config.
std::wstring UserConfigurationDirectory();

/// The directory of the user's data on this machine: %LOCALAPPDATA%; $XDG_DATA_HOME or ~/.local/share.
std::wstring UserDataDirectory();

/// The directory for temporary files.
std::wstring TemporaryDirectory();

std::wstring CurrentDirectory();

/// The directory of the running program.
std::wstring ProgramDirectory();

} // namespace platform
