#pragma once

#include <cstdint>
#include <string>

namespace front_end {

/// Exit codes of the front end.
enum class ExitCode : std::int32_t {
    Success = 0,
    /// A job failed, or a request was rejected.
    JobFailed = 1,
    /// The command line, the settings or a file named there is invalid.
    Usage = 2,
    /// No host is running, or it does not answer.
    NoHost = 3,
    /// Ctrl-C while waiting for jobs.
    Interrupted = 130,
    /// Standard output has no reader: the exit code of a program killed by SIGPIPE.
    ReaderGone = 141
};

/// Thrown when a command cannot continue; ends the command.
struct CommandFailure {
    ExitCode exitCode = ExitCode::JobFailed;
    /// Message for people, in their language; empty for none.
    std::wstring message;
};

} // namespace front_end
