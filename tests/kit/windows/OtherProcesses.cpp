#include "kit/OtherProcesses.h"

#include <algorithm>
#include <array>

#include <windows.h>

#include <psapi.h>
#include <tlhelp32.h>

namespace test_support {
namespace {

/// Contains this process from its start, and all its children. The handle is never closed explicitly: the system closes
/// it at process end and ends the children.
const HANDLE ownJob = [] {
    const HANDLE job = CreateJobObjectW(nullptr, nullptr);
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof limits);
    AssignProcessToJobObject(job, GetCurrentProcess());
    return job;
}();

/// The program itself is loaded first, then the system's libraries, before its first instruction.
bool HasLoadedLibraries(std::uint32_t number) {
    const platform::OwnedHandle process(OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, number));
    std::array<HMODULE, 4> modules{};
    DWORD size = 0;
    return process && K32EnumProcessModules(process.Get(), modules.data(), sizeof modules, &size) != 0 &&
           size >= sizeof modules;
}

} // namespace

platform::OwnedHandle OpenProcessByNumber(std::uint32_t number) {
    return platform::OwnedHandle(OpenProcess(SYNCHRONIZE | PROCESS_TERMINATE, FALSE, number));
}

std::vector<std::uint32_t> ChildrenOf(std::uint32_t number) {
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof(entry);
    std::vector<std::uint32_t> children;
    for (BOOL found = Process32FirstW(snapshot, &entry); found != 0; found = Process32NextW(snapshot, &entry)) {
        if (entry.th32ParentProcessID == number && entry.szExeFile != std::wstring(L"conhost.exe")) {
            children.push_back(entry.th32ProcessID);
        }
    }
    CloseHandle(snapshot);
    return children;
}

int CountProcessesIn(const std::wstring&) {
    return 0;
}

bool HasBegun(std::uint32_t number) {
    const std::vector<std::uint32_t> children = ChildrenOf(number);
    return HasLoadedLibraries(number) && std::all_of(children.begin(), children.end(), HasBegun);
}

void KillProcess(void* process) {
    TerminateProcess(process, 1);
}

void EndAllStarted() {
    TerminateJobObject(ownJob, 1);
}

} // namespace test_support
