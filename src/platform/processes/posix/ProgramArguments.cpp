#include "platform/processes/ProgramArguments.h"

#include "text/Text.h"

namespace platform {

std::vector<std::wstring> ProgramArguments(int count, const char* const* values) {
    std::vector<std::wstring> arguments;
    for (int i = 1; i < count; ++i) {
        arguments.push_back(text::FromUtf8(values[i]));
    }
    return arguments;
}

} // namespace platform
