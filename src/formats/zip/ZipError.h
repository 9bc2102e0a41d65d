#pragma once

#include <string>

namespace zip {

/// Thrown for an invalid archive; caught within src/formats. The text follows the name of the archive or entry ("is
/// encrypted").
struct Problem {
    std::wstring text;
};

} // namespace zip
