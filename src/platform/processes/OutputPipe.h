#pragma once

#include "platform/system/Error.h"
#include "platform/system/OwnedHandle.h"

#include <cstddef>
#include <string>

namespace platform {

/// A one-way byte channel from a child's output to its parent.
class OutputPipe {
public:
    OutputPipe() = default;
    ~OutputPipe() = default;
    OutputPipe(const OutputPipe&) = delete;
    OutputPipe& operator=(const OutputPipe&) = delete;

    Error Open();
    /// The end to pass to a child as its output; owned by the pipe.
    void* WriteEnd() const { return writeEnd.Get(); }
    /// Call after starting the child, so that the reader sees the end of the stream when the last child closes its
    /// side.
    void CloseWriteEnd() { writeEnd.Reset(); }
    /// A handle that is signaled when bytes or the end of the stream can be read; null on Windows, where a pipe cannot
    /// be waited for.
    void* Readable() const;
    /// Blocks until bytes arrive, and replaces `bytes` with at most `limit` of them; empty at the end of the stream or
    /// after a failure.
    void Read(std::size_t limit, std::string& bytes);
    /// Replaces `bytes` with at most `limit` of the available bytes, without blocking: some process may hold the write
    /// end open for long.
    void ReadAvailable(std::size_t limit, std::string& bytes);

private:
    OwnedHandle readEnd;
    OwnedHandle writeEnd;
};

} // namespace platform
