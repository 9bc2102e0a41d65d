#pragma once

#include "front_end/commands/Command.h"
#include "front_end/output/Texts.h"

#include <string>
#include <vector>

namespace front_end {

struct ParsedCommandLine {
    Command command;
    /// For the kind `Help`: the help of the subcommand that the command line names.
    std::wstring help = {};
};

/// Parses a command line of `cadjobs`; throws `UsageProblem`. Arguments after "--" are no options. Without a subcommand
/// the command is `Overview`.
ParsedCommandLine ParseSubcommand(const Texts& texts, const std::vector<std::wstring>& arguments);

} // namespace front_end
