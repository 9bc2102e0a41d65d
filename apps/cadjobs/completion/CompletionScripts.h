#pragma once

#include <string>

namespace front_end {

/// The script that makes a shell complete command lines of `cadjobs`, in UTF-8; null for an unknown shell. Static
/// storage.
const char* CompletionScript(const std::wstring& shell);

} // namespace front_end
