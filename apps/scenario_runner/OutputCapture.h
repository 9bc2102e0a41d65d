#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>

#include "platform/system/Error.h"

namespace scenario_runner {

/// Copies a scenario's output to its log. A separate thread does so, because writing a file may block; on Linux it
/// starts with the first output, because starting it takes longer than a short scenario without output. All functions
/// are called on one thread.
class OutputCapture {
public:
    OutputCapture(const std::wstring& logPath, std::size_t limit);
    OutputCapture(const OutputCapture&) = delete;
    OutputCapture& operator=(const OutputCapture&) = delete;

    /// Creates the log and the pipe.
    platform::Error Open();
    /// Writes a line of the runner's own into the log; before `Start`.
    void Note(const std::wstring& line);
    /// The handle to use as the scenario's output.
    void* WriteEnd() const;
    /// Called when the scenario has been started or its start has failed.
    void Start();
    /// A handle that is signaled when `CarryIfReadable` has something to do; null when it has nothing more to do.
    void* Readable() const;
    /// Starts the thread if the scenario has written something, and closes the log if the output has ended.
    void CarryIfReadable();
    /// Waits until all output is in the log, at most `timeout`: a process that could not be killed may keep the pipe
    /// open.
    void Finish(std::chrono::milliseconds timeout);

private:
    struct Channel;

    /// The thread writes `first` before what it reads.
    void StartThread(std::string first);

    /// Shared with the thread, which may outlive this object.
    std::shared_ptr<Channel> channel;
    /// True when the thread reads the pipe, or nothing more can come.
    bool isCarried = false;
};

} // namespace scenario_runner
