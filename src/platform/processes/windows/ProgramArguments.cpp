#include "platform/processes/ProgramArguments.h"

#include <memory>

#include <windows.h>

#include <shellapi.h>

namespace platform {
namespace {

struct LocalDeleter {
    void operator()(wchar_t** memory) const { LocalFree(memory); }
};

} // namespace

// The narrow arguments have lost what the code page does not know: the system is asked again.
std::vector<std::wstring> ProgramArguments(int, const char* const*) {
    int count = 0;
    const std::unique_ptr<wchar_t*, LocalDeleter> values(CommandLineToArgvW(GetCommandLineW(), &count));
    std::vector<std::wstring> arguments;
    for (int i = 1; values && i < count; ++i) {
        arguments.emplace_back(values.get()[i]);
    }
    return arguments;
}

} // namespace platform
