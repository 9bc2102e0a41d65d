#pragma once

#include "front_end/commands/CommandContext.h"

#include <string>
#include <vector>

namespace front_end {

/// The files in a directory and its subdirectories, by their paths relative to it (library text), sorted. Links, names
/// that begin with a dot, and the caches of Python are left out. Throws `CommandFailure` if a directory cannot be read,
/// or is nested more than 32 levels deep.
std::vector<std::wstring> FilesBelow(const CommandContext& context, const std::wstring& directory);

} // namespace front_end
