#pragma once

#include <functional>
#include <optional>
#include <string>

/// Links in the output of a terminal (OSC 8).
namespace front_end {

/// True if the terminal that these environment variables describe is known to show links. An unknown terminal could
/// show the address as text.
bool ShowsLinks(const std::function<std::optional<std::wstring>(const std::wstring&)>& variable);

/// `shown` as a link to a file or directory, given as an absolute native path.
std::wstring LinkTo(const std::wstring& nativePath, const std::wstring& shown);

} // namespace front_end
