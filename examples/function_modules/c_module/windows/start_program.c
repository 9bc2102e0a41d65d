#include "../start_program.h"

#include <windows.h>

#include <stdio.h>
#include <wchar.h>

enum { longest = 8192 };

static int to_wide(const char* text, wchar_t* wide) {
    return MultiByteToWideChar(CP_UTF8, 0, text, -1, wide, longest / 4) > 0;
}

long start_program(const char* program, const char* argument, const char* directory, controller_run_answer* answer) {
    static wchar_t wide_program[longest / 4];
    static wchar_t wide_argument[longest / 4];
    static wchar_t wide_directory[longest / 4];
    static wchar_t command_line[longest];
    STARTUPINFOW startup = {.cb = sizeof startup};
    PROCESS_INFORMATION process = {0};
    if (!to_wide(program, wide_program) || !to_wide(argument, wide_argument) || !to_wide(directory, wide_directory)) {
        snprintf(answer->reason, sizeof answer->reason, "A path is too long.");
        return 1;
    }
    _snwprintf(command_line, longest - 1, L"\"%ls\" \"%ls\"", wide_program, wide_argument);
    if (!CreateProcessW(wide_program, command_line, NULL, NULL, FALSE, CREATE_NO_WINDOW, NULL, wide_directory, &startup,
                        &process)) {
        snprintf(answer->reason, sizeof answer->reason, "The program %.500s cannot be started: error %lu.", program,
                 GetLastError());
        return 1;
    }
    CloseHandle(process.hThread);
    answer->process_handle = (uint64_t)(uintptr_t)process.hProcess;
    return 0;
}
