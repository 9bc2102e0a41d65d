#pragma once

#include <string>
#include <string_view>

namespace front_end {

/// Converts untrusted bytes to text that is safe on a terminal: lines and tabs are kept, control characters are written
/// as C escape sequences.
class TerminalText {
public:
    /// The bytes may arrive in pieces of any size; an incomplete character is kept until its remaining bytes arrive.
    std::string Take(std::string_view bytes);

private:
    std::string kept;
};

} // namespace front_end
