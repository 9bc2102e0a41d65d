#include "platform/processes/ProgramArguments.h"

#include <windows.h>

#include <shellapi.h>

#include "platform/system/windows/LocalMemory.h"

namespace platform {

// The narrow arguments have lost what the code page does not know: the system is asked again.
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
