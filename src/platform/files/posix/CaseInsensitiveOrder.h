#pragma once

#include <string_view>

namespace platform {

/// The order of names without regard to case, as the file system of Windows lists them; equal names in the order of
/// their code units. Does not depend on the locale.
bool CaseInsensitiveLess(std::wstring_view left, std::wstring_view right);

} // namespace platform
