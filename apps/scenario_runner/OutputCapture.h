#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>

#include "platform/system/Error.h"

namespace scenario_runner {

/// Carries what a scenario prints into its log, in a thread of its own.
class OutputCapture {
public:
    OutputCapture(const std::wstring& logPath, std::size_t limit);
    OutputCapture(const OutputCapture&) = delete;
    OutputCapture& operator=(const OutputCapture&) = delete;

    /// Makes the log and the pipe into it.
    platform::Error Open();
    /// What the scenario gets as its output.
    void* WriteEnd() const;
    /// To be called once the scenario was started, or could not be.
    void Start();
    /// Waits until everything that was printed stands in the log, but not longer than `patience`: a process that the
    /// system did not let us end may hold the pipe open.
    void Finish(std::chrono::milliseconds patience);

private:
    struct Channel;
    /// Shared with the thread, which may outlive this object then.
    std::shared_ptr<Channel> channel;
};

} // namespace scenario_runner
