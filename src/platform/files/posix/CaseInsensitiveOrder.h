#pragma once

#include <string_view>

namespace platform {

/// Compares names case-insensitively, in the order in which Windows lists directories; equal names are compared by code
/// units. Independent of the locale.
bool CaseInsensitiveLess(std::wstring_view left, std::wstring_view right);

} // namespace platform
