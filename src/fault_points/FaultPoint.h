#pragma once

namespace fault_points {

/// The steps of the product's work between which a sudden end of its process must do no harm.
enum class FaultPoint {
    // A file is replaced
    FileToBeCreated,
    FileCreated,
    FileWritten,
    FileFlushed,
    BackupLinked,
    BackupInPlace,
    FileRenamed,
    // A directory is removed with all it holds
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
    /// How many there are.
    Count
};

/// Says that the work has come to this step. Does nothing: tests of sudden ends link another definition in its place,
/// one that ends the process at the step that was asked for.
void ReachFaultPoint(FaultPoint point);

} // namespace fault_points
