#pragma once

#include "cadjobs/completion/CompletionPoint.h"
#include "front_end/commands/CommandContext.h"

#include <string>
#include <vector>

namespace front_end {

/// One way to continue a command line.
struct Candidate {
    /// What replaces the typed value.
    std::wstring value;
    std::wstring description;

    bool operator==(const Candidate&) const = default;
};

/// Candidates that need no host: subcommands, options, states, columns and the like.
std::vector<Candidate> FixedCandidates(const Texts& texts, const CompletionPoint& point);

/// Candidates that a running host knows: jobs, scenarios and parameters. Starts no host; throws `CommandFailure` if
/// none answers within `context.timeout`.
std::vector<Candidate> HostCandidates(CommandContext& context, const CompletionPoint& point);

/// The hidden subcommand `complete`: writes "files", "directories" or "words" (whether names of files may follow as
/// well), then a line for each candidate: its value, a tab and its description. Failures are not reported.
void WriteCandidates(CommandContext& context, const std::vector<std::wstring>& words);

} // namespace front_end
