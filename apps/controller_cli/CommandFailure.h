#pragma once

#include <cstdint>
#include <string>

namespace controller_cli {

/// What the front end ends with.
enum class ExitCode : std::int32_t {
    Success = 0,
    /// A job failed, or a request could not be met.
    JobFailed = 1,
    /// The command line, the settings or a file that it names is wrong.
    Usage = 2,
    /// There is no host, or it does not answer.
    NoHost = 3,
    /// Ctrl-C while jobs were being waited for.
    Interrupted = 130,
    /// Nobody reads the results any more: the code of a program that SIGPIPE ends.
    ReaderGone = 141
};

/// Thrown where a command cannot go on; ends the command.
struct CommandFailure {
    ExitCode exitCode = ExitCode::JobFailed;
    /// For people, in their language; empty when there is nothing to say.
    std::wstring message;
};

} // namespace controller_cli
