#include "programs/Misdeeds.h"

#include <windows.h>

#include <tlhelp32.h>

namespace {

DWORD ParentOf(DWORD process) {
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    DWORD parent = 0;
    for (BOOL more = Process32FirstW(snapshot, &entry); more != 0; more = Process32NextW(snapshot, &entry)) {
        if (entry.th32ProcessID == process) {
            parent = entry.th32ParentProcessID;
        }
    }
    CloseHandle(snapshot);
    return parent;
}

/// The runner is one process here: only the parent is ended, however many generations are named.
void KillAncestors(const std::wstring&) {
    const HANDLE parent = OpenProcess(PROCESS_TERMINATE, FALSE, ParentOf(GetCurrentProcessId()));
    TerminateProcess(parent, 1);
    CloseHandle(parent);
}

} // namespace

Steps SystemMisdeeds() {
    return {
        {L"kill ancestors ", KillAncestors},
    };
}
