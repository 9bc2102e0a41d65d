#pragma once

#include <string>
#include <string_view>

namespace controller_cli {

/// Turns bytes of others into text that a terminal can be given: lines and tabs stay, and what would steer the terminal
/// is shown as it is written in C.
class TerminalText {
public:
    /// The bytes may come in pieces of any size; the beginning of a character is kept until the rest of it comes.
    std::string Take(std::string_view bytes);

private:
    std::string kept;
};

} // namespace controller_cli
