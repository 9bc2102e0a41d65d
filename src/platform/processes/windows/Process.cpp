#include "platform/processes/Process.h"

#include <windows.h>

#include "platform/files/FileSystem.h"
#include "platform/processes/windows/CreateProcess.h"
#include "text/Hexadecimal.h"

namespace platform {

Error StartProcess(const ProcessStart& start, void* errorOutput, OwnedHandle& process) {
    return CreateChild(start, nullptr, errorOutput, process);
}

OwnedHandle OpenSelf() {
    HANDLE handle = nullptr;
    DuplicateHandle(GetCurrentProcess(), GetCurrentProcess(), GetCurrentProcess(), &handle,
                    SYNCHRONIZE | PROCESS_QUERY_LIMITED_INFORMATION, TRUE, 0);
    return OwnedHandle(handle);
}

bool SetCloseOnExec(void* handle) {
    return SetHandleInformation(handle, HANDLE_FLAG_INHERIT, 0) != 0;
}

bool RequestTermination(void*) {
    return false;
}

std::optional<std::int32_t> ExitCode(void* process) {
    DWORD code = 0;
    if (process == nullptr || WaitForSingleObject(process, 0) != WAIT_OBJECT_0 ||
        GetExitCodeProcess(process, &code) == 0) {
        return std::nullopt;
    }
    return static_cast<std::int32_t>(code);
}

/// The codes of exceptions are NTSTATUS values of the severity "error": 0xC0000000 to 0xCFFFFFFF.
bool IsCrash(std::int32_t exitCode) {
    return static_cast<std::uint32_t>(exitCode) >> 28 == 0xC;
}

std::wstring ExitCodeText(std::int32_t exitCode) {
    const std::wstring text = L"exit code " + std::to_wstring(exitCode);
    if (exitCode >= 0) {
        return text;
    }
    // System codes, such as an access violation, are commonly written in hexadecimal.
    return text + L" (0x" + text::HexadecimalText(static_cast<std::uint32_t>(exitCode)) + L")";
}

std::uint32_t ProcessNumber(void* process) {
    return GetProcessId(process);
}

std::uint32_t OwnProcessNumber() {
    return GetCurrentProcessId();
}

std::uint32_t OwnThreadNumber() {
    return GetCurrentThreadId();
}

bool IsProgramName(const std::wstring& path) {
    return HasExtension(path, L".exe") || HasExtension(path, L".com");
}

bool IsProgramFile(const std::wstring& path) {
    return IsProgramName(path) && Exists(path) && !IsDirectory(path);
}

std::vector<std::wstring> ProgramFileNames(const std::wstring& name) {
    if (IsProgramName(name)) {
        return {name};
    }
    return {name + L".exe", name + L".com"};
}

} // namespace platform
