#include "platform/processes/ForeignProcess.h"

#include <windows.h>

#include <bit>

namespace platform {
namespace {

/// A process handle with only the right to wait does not allow GetProcessId, but counts, too.
bool IsProcessHandle(HANDLE handle, DWORD id) {
    return id != 0 || (handle != nullptr && GetLastError() == ERROR_ACCESS_DENIED);
}

} // namespace

std::uint64_t NumberOfHandle(void* process) {
    return std::bit_cast<std::uint64_t>(process);
}

Error AdoptProcess(std::uint64_t number, OwnedHandle& process) {
    const HANDLE handle = std::bit_cast<HANDLE>(number);
    const DWORD id = GetProcessId(handle);
    if (!IsProcessHandle(handle, id)) {
        return ErrorFromCode(ERROR_INVALID_HANDLE);
    }
    if (id == GetCurrentProcessId()) {
        return ErrorFromCode(ERROR_INVALID_PARAMETER);
    }
    process = OwnedHandle(handle);
    return {};
}

Error OpenProcessById(std::uint32_t id, OwnedHandle& process) {
    if (id == GetCurrentProcessId()) {
        return ErrorFromCode(ERROR_INVALID_PARAMETER);
    }
    const HANDLE handle = OpenProcess(SYNCHRONIZE | PROCESS_QUERY_LIMITED_INFORMATION, FALSE, id);
    if (handle == nullptr) {
        return LastError();
    }
    process = OwnedHandle(handle);
    return {};
}

} // namespace platform
