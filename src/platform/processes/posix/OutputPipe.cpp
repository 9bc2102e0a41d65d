#include "platform/processes/OutputPipe.h"

#include <cerrno>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include "platform/system/posix/Descriptor.h"

namespace platform {

Error OutputPipe::Open() {
    int ends[2] = {-1, -1};
    if (pipe2(ends, O_CLOEXEC) != 0) {
        return LastError();
    }
    readEnd = OwnedHandle(HandleOf(ends[0]));
    writeEnd = OwnedHandle(HandleOf(ends[1]));
    return {};
}

void* OutputPipe::Readable() const {
    return readEnd.Get();
}

void OutputPipe::ReadAvailable(std::size_t limit, std::string& bytes) {
    bytes.clear();
    pollfd look{DescriptorOf(readEnd), POLLIN, 0};
    for (std::string piece; bytes.size() < limit && poll(&look, 1, 0) > 0 && (look.revents & POLLIN) != 0;) {
        Read(limit - bytes.size(), piece);
        if (piece.empty()) {
            return;
        }
        bytes += piece;
    }
}

void OutputPipe::Read(std::size_t limit, std::string& bytes) {
    bytes.resize(limit);
    ssize_t count = -1;
    do {
        count = read(DescriptorOf(readEnd), bytes.data(), limit);
    } while (count < 0 && errno == EINTR);
    bytes.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
}

} // namespace platform
