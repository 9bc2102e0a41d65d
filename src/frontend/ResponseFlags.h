#pragma once

#include <atomic>
#include <chrono>

/// How far the answer is that a command waits for. One pair a process: a front end carries out one command at a time.
/// Raised by the presenter's handlers, on the transmitter's thread.
namespace response_flags {

/// Any thread. Whoever waits for it goes on as soon as it is raised.
class ResponseFlag {
public:
    ResponseFlag& operator=(bool raised);
    operator bool() const { return isRaised; }

    /// Returns when the flag is raised, or `longest` is over.
    void WaitFor(std::chrono::milliseconds longest) const;

private:
    std::atomic<bool> isRaised = false;
};

extern ResponseFlag responseStarted;
extern ResponseFlag responseFinished;

} // namespace response_flags
