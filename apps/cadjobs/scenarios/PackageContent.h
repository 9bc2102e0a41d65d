#pragma once

#include "formats/ScenarioPackage.h"
#include "front_end/commands/CommandContext.h"

#include <string>
#include <vector>

namespace front_end {

/// The content of the package that a directory makes. If the directory has a file `package_files.txt`, the files that
/// it lists: on each line the name in the package, blanks, and the file, relative to the directory; empty lines and
/// those that begin with "#" do not count. Otherwise all files, except hidden ones, links and packages. Throws
/// `CommandFailure` if they cannot be read, or a line is not of this form.
std::vector<scenario_package::PackedFile> ContentOf(const CommandContext& context, const std::wstring& directory);

/// Packs a directory into the package `path` and returns the number of files. The package is complete and can be run,
/// or else an existing one stays as it was, and the reason is thrown as `CommandFailure`.
std::size_t PackDirectory(const CommandContext& context, const std::wstring& directory, const std::wstring& path);

} // namespace front_end
