#pragma once

#include "CommonControllerLib/Export.h"

#include <string>

/// Joins path parts. Pure functions; threads: any.
///
/// Empty parts are skipped. A backslash is inserted between the result so far and the next part unless the result ends
/// in one. Nothing else is checked: a backslash is also inserted before a part that begins with a backslash and after a
/// result that ends in a slash.
namespace PathFuncs {

/// Joins two parts.
CONTROLLER_API std::wstring Join(const std::wstring& first, const std::wstring& second);
/// Joins three parts.
CONTROLLER_API std::wstring Join(const std::wstring& first, const std::wstring& second, const std::wstring& third);
/// Joins four parts.
CONTROLLER_API std::wstring Join(const std::wstring& first, const std::wstring& second, const std::wstring& third,
                                 const std::wstring& fourth);

} // namespace PathFuncs
