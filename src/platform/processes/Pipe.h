#pragma once

#include "platform/processes/ProcessHandle.h"
#include "platform/system/Error.h"

#include <cstddef>
#include <string>

namespace platform {

/// A one-way channel of bytes from a child's output to its parent.
class OutputPipe {
public:
    OutputPipe() = default;
    ~OutputPipe();
    OutputPipe(const OutputPipe&) = delete;
    OutputPipe& operator=(const OutputPipe&) = delete;

    Error Open();
    /// The end to give to a child as its output; owned by the pipe.
    void* WriteEnd() const { return writeEnd; }
    /// To be called once the child has been started, so that the reader sees the end when the last child closes its
    /// side.
    void CloseWriteEnd();
    /// Waits for bytes and replaces `bytes` by at most `limit` of them; empty at the end or after a failure.
    void Read(std::size_t limit, std::string& bytes);
    /// Replaces `bytes` by what has come, at most `limit` of them, without waiting: some program may hold the other end
    /// open for long.
    void ReadAvailable(std::size_t limit, std::string& bytes);

private:
    void* readEnd = nullptr;
    void* writeEnd = nullptr;
};

} // namespace platform
