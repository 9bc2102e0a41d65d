#pragma once

namespace local_process {

/// What the functions of this module return.
enum class ModuleResult : long {
    Done = 0,
    /// The module offers no function of this name.
    UnknownFunction = 1,
    /// The request of "RunScenario" cannot be read.
    InvalidRequest = 2,
    /// The job's work directory cannot be made or written.
    NoWorkDirectory = 3,
    /// The settings name no program that runs scenarios, or it cannot be started.
    RunnerNotStarted = 4,
    /// "CancelScenario" was called for a job that this module does not run (any more).
    JobNotRunning = 5,
    /// Something that should not happen; the log says what.
    UnexpectedFailure = 6
};

} // namespace local_process
