#pragma once

#include <string>

namespace zip {

/// Thrown for an invalid archive; caught within src/formats.
struct Problem {
    /// Follows the name of the archive or entry ("is encrypted"), or, if it names an entry itself, a colon behind the
    /// name of the archive ("the entry "a.txt" is encrypted").
    std::wstring text;
    bool namesEntry = false;
};

} // namespace zip
