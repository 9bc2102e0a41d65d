#pragma once

#include "platform/files/File.h"
#include "platform/system/Error.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace web {

/// The body of a request that is stored while it arrives. Paths are library text. Threads: one at a time.
class ReceivedFile {
public:
    ReceivedFile() = default;
    /// Removes the file, unless it has been moved away.
    ~ReceivedFile();
    ReceivedFile(const ReceivedFile&) = delete;
    ReceivedFile& operator=(const ReceivedFile&) = delete;

    /// Makes an empty file with a name of its own in this directory, which is made for this user only if it is missing.
    [[nodiscard]] platform::Error Create(const std::wstring& directory);
    [[nodiscard]] platform::Error Append(std::string_view bytes);
    std::uint64_t Size() const { return size; }

    /// Gives the file another path on the same volume. Nothing can be appended afterwards.
    [[nodiscard]] platform::Error MoveTo(const std::wstring& destination);

private:
    platform::File file;
    std::uint64_t size = 0;
    /// Empty: there is no file, or it has been moved.
    std::wstring path;
};

} // namespace web
