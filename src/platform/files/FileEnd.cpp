#include "platform/files/FileEnd.h"

#include <algorithm>
#include <cstdint>

#include "platform/files/File.h"

namespace platform {

Error ReadFileEnd(const std::wstring& path, std::size_t length, std::string& bytes) {
    File file;
    if (const Error error = file.OpenForReading(path)) {
        return error;
    }
    const std::uint64_t size = file.Size();
    const std::uint64_t begin = size - std::min<std::uint64_t>(size, length);
    std::string content(size - begin, '\0');
    std::size_t done = 0;
    for (std::size_t count = 1; count != 0 && done < content.size(); done += count) {
        if (const Error error = file.ReadAt(begin + done, content.data() + done, content.size() - done, count)) {
            return error;
        }
    }
    content.resize(done);
    bytes.swap(content);
    return {};
}

} // namespace platform
