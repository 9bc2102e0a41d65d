#pragma once

#include <string>

namespace zip {

/// Thrown where an archive is not usable; caught where the companion hands out its verdict. The text goes on after the
/// name of the archive or entry ("is encrypted").
struct Problem {
    std::wstring text;
};

} // namespace zip
