#include "system/soak/HostFigures.h"

#include <cstddef>
#include <vector>

#include <windows.h>

#include <winternl.h>

#include "platform/processes/Process.h"

namespace {

/// The system's records of all processes, one after another. Under Wine the calls for a single process return less.
std::vector<std::byte> AskForProcesses() {
    std::vector<std::byte> answer(std::size_t{1} << 16);
    while (NtQuerySystemInformation(SystemProcessInformation, answer.data(), static_cast<ULONG>(answer.size()),
                                    nullptr) < 0 &&
           answer.size() < std::size_t{1} << 26) {
        answer.resize(answer.size() * 2);
    }
    return answer;
}

HostFigures FiguresIn(const SYSTEM_PROCESS_INFORMATION& record) {
    HostFigures figures;
    figures.residentBytes = static_cast<std::int64_t>(record.VirtualMemoryCounters.WorkingSetSize);
    figures.privateBytes = static_cast<std::int64_t>(record.VirtualMemoryCounters.PagefileUsage);
    figures.handles = static_cast<int>(record.HandleCount);
    figures.threads = static_cast<int>(record.NumberOfThreads);
    return figures;
}

} // namespace

HostFigures FiguresOf(void* process) {
    const std::uint32_t number = platform::ProcessNumber(process);
    const std::vector<std::byte> processes = AskForProcesses();
    for (std::size_t position = 0;;) {
        const auto& record = *reinterpret_cast<const SYSTEM_PROCESS_INFORMATION*>(processes.data() + position);
        if (reinterpret_cast<std::uintptr_t>(record.UniqueProcessId) == number) {
            return FiguresIn(record);
        }
        if (record.NextEntryOffset == 0) {
            return {};
        }
        position += record.NextEntryOffset;
    }
}
