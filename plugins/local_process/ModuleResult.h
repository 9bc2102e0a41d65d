#pragma once

namespace local_process {

/// Return values of this module's functions.
enum class ModuleResult : long {
    Done = 0,
    /// The module has no function of this name.
    UnknownFunction = 1,
    /// The request of "RunScenario" cannot be parsed.
    InvalidRequest = 2,
    /// The job's work directory cannot be created or written.
    NoWorkDirectory = 3,
    /// The settings name no runner program, or it cannot be started.
    RunnerNotStarted = 4,
    /// "CancelScenario" was called for a job that this module does not run.
    JobNotRunning = 5,
    /// An unexpected error; the log has the details.
    UnexpectedFailure = 6
};

} // namespace local_process
