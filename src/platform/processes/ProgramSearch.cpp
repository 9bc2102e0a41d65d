#include "platform/processes/ProgramSearch.h"

#include <algorithm>

#include "platform/files/NativePath.h"
#include "platform/system/Environment.h"

namespace platform {
namespace {

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
