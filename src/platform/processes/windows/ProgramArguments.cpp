#include "platform/processes/ProgramArguments.h"

#include <windows.h>

#include <shellapi.h>

#include "platform/system/windows/LocalMemory.h"

namespace platform {

// The narrow arguments have lost the characters outside the code page, so the wide command line is read instead.
std::vector<std::wstring> ProgramArguments(int, const char* const*) {
    int count = 0;
    const LocalMemory<wchar_t*> values(CommandLineToArgvW(GetCommandLineW(), &count));
    std::vector<std::wstring> arguments;
    for (int i = 1; values && i < count; ++i) {
        arguments.emplace_back(values.get()[i]);
    }
    return arguments;
}

} // namespace platform
