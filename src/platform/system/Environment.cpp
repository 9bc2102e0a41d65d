#include "platform/system/Environment.h"

namespace platform {
namespace {

bool IsVariableName(const std::wstring& name) {
    return !name.empty() && name.find(L'=') == std::wstring::npos && name.find(L'\0') == std::wstring::npos;
}

} // namespace

std::optional<std::wstring> GetEnvironment(const std::wstring& name) {
    return IsVariableName(name) ? ReadVariable(name) : std::nullopt;
}

void SetEnvironment(const std::wstring& name, const std::wstring& value) {
    if (!IsVariableName(name)) {
        return;
    }
    if (value.empty()) {
        RemoveVariable(name);
    } else {
        WriteVariable(name, value);
    }
}

} // namespace platform
