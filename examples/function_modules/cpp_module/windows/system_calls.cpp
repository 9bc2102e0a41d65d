#include "../system_calls.h"

#include <algorithm>
#include <bit>
#include <filesystem>

#include <windows.h>

std::wstring NativePath(std::wstring path) {
    std::replace(path.begin(), path.end(), L'/', L'\\');
    return path;
}

bool MakeDirectory(const std::wstring& path) {
    std::error_code ignored;
    std::filesystem::create_directories(std::filesystem::path(path).parent_path(), ignored);
    // The directory inherits the permissions of its parent, which is in the user's data directory.
    return CreateDirectoryW(path.c_str(), nullptr) != 0 || GetLastError() == ERROR_ALREADY_EXISTS;
}

std::uint64_t StartProgram(const std::wstring& program, const std::wstring& argument, const std::wstring& directory,
                           std::wstring& problem) {
    std::wstring commandLine = L"\"" + program + L"\" \"" + argument + L"\"";
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr,
                       directory.c_str(), &startup, &process) == 0) {
        problem = L"error " + std::to_wstring(GetLastError());
        return 0;
    }
    CloseHandle(process.hThread);
    return std::bit_cast<std::uint64_t>(process.hProcess);
}
