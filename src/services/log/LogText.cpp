#include "services/log/LogText.h"

#include "text/EscapeControls.h"
#include "text/Text.h"

namespace log_file {

std::string LogText(const std::wstring& message) {
    return text::ToUtf8(text::Escaped(message));
}

} // namespace log_file
