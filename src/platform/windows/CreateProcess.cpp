#include "platform/windows/CreateProcess.h"

#include <algorithm>

#include <windows.h>

#include "platform/NativePath.h"
#include "platform/ProcessStartCheck.h"
#include "platform/windows/CommandLine.h"
#include "platform/windows/EnvironmentBlock.h"
#include "platform/windows/SystemPath.h"

namespace platform {
namespace {

/// What a child gets in place of a terminal.
OwnedHandle OpenNowhere(DWORD access) {
    SECURITY_ATTRIBUTES inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    const HANDLE file =
        CreateFileW(L"NUL", access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inheritable, OPEN_EXISTING, 0, nullptr);
    return OwnedHandle(file == INVALID_HANDLE_VALUE ? nullptr : file);
}

/// A copy that a child can inherit: the pipe's own end stays this process's alone.
OwnedHandle InheritableCopy(HANDLE handle) {
    HANDLE copy = nullptr;
    DuplicateHandle(GetCurrentProcess(), handle, GetCurrentProcess(), &copy, 0, TRUE, DUPLICATE_SAME_ACCESS);
    return OwnedHandle(copy);
}

/// The handles of a child: its standard streams and what it is given besides.
struct ChildHandles {
    OwnedHandle input;
    OwnedHandle output;
    std::vector<HANDLE> list;

    Error Open(const ProcessStart& start) {
        input = OpenNowhere(GENERIC_READ);
        output = start.output == nullptr ? OpenNowhere(GENERIC_WRITE) : InheritableCopy(start.output);
        if (!input || !output) {
            return LastError();
        }
        list = {input.Get(), output.Get()};
        for (void* const handle : start.inherited) {
            if (SetHandleInformation(handle, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT) == 0) {
                return LastError();
            }
            // A list that names a handle twice is refused.
            if (std::find(list.begin(), list.end(), handle) == list.end()) {
                list.push_back(handle);
            }
        }
        return {};
    }
};

/// The list of the handles that a child inherits, in the system's own form.
class AttributeList {
public:
    explicit AttributeList(std::vector<HANDLE>& handles) {
        SIZE_T size = 0;
        InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
        storage.resize(size);
        isInitialized = InitializeProcThreadAttributeList(Get(), 1, 0, &size) != 0;
        isUsable =
            isInitialized && UpdateProcThreadAttribute(Get(), 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, handles.data(),
                                                       handles.size() * sizeof(HANDLE), nullptr, nullptr) != 0;
    }
    ~AttributeList() {
        if (isInitialized) {
            DeleteProcThreadAttributeList(Get());
        }
    }
    AttributeList(const AttributeList&) = delete;
    AttributeList& operator=(const AttributeList&) = delete;

    bool IsUsable() const { return isUsable; }
    LPPROC_THREAD_ATTRIBUTE_LIST Get() { return reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(storage.data()); }

private:
    std::vector<std::byte> storage;
    bool isInitialized = false;
    bool isUsable = false;
};

STARTUPINFOEXW StartupInformation(const ChildHandles& handles, AttributeList& attributes) {
    STARTUPINFOEXW information{};
    information.StartupInfo.cb = sizeof information;
    information.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
    information.StartupInfo.hStdInput = handles.input.Get();
    information.StartupInfo.hStdOutput = handles.output.Get();
    information.StartupInfo.hStdError = handles.output.Get();
    information.lpAttributeList = attributes.Get();
    return information;
}

/// A current folder has no way past the old limit on the length of paths, but for its short name, where it has one.
std::wstring CurrentFolderFor(const std::wstring& folder) {
    constexpr std::size_t longest = MAX_PATH - 2;
    const std::wstring native = ToNativeText(folder);
    if (native.size() <= longest) {
        return native;
    }
    wchar_t shortName[MAX_PATH];
    const DWORD length = GetShortPathNameW(SystemPath(folder).c_str(), shortName, MAX_PATH);
    const bool isShort = length > 0 && length < MAX_PATH;
    return isShort ? std::wstring(shortName, length) : native;
}

Error Create(const std::wstring& program, const ProcessStart& start, STARTUPINFOEXW& startup,
             SuspendedProcess& created) {
    std::wstring commandLine = BuildCommandLine(program, start.arguments);
    std::wstring environment = EnvironmentBlock(start);
    const std::wstring folder = CurrentFolderFor(start.currentFolder);
    const DWORD flags = CREATE_SUSPENDED | CREATE_NO_WINDOW | CREATE_UNICODE_ENVIRONMENT |
                        EXTENDED_STARTUPINFO_PRESENT | (start.detached ? CREATE_NEW_PROCESS_GROUP : 0UL);
    PROCESS_INFORMATION information{};
    if (CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, TRUE, flags, environment.data(),
                       folder.empty() ? nullptr : folder.c_str(), &startup.StartupInfo, &information) == 0) {
        return LastError();
    }
    created.process = OwnedHandle(information.hProcess);
    created.thread = OwnedHandle(information.hThread);
    return {};
}

} // namespace

Error CreateSuspended(const ProcessStart& start, SuspendedProcess& created) {
    std::wstring program;
    if (const Error error = CheckProcessStart(start, program)) {
        return error;
    }
    ChildHandles handles;
    if (const Error error = handles.Open(start)) {
        return error;
    }
    AttributeList attributes(handles.list);
    if (!attributes.IsUsable()) {
        return LastError();
    }
    STARTUPINFOEXW startup = StartupInformation(handles, attributes);
    return Create(SystemPath(program), start, startup, created);
}

Error Resume(const SuspendedProcess& created) {
    if (ResumeThread(created.thread.Get()) != static_cast<DWORD>(-1)) {
        return {};
    }
    const Error error = LastError();
    TerminateProcess(created.process.Get(), 1);
    return error;
}

} // namespace platform
