#include "companion/log/LogText.h"

#include "platform/OneLine.h"
#include "platform/Text.h"

namespace log_file {

std::string LogText(const std::wstring& message) {
    return platform::ToUtf8(platform::Escaped(message));
}

} // namespace log_file
