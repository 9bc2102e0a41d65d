#pragma once

#include "platform/files/File.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace zip {

/// An archive file with random access. Throws `Problem` on failure. Threads: one at a time.
class ArchiveFile {
public:
    explicit ArchiveFile(const std::wstring& path);

    std::uint64_t Size() const { return size; }
    /// Replaces `bytes` by exactly `count` bytes, starting at `offset`.
    void Read(std::uint64_t offset, std::size_t count, std::string& bytes) const;

private:
    platform::File file;
    std::uint64_t size = 0;
};

} // namespace zip
