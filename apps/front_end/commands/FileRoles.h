#pragma once

#include "front_end/commands/CommandContext.h"

#include <string>
#include <vector>

namespace front_end {

/// Resolves a path from the command line against the current directory.
std::wstring AbsolutePath(const std::wstring& path);

/// True if the path exists and is not a directory.
bool IsFile(const std::wstring& path);

/// The typed scenario, for the host: the absolute path of a file. Any other name is resolved by the host: an id of the
/// catalogue, or a file name in its scenario directories.
std::wstring ScenarioName(const std::wstring& typed);

/// A file named in the command line or the settings, and its purpose.
struct FileRole {
    /// The key of the text that describes the purpose.
    std::wstring textKey;
    /// As typed.
    std::wstring path;
};

/// Throws `CommandFailure` if a file to be written is the same, by whatever name or link, as a file to be read or
/// another file to be written. Changes nothing. Empty paths are ignored; a device may have several purposes.
void RequireDistinctFiles(const CommandContext& context, const std::vector<FileRole>& written,
                          const std::vector<FileRole>& read);

/// The files in the settings that no command line may overwrite.
std::vector<FileRole> FilesOfSettings();

} // namespace front_end
