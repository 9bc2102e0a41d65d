#pragma once

#include "controller_cli/CommandContext.h"
#include "frontend/TextOutput.h"

#include <string>

namespace controller_cli {

/// Where the lines of a one-letter command go: to an output file, or to standard output without one.
class ShortOptionOutput {
public:
    /// Makes the output file anew. Throws `CommandFailure` when it cannot be opened.
    ShortOptionOutput(CommandContext& commandContext, std::wstring outputFile);

    /// Writes lines that end with "\n"; they are in the file when this returns. When the file does not take them they
    /// go to standard output, so that nothing is lost, and `CommandFailure` is thrown.
    void Write(const std::string& lines);

private:
    CommandContext& context;
    std::wstring path;
    TextOutput file;
};

} // namespace controller_cli
