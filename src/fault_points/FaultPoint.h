#pragma once

namespace fault_points {

/// Steps of the product at which a crash of the process must do no harm.
enum class FaultPoint {
    // A file is replaced
    FileToBeCreated,
    FileCreated,
    FileWritten,
    FileFlushed,
    BackupLinked,
    BackupInPlace,
    FileRenamed,
    // A directory tree is removed
    EntryRemoved,
    // The engine
    ListRead,
    JobsAppended,
    JobsListed,
    StartDecided,
    ModuleCalled,
    StartListed,
    ProgressSeen,
    EndSeen,
    ResultRead,
    ChangesFound,
    ChangesListed,
    DeletionBegun,
    WorkDirectoryRemoved,
    DeletionsDone,
    DeletionsListed,
    CancelStatusChanged,
    CancelModuleCalled,
    KillFileMade,
    CancelsDone,
    CancelsListed,
    // The function module
    WorkDirectoryMade,
    RunRequestWritten,
    RunnerStarted,
    // The journal of the job list
    ChangeAppended,
    JournalFlushed,
    SnapshotWritten,
    JournalBegun,
    JournalEnded,
    // The host
    PlaceTaken,
    LeftoversStopped,
    EngineMade,
    HostReady,
    AnswerToBeSent,
    AnswerSent,
    ChangesTold,
    DeletionsNoted,
    DeletionsToBeSettled,
    DeletionsSettled,
    JobsCancelledAtEnd,
    HostEnds,
    /// The number of fault points.
    Count
};

/// Marks that the work has reached a step. Does nothing: crash tests link another definition, which ends the process at
/// a chosen step.
void ReachFaultPoint(FaultPoint point);

} // namespace fault_points
