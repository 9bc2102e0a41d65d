#pragma once

#include <atomic>
#include <chrono>

/// The progress of the answer that a command waits for. One pair of flags per process, because a front end executes one
/// command at a time. Set by the presenter's handlers on the transmitter's thread.
namespace response_flags {

/// A flag that a thread can wait for; setting it wakes the waiting thread. Threads: any.
class ResponseFlag {
public:
    ResponseFlag& operator=(bool raised);
    operator bool() const { return isRaised; }

    /// Returns when the flag is set or after `longest`.
    void WaitFor(std::chrono::milliseconds longest) const;

private:
    std::atomic<bool> isRaised = false;
};

extern ResponseFlag responseStarted;
extern ResponseFlag responseFinished;

} // namespace response_flags
