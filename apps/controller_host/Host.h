#pragma once

#include <string>

/// Exit codes of the host process.
enum class HostExit {
    Ended = 0,
    CouldNotRun = 1,
    /// Wrong arguments, or output that cannot be written.
    WrongUse = 2,
    AlreadyRunning = 4,
    /// Standard output has no reader: the exit code of a program killed by SIGPIPE.
    ReaderGone = 141
};

/// Runs the host until it is asked to end: takes the lock for the user's only host, creates engine and modules, answers
/// front ends. Raises the inherited event `readyEvent` (empty: none) when front ends can connect. On failure, writes
/// the reason to standard error.
HostExit RunHost(const std::wstring& readyEvent);
