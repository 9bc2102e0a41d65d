#pragma once

#include <string>

/// True when a path ends in an extension and a numeric version behind it, as CAD systems number their files
/// ("part.prt.3"): something, a dot, something, a dot and decimal digits, all on one line.
bool HasVersionSuffix(const std::wstring& path);
