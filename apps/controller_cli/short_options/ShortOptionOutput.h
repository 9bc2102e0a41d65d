#pragma once

#include "front_end/commands/CommandContext.h"
#include "frontend/TextOutput.h"

#include <string>

namespace front_end {

/// The output of a one-letter command: an output file, or standard output without one.
class ShortOptionOutput {
public:
    /// Creates or truncates the output file. Throws `CommandFailure` if it cannot be opened.
    ShortOptionOutput(CommandContext& commandContext, std::wstring outputFile);

    /// Writes lines that end with "\n"; they are in the file on return. If the file cannot be written, writes the lines
    /// to standard output, so that nothing is lost, and throws `CommandFailure`.
    void Write(const std::string& lines);

private:
    CommandContext& context;
    std::wstring path;
    TextOutput file;
};

} // namespace front_end
