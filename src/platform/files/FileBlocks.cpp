#include "platform/files/FileBlocks.h"

#include <algorithm>
#include <cstdint>

#include "platform/files/File.h"
#include "platform/files/FileSystem.h"

namespace platform {
namespace {

constexpr std::size_t blockSize = std::size_t{1} << 20;

} // namespace

Error ReadFileInBlocks(const std::wstring& path, const std::function<Reading(std::string_view block)>& visit) {
    const auto before = StampOf(path);
    File file;
    if (const Error error = file.OpenForReading(path)) {
        return error;
    }
    const std::uint64_t size = file.Size();
    std::string block(static_cast<std::size_t>(std::min<std::uint64_t>(size + 1, blockSize)), '\0');
    std::uint64_t done = 0;
    // A file may grow faster than it is read.
    for (std::size_t count = 1; count != 0 && done <= size; done += count) {
        if (const Error error = file.Read(block.data(), block.size(), count)) {
            return error;
        }
        if (count != 0 && visit({block.data(), count}) == Reading::Stop) {
            return {};
        }
    }
    return done == size && StampOf(path) == before ? Error{} : Error{ErrorKind::InUse, 0};
}

} // namespace platform
