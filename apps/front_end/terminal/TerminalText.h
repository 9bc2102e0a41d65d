#pragma once

#include "text/Utf8Pieces.h"

#include <string>
#include <string_view>

namespace front_end {

/// Converts untrusted bytes to text that is safe on a terminal: lines and tabs are kept, control characters are written
/// as C escape sequences.
class TerminalText {
public:
    /// The bytes may arrive in pieces of any size; an incomplete character, and a carriage return that may belong to a
    /// line break, are kept until the bytes behind them arrive.
    std::string Take(std::string_view bytes);

private:
    text::Utf8Pieces pieces;
    bool endedWithReturn = false;
};

} // namespace front_end
