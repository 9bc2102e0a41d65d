#include "platform/processes/windows/CreateProcess.h"

#include <algorithm>
#include <map>
#include <memory>
#include <string_view>

#include <windows.h>

#include "platform/files/NativePath.h"
#include "platform/files/windows/SystemPath.h"
#include "platform/processes/Process.h"
#include "platform/system/windows/Handle.h"

namespace platform {
namespace {

/// Backslashes are literal unless they precede a quote (including the closing one); there each must be doubled.
std::wstring Quote(const std::wstring& argument) {
    if (!argument.empty() && argument.find_first_of(L" \t\n\v\"") == std::wstring::npos) {
        return argument;
    }
    std::wstring quoted = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t unit : argument) {
        if (unit == L'"') {
            quoted.append(backslashes + 1, L'\\');
        }
        backslashes = unit == L'\\' ? backslashes + 1 : 0;
        quoted += unit;
    }
    quoted.append(backslashes, L'\\');
    return quoted + L'"';
}

/// Quotes a program and its arguments so that the C runtime of the child (`CommandLineToArgvW`) reads back exactly
/// these arguments.
std::wstring BuildCommandLine(const std::wstring& program, const std::vector<std::wstring>& arguments) {
    // The program name is parsed by simpler rules, and no file name contains a quote.
    std::wstring line = L'"' + program + L'"';
    for (const std::wstring& argument : arguments) {
        line += L' ' + Quote(argument);
    }
    return line;
}

struct LessWithoutCase {
    bool operator()(const std::wstring& left, const std::wstring& right) const {
        return CompareStringOrdinal(left.c_str(), static_cast<int>(left.size()), right.c_str(),
                                    static_cast<int>(right.size()), TRUE) == CSTR_LESS_THAN;
    }
};

using Variables = std::map<std::wstring, std::wstring, LessWithoutCase>;

Variables OwnVariables() {
    const std::unique_ptr<wchar_t, BOOL(WINAPI*)(wchar_t*)> block(GetEnvironmentStringsW(), FreeEnvironmentStringsW);
    Variables variables;
    for (const wchar_t* entry = block.get(); entry != nullptr && *entry != L'\0';) {
        const std::wstring_view text = entry;
        // The variables for the current directories of drives have names that begin with "=".
        const std::size_t nameEnd = text.find(L'=', 1);
        if (nameEnd != std::wstring_view::npos) {
            variables.emplace(text.substr(0, nameEnd), text.substr(nameEnd + 1));
        }
        entry += text.size() + 1;
    }
    return variables;
}

/// The variables of a child as one block, sorted as the system requires: those of this process with the differences in
/// `start`.
std::wstring EnvironmentBlock(const ProcessStart& start) {
    Variables variables = OwnVariables();
    for (const auto& [name, value] : start.environment) {
        variables.erase(name);
        if (value) {
            variables.emplace(name, *value);
        }
    }
    std::wstring block;
    for (const auto& [name, value] : variables) {
        block.append(name).append(1, L'=').append(value).append(1, L'\0');
    }
    block.append(variables.empty() ? 2 : 1, L'\0');
    return block;
}

/// The null device, for a child without a terminal.
OwnedFileHandle OpenNowhere(DWORD access) {
    SECURITY_ATTRIBUTES inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    return OpenFileHandle(L"NUL", access, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_EXISTING, 0, &inheritable);
}

/// A copy that a child can inherit; the original handle stays private to this process.
OwnedFileHandle InheritableCopy(HANDLE handle) {
    HANDLE copy = nullptr;
    DuplicateHandle(GetCurrentProcess(), handle, GetCurrentProcess(), &copy, 0, TRUE, DUPLICATE_SAME_ACCESS);
    return OwnedFileHandle(copy);
}

OwnedFileHandle OpenForWriting(HANDLE output) {
    return output == nullptr ? OpenNowhere(GENERIC_WRITE) : InheritableCopy(output);
}

/// The handles of a child: its standard streams and the explicitly inherited ones.
struct ChildHandles {
    OwnedFileHandle input;
    OwnedFileHandle output;
    OwnedFileHandle errorOutput;
    std::vector<HANDLE> list;

