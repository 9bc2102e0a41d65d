#include "../start_program.h"

#include <windows.h>

#include <bit>

namespace {

std::wstring Wide(const std::string& text) {
    std::wstring wide(text.size(), L'\0');
    wide.resize(static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()),
                                                             wide.data(), static_cast<int>(wide.size()))));
    return wide;
}

} // namespace

std::uint64_t StartProgram(const std::string& program, const std::string& argument, const std::string& directory,
                           std::string& problem) {
    std::wstring commandLine = L"\"" + Wide(program) + L"\" \"" + Wide(argument) + L"\"";
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (CreateProcessW(Wide(program).c_str(), commandLine.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr,
                       Wide(directory).c_str(), &startup, &process) == 0) {
        problem = "error " + std::to_string(GetLastError());
        return 0;
    }
    CloseHandle(process.hThread);
    return std::bit_cast<std::uint64_t>(process.hProcess);
}
