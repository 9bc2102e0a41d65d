#include "platform/processes/ProcessStartCheck.h"

#include <algorithm>

#include "platform/files/NativePath.h"
#include "platform/processes/ProgramSearch.h"

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

} // namespace

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

} // namespace platform
