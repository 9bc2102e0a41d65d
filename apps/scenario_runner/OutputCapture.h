#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>

#include "platform/system/Error.h"

namespace scenario_runner {

/// Copies a scenario's output to its log, in a separate thread.
class OutputCapture {
public:
    OutputCapture(const std::wstring& logPath, std::size_t limit);
    OutputCapture(const OutputCapture&) = delete;
    OutputCapture& operator=(const OutputCapture&) = delete;

    /// Creates the log and the pipe.
    platform::Error Open();
    /// The handle to use as the scenario's output.
    void* WriteEnd() const;
    /// Called when the scenario has been started or its start has failed.
    void Start();
    /// Waits until all output is in the log, at most `patience`: a process that could not be killed may keep the pipe
    /// open.
    void Finish(std::chrono::milliseconds patience);

private:
    struct Channel;
    /// Shared with the thread, which may outlive this object.
    std::shared_ptr<Channel> channel;
};

} // namespace scenario_runner
