#pragma once

#include <atomic>

/// How far the answer is that a command waits for. One pair a process: a front end carries out one command at a time.
/// Raised by the presenter's handlers, on the transmitter's thread.
namespace response_flags {

extern std::atomic<bool> responseStarted;
extern std::atomic<bool> responseFinished;

} // namespace response_flags
