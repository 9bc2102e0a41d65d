#include "platform/processes/OutputPipe.h"

#include <algorithm>

#include <windows.h>

namespace platform {

Error OutputPipe::Open() {
    constexpr DWORD bufferSize = 64 * 1024;
    HANDLE newReadEnd = nullptr;
    HANDLE newWriteEnd = nullptr;
    if (CreatePipe(&newReadEnd, &newWriteEnd, nullptr, bufferSize) == 0) {
        return LastError();
    }
    readEnd = OwnedHandle(newReadEnd);
    writeEnd = OwnedHandle(newWriteEnd);
    return {};
}

void* OutputPipe::Readable() const {
    return nullptr;
}

void OutputPipe::ReadAvailable(std::size_t limit, std::string& bytes) {
    bytes.clear();
    DWORD available = 0;
    std::string piece;
    while (bytes.size() < limit && PeekNamedPipe(readEnd.Get(), nullptr, 0, nullptr, &available, nullptr) != 0 &&
           available > 0) {
        Read(std::min<std::size_t>(limit - bytes.size(), available), piece);
        bytes += piece;
    }
}

void OutputPipe::Read(std::size_t limit, std::string& bytes) {
    constexpr std::size_t most = 1U << 30;
    bytes.resize(std::min(limit, most));
    DWORD count = 0;
    // A write of zero bytes also completes a read.
    BOOL isRead = TRUE;
    while (isRead != 0 && count == 0 && !bytes.empty()) {
        isRead = ::ReadFile(readEnd.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr);
    }
    bytes.resize(count);
}

} // namespace platform