    Error Open(const ProcessStart& start, void* errors) {
        input = OpenNowhere(GENERIC_READ);
        output = OpenForWriting(start.output);
        errorOutput = OpenForWriting(errors);
        if (!input || !output || !errorOutput) {
            return LastError();
        }
        list = {input.Get(), output.Get(), errorOutput.Get()};
        for (void* const handle : start.inherited) {
            if (SetHandleInformation(handle, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT) == 0) {
                return LastError();
            }
            // The system rejects a list that contains a handle twice.
            if (std::find(list.begin(), list.end(), handle) == list.end()) {
                list.push_back(handle);
            }
        }
        return {};
    }
};

/// The attribute list of the inherited handles and of the job object. The lists of handles and jobs must outlive this
/// object.
class AttributeList {
public:
    AttributeList(std::vector<HANDLE>& handles, std::vector<HANDLE>& jobs) {
        constexpr DWORD count = 2;
        SIZE_T size = 0;
        InitializeProcThreadAttributeList(nullptr, count, 0, &size);
        storage.resize(size);
        isInitialized = InitializeProcThreadAttributeList(Get(), count, 0, &size) != 0;
        isUsable = isInitialized && Set(PROC_THREAD_ATTRIBUTE_HANDLE_LIST, handles) &&
                   (jobs.empty() || Set(PROC_THREAD_ATTRIBUTE_JOB_LIST, jobs));
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
    bool Set(DWORD_PTR attribute, std::vector<HANDLE>& list) {
        return UpdateProcThreadAttribute(Get(), 0, attribute, list.data(), list.size() * sizeof(HANDLE), nullptr,
                                         nullptr) != 0;
    }

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
    information.StartupInfo.hStdError = handles.errorOutput.Get();
    information.lpAttributeList = attributes.Get();
    return information;
}

/// The short name of a directory; the long one if the volume has no short names.
std::wstring ShortNameOf(const std::wstring& directory) {
    const std::wstring path = SystemPath(directory);
    std::wstring name(GetShortPathNameW(path.c_str(), nullptr, 0), L'\0');
    name.resize(name.empty() ? 0 : GetShortPathNameW(path.c_str(), name.data(), static_cast<DWORD>(name.size())));
    return name.empty() ? path : name;
}

/// Only its short name makes a current directory with a long path usable: the long path prefix is not allowed there, so
/// it is removed.
Error CurrentDirectoryFor(const std::wstring& directory, std::wstring& current) {
    constexpr std::size_t longest = MAX_PATH - 2;
    current = ToNativeText(directory);
    if (current.size() > longest) {
        current = WithoutSystemPrefix(ShortNameOf(directory));
    }
    return current.size() <= longest ? Error{} : ErrorFromCode(ERROR_FILENAME_EXCED_RANGE);
}

Error Create(const std::wstring& program, const ProcessStart& start, STARTUPINFOEXW& startup, OwnedHandle& process) {
    std::wstring commandLine = BuildCommandLine(program, start.arguments);
    std::wstring environment = EnvironmentBlock(start);
    std::wstring directory;
    if (const Error result = CurrentDirectoryFor(start.currentDirectory, directory); !result) {
        return result;
    }
    const DWORD flags = CREATE_NO_WINDOW | CREATE_UNICODE_ENVIRONMENT | EXTENDED_STARTUPINFO_PRESENT |
                        (start.detached ? CREATE_NEW_PROCESS_GROUP : 0UL);
    PROCESS_INFORMATION information{};
    if (CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, TRUE, flags, environment.data(),
                       directory.empty() ? nullptr : directory.c_str(), &startup.StartupInfo, &information) == 0) {
        return LastError();
    }
    process = OwnedHandle(information.hProcess);
    const OwnedHandle thread(information.hThread);
    return {};
}

} // namespace

Error CreateChild(const ProcessStart& start, void* job, void* errorOutput, OwnedHandle& process) {
    std::wstring program;
    if (const Error result = CheckProcessStart(start, program); !result) {
        return result;
    }
    ChildHandles handles;
    if (const Error result = handles.Open(start, errorOutput); !result) {
        return result;
    }
    std::vector<HANDLE> jobs;
    if (job != nullptr) {
        jobs.push_back(job);
    }
    AttributeList attributes(handles.list, jobs);
    if (!attributes.IsUsable()) {
        return LastError();
    }
    STARTUPINFOEXW startup = StartupInformation(handles, attributes);
    return Create(SystemPath(program), start, startup, process);
}

} // namespace platform
