#pragma once

#include <string>

/// Where things stand on this machine, as library text, absolute, without a trailing separator. Empty when the system
/// does not say.
namespace platform {

/// What the application's own folder in the two below is named, as is the custom on this system.
extern const wchar_t* const applicationFolderName;

/// The folder of the user's settings: %APPDATA%; $XDG_CONFIG_HOME or ~/.config.
std::wstring UserConfigurationFolder();

/// The folder of the user's data on this machine: %LOCALAPPDATA%; $XDG_DATA_HOME or ~/.local/share.
std::wstring UserDataFolder();

/// The folder for temporary files.
std::wstring TemporaryFolder();

std::wstring CurrentFolder();

/// The folder of the running program.
std::wstring ProgramFolder();

} // namespace platform
