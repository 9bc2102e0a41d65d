#include "scenario_runner/RunnerArguments.h"

#include "platform/files/NativePath.h"

namespace scenario_runner {
namespace {

constexpr const wchar_t* usage = L"Usage: scenario_runner --work-dir DIR [--host HANDLE] [--settings FILE]";

std::wstring* MemberFor(const std::wstring& name, RunnerArguments& arguments) {
    if (name == L"--work-dir") {
        return &arguments.workDir;
    }
    if (name == L"--host") {
        return &arguments.host;
    }
    if (name == L"--serve") {
        return &arguments.serve;
    }
    return name == L"--settings" ? &arguments.settingsFile : nullptr;
}

} // namespace

bool ParseRunnerArguments(const std::vector<std::wstring>& arguments, RunnerArguments& parsed, std::wstring& problem) {
    RunnerArguments read;
    for (std::size_t index = 0; index < arguments.size(); index += 2) {
        std::wstring* const member = MemberFor(arguments[index], read);
        if (member == nullptr || index + 1 == arguments.size()) {
            problem = L"\"" + arguments[index] + L"\" is unknown or lacks its value. " + usage;
            return false;
        }
        *member = arguments[index + 1];
    }
    if (read.serve.empty() ? !platform::IsAbsolute(read.workDir) : !read.workDir.empty()) {
        problem = L"The work directory must be an absolute path. " + std::wstring(usage);
        return false;
    }
    parsed = read;
    return true;
}

} // namespace scenario_runner
