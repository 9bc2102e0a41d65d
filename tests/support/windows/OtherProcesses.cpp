#include "support/OtherProcesses.h"

#include <windows.h>

#include <tlhelp32.h>

namespace test_support {

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

void KillProcess(void* process) {
    TerminateProcess(process, 1);
}

} // namespace test_support
