#include "platform/processes/ForeignProcess.h"

#include <bit>
#include <utility>

#include <windows.h>

namespace platform {
namespace {

/// A process handle with only the right to wait does not allow GetProcessId, but counts, too.
bool IsProcessHandle(HANDLE handle, DWORD id) {
    return id != 0 || (handle != nullptr && GetLastError() == ERROR_ACCESS_DENIED);
}

/// In units of 100 ns since 1601; 0 if unknown.
std::int64_t StartOf(HANDLE process) {
    FILETIME start{};
    FILETIME unused{};
    if (GetProcessTimes(process, &start, &unused, &unused, &unused) == 0) {
        return 0;
    }
    return static_cast<std::int64_t>((std::uint64_t{start.dwHighDateTime} << 32) | start.dwLowDateTime);
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
    const HANDLE handle = ::OpenProcess(SYNCHRONIZE | PROCESS_QUERY_LIMITED_INFORMATION, FALSE, id);
    if (handle == nullptr) {
        return LastError();
    }
    process = OwnedHandle(handle);
    return {};
}

ProcessIdentity OwnProcessIdentity() {
    return {GetCurrentProcessId(), StartOf(GetCurrentProcess())};
}

/// The access list of another user's process denies the access.
OwnedHandle OpenProcess(const ProcessIdentity& process) {
    if (process.number == 0 || process.start == 0) {
        return {};
    }
    OwnedHandle opened(::OpenProcess(SYNCHRONIZE | PROCESS_QUERY_LIMITED_INFORMATION, FALSE, process.number));
    const bool isMeant = opened && StartOf(opened.Get()) == process.start && IsProcessRunning(opened.Get());
    return isMeant ? std::move(opened) : OwnedHandle();
}

} // namespace platform
