#pragma once

#include "controller_cli/CommandContext.h"

#include <string>
#include <vector>

namespace controller_cli {

/// `path` as a person types it, against the current directory.
std::wstring AbsolutePath(const std::wstring& path);

/// True for what exists and is no directory.
bool IsFile(const std::wstring& path);

/// A file that a command line names, or that the settings name, and what for.
struct FileRole {
    /// The key of the text that says what for.
    std::wstring textKey;
    /// As typed.
    std::wstring path;
};

/// Throws `CommandFailure` when a file that is to be written is, by whatever name or link, one of those that are only
/// read, or the other one that is written. Nothing is touched. Empty paths are no files; a device may have any role.
void RequireDistinctFiles(const CommandContext& context, const std::vector<FileRole>& written,
                          const std::vector<FileRole>& read);

/// The files that the settings name and that no command line may overwrite.
std::vector<FileRole> FilesOfSettings();

} // namespace controller_cli
