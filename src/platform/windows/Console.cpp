#include "platform/Console.h"

#include <algorithm>
#include <cstdio>

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include "platform/Environment.h"

namespace platform {
namespace {

void WriteAll(DWORD standardHandle, std::string_view bytes) {
    constexpr std::size_t largestWrite = 16 * 1024; // a console refuses much more at once
    const HANDLE handle = GetStdHandle(standardHandle);
    while (!bytes.empty()) {
        DWORD written = 0;
        if (WriteFile(handle, bytes.data(), static_cast<DWORD>(std::min(bytes.size(), largestWrite)), &written,
                      nullptr) == 0) {
            return;
        }
        bytes.remove_prefix(written);
    }
}

} // namespace

void PrepareConsole() {
    SetConsoleOutputCP(CP_UTF8);
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
}

bool IsOutputTerminal() {
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(STD_OUTPUT_HANDLE), &mode) != 0 && GetEnvironment(L"TERM") != L"dumb";
}

std::size_t TerminalWidth() {
    constexpr std::size_t usualWidth = 80;
    CONSOLE_SCREEN_BUFFER_INFO information = {};
    if (GetConsoleScreenBufferInfo(GetStdHandle(STD_OUTPUT_HANDLE), &information) == 0) {
        return usualWidth;
    }
    return static_cast<std::size_t>(information.srWindow.Right - information.srWindow.Left + 1);
}

void WriteOutput(std::string_view utf8) {
    WriteAll(STD_OUTPUT_HANDLE, utf8);
}

void WriteErrorOutput(std::string_view utf8) {
    WriteAll(STD_ERROR_HANDLE, utf8);
}

} // namespace platform
