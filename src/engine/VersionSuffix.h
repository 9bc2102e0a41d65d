#pragma once

#include <string>

/// Returns true if a path ends in an extension and a numeric version, as CAD systems number their files ("part.prt.3"):
/// at least one character, a dot, at least one character, a dot and decimal digits, without line breaks.
bool HasVersionSuffix(const std::wstring& path);
