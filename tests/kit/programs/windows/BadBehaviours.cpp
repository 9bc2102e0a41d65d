#include "kit/programs/BadBehaviours.h"

#include <string>

#include <windows.h>

#include <tlhelp32.h>

#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/system/Environment.h"

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

/// The runner is one process here: only the parent is killed, whatever the number.
void KillAncestors(const std::wstring&) {
    const HANDLE parent = OpenProcess(PROCESS_TERMINATE, FALSE, ParentOf(GetCurrentProcessId()));
    TerminateProcess(parent, 1);
    CloseHandle(parent);
}

/// A child that waits for ever, started with these flags; none if the system refuses.
void StartWaitingChild(DWORD flags) {
    std::wstring program(MAX_PATH, L'\0');
    program.resize(GetModuleFileNameW(nullptr, program.data(), MAX_PATH));
    std::wstring commandLine = L"\"" + program + L"\" --steps wait";
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION child{};
    if (CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE, flags, nullptr, nullptr, &startup,
                       &child) != 0) {
        // The test that waits for the file reports a failure.
        (void)platform::CreateEmptyFile(
            platform::ResolveAgainst(platform::CurrentDirectory(), L"process-" + std::to_wstring(child.dwProcessId)));
        CloseHandle(child.hThread);
        CloseHandle(child.hProcess);
    }
}

/// One child for each way to leave the scenario's group.
void LeaveDetachedChildren(const std::wstring&) {
    StartWaitingChild(DETACHED_PROCESS);
    StartWaitingChild(CREATE_NEW_PROCESS_GROUP | CREATE_NO_WINDOW);
    StartWaitingChild(CREATE_NEW_CONSOLE);
    StartWaitingChild(CREATE_BREAKAWAY_FROM_JOB | CREATE_NO_WINDOW);
}

/// Not address 0, which Wine may have mapped.
void ViolateAccess(const std::wstring&) {
    auto* const forbidden =
        static_cast<volatile int*>(VirtualAlloc(nullptr, 1, MEM_RESERVE | MEM_COMMIT, PAGE_NOACCESS));
    *forbidden = 1;
}

} // namespace

Steps SystemBadBehaviours() {
    return {
        {L"kill ancestors ", KillAncestors},
        {L"leave detached children", LeaveDetachedChildren},
        {L"violate access", ViolateAccess},
    };
}
