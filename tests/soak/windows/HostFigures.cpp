#include "HostFigures.h"

#include <windows.h>

#include <psapi.h>
#include <tlhelp32.h>

#include "platform/Process.h"

namespace {

int ThreadsOf(std::uint32_t number) {
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    THREADENTRY32 entry{};
    entry.dwSize = sizeof(entry);
    int count = 0;
    for (BOOL found = Thread32First(snapshot, &entry); found != 0; found = Thread32Next(snapshot, &entry)) {
        count += entry.th32OwnerProcessID == number ? 1 : 0;
    }
    CloseHandle(snapshot);
    return count;
}

} // namespace

HostFigures FiguresOf(void* process) {
    PROCESS_MEMORY_COUNTERS_EX memory{};
    memory.cb = sizeof(memory);
    GetProcessMemoryInfo(process, reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&memory), sizeof(memory));
    DWORD handles = 0;
    GetProcessHandleCount(process, &handles);
    HostFigures figures;
    figures.residentBytes = static_cast<std::int64_t>(memory.WorkingSetSize);
    figures.privateBytes = static_cast<std::int64_t>(memory.PrivateUsage);
    figures.handles = static_cast<int>(handles);
    figures.threads = ThreadsOf(platform::ProcessNumber(process));
    return figures;
}
