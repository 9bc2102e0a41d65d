#pragma once

#include "CommonControllerLib/Export.h"

#include <string>

/// The one path builder of the library.
///
/// Empty parts are skipped. A backslash is put between the result so far and the next part unless the result ends in
/// one; nothing else is looked at: a part that begins with a backslash, or a result that ends in a slash, still gets
/// one between.
namespace PathFuncs {

CONTROLLER_API std::wstring Join(const std::wstring& first, const std::wstring& second);
CONTROLLER_API std::wstring Join(const std::wstring& first, const std::wstring& second, const std::wstring& third);
CONTROLLER_API std::wstring Join(const std::wstring& first, const std::wstring& second, const std::wstring& third,
                                 const std::wstring& fourth);

} // namespace PathFuncs
