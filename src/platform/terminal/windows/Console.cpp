#include "platform/terminal/Console.h"

#include <algorithm>
#include <cstdio>

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include "platform/system/Environment.h"

namespace platform {
namespace {

Error WriteAll(DWORD standardHandle, std::string_view bytes) {
    constexpr std::size_t largestWrite = 16 * 1024; // a console rejects much larger writes
    const HANDLE handle = GetStdHandle(standardHandle);
    while (!bytes.empty()) {
        DWORD written = 0;
        if (WriteFile(handle, bytes.data(), static_cast<DWORD>(std::min(bytes.size(), largestWrite)), &written,
                      nullptr) == 0) {
            return LastError();
        }
        bytes.remove_prefix(written);
    }
    return {};
}

/// The visible part of the terminal's buffer; `otherwise` on failure.
SMALL_RECT TerminalWindow(const SMALL_RECT& otherwise) {
    CONSOLE_SCREEN_BUFFER_INFO information = {};
    const bool isKnown = GetConsoleScreenBufferInfo(GetStdHandle(STD_OUTPUT_HANDLE), &information) != 0;
    return isKnown ? information.srWindow : otherwise;
}

/// Enables escape sequences, for colours and cursor movement.
void ObeyEscapeSequences() {
    const HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
    DWORD mode = 0;
    if (GetConsoleMode(output, &mode) != 0) {
        SetConsoleMode(output, mode | ENABLE_PROCESSED_OUTPUT | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
    }
}

} // namespace

void PrepareConsole() {
    SetConsoleOutputCP(CP_UTF8);
    ObeyEscapeSequences();
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    MakeWideOutputUtf8();
}

bool IsOutputTerminal() {
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(STD_OUTPUT_HANDLE), &mode) != 0 && GetEnvironment(L"TERM") != L"dumb";
}

std::size_t TerminalWidth() {
    constexpr SHORT usualWidth = 80;
    const SMALL_RECT window = TerminalWindow({0, 0, usualWidth - 1, 0});
    return static_cast<std::size_t>(window.Right - window.Left + 1);
}

std::size_t TerminalHeight() {
    constexpr SHORT usualHeight = 24;
    const SMALL_RECT window = TerminalWindow({0, 0, 0, usualHeight - 1});
    return static_cast<std::size_t>(window.Bottom - window.Top + 1);
}

Error WriteOutput(std::string_view utf8) {
    return WriteAll(STD_OUTPUT_HANDLE, utf8);
}

bool IsReaderGone(const Error& failedWrite) {
    return failedWrite.systemCode == ERROR_NO_DATA || failedWrite.systemCode == ERROR_BROKEN_PIPE;
}

// Windows reports a lost reader only at the next write.
void* OutputReaderGone() {
    return nullptr;
}

void WriteErrorOutput(std::string_view utf8) {
    (void)WriteAll(STD_ERROR_HANDLE, utf8);
}

bool IsInputTerminal() {
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(STD_INPUT_HANDLE), &mode) != 0;
}

Error ReadInput(char* buffer, std::size_t capacity, std::size_t& count) {
    constexpr std::size_t largestRead = std::size_t{1} << 20;
    DWORD taken = 0;
    const bool isRead = ReadFile(GetStdHandle(STD_INPUT_HANDLE), buffer,
                                 static_cast<DWORD>(std::min(capacity, largestRead)), &taken, nullptr) != 0;
    count = isRead ? taken : 0;
    // The writer of a pipe that has closed it: the end of the input.
    return isRead || GetLastError() == ERROR_BROKEN_PIPE ? Error() : LastError();
}

} // namespace platform
