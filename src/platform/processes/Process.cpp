#include "platform/processes/Process.h"

#include <algorithm>

#include "platform/files/NativePath.h"
#include "platform/system/Environment.h"
#include "text/Hexadecimal.h"

namespace platform {
namespace {

bool IsCut(const std::wstring& text) {
    return text.find(L'\0') != std::wstring::npos;
}

bool IsVariableRefused(const std::pair<std::wstring, std::optional<std::wstring>>& variable) {
    const auto& [name, value] = variable;
    return name.empty() || IsCut(name) || name.find(L'=') != std::wstring::npos ||
           IsCut(value.value_or(std::wstring()));
}

bool HasRefusedText(const ProcessStart& start) {
    return IsCut(start.program) || IsCut(start.currentDirectory) ||
           std::any_of(start.arguments.begin(), start.arguments.end(), IsCut) ||
           std::any_of(start.environment.begin(), start.environment.end(), IsVariableRefused);
}

Error CheckPath(const std::wstring& program) {
    if (!IsAbsolute(program)) {
        return {ErrorKind::NotAbsolute};
    }
    return IsProgramName(program) ? Error{} : Error{ErrorKind::NotSupported};
}

std::vector<std::wstring> SearchDirectories() {
    const std::wstring list = GetEnvironment(L"PATH").value_or(std::wstring());
    std::vector<std::wstring> directories;
    for (std::size_t begin = 0; begin <= list.size();) {
        const std::size_t end = std::min(list.find(pathListSeparator, begin), list.size());
        directories.push_back(list.substr(begin, end - begin));
        begin = end + 1;
    }
    std::erase_if(directories, [](const std::wstring& directory) { return !IsAbsolute(directory); });
    return directories;
}

} // namespace

Error StartProcess(const ProcessStart& start, OwnedHandle& process) {
    return StartProcess(start, start.output, process);
}

std::wstring InheritedHandleText(void* handle) {
    return text::HandleText(reinterpret_cast<std::uintptr_t>(handle));
}

OwnedHandle TakeInheritedHandle(const std::wstring& text) {
    const std::uint64_t number = text.starts_with(L"0x") ? text::ReadHandle(text).value_or(0) : 0;
    void* const handle = reinterpret_cast<void*>(static_cast<std::uintptr_t>(number));
    return handle != nullptr && SetCloseOnExec(handle) ? OwnedHandle(handle) : OwnedHandle();
}

Error CheckProcessStart(const ProcessStart& start, std::wstring& program) {
    if (HasRefusedText(start)) {
        return {ErrorKind::NotSupported};
    }
    if (start.searchPath && FileName(start.program) == start.program) {
        const std::optional<std::wstring> found = FindProgram(start.program);
        program = found.value_or(std::wstring());
        return found ? Error{} : Error{ErrorKind::NotFound};
    }
    program = start.program;
    return CheckPath(program);
}

std::optional<std::wstring> FindProgram(const std::wstring& name) {
    if (name.empty() || FileName(name) != name) {
        return std::nullopt;
    }
    for (const std::wstring& directory : SearchDirectories()) {
        for (const std::wstring& fileName : ProgramFileNames(name)) {
            const std::wstring path = ResolveAgainst(directory, fileName);
            if (IsProgramFile(path)) {
                return path;
            }
        }
    }
    return std::nullopt;
}

std::optional<std::wstring> FindRunnable(const std::wstring& program) {
    if (!IsAbsolute(program)) {
        return FindProgram(program);
    }
    return IsProgramName(program) && IsProgramFile(program) ? std::optional(program) : std::nullopt;
}

} // namespace platform
