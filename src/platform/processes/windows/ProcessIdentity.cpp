#include "platform/processes/ProcessIdentity.h"

#include <utility>

#include <windows.h>

namespace platform {
namespace {

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

bool AskOtherProcessToEnd(void* /*process*/) {
    return false;
}

} // namespace platform
