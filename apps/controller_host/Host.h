#pragma once

#include <string>

/// The exit codes of the host's process.
enum class HostExit {
    Ended = 0,
    CouldNotRun = 1,
    /// Wrong arguments, or an output that cannot be written.
    WrongUse = 2,
    AlreadyRunning = 4,
    /// Nobody reads the output: the code of a program that SIGPIPE ends.
    ReaderGone = 141
};

/// Runs the host until it is to end: takes the place of the user's one host, makes engine and modules, answers front
/// ends. Raises the inherited event `readyEvent` (empty: none) once they can reach it. What keeps it from running is
/// told on standard error.
HostExit RunHost(const std::wstring& readyEvent);
