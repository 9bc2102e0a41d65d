#include "platform/processes/windows/EnvironmentBlock.h"

#include <map>
#include <memory>
#include <string_view>

#include <windows.h>

namespace platform {
namespace {

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

} // namespace

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

} // namespace platform
