#include "front_end/connection/LogHint.h"

#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "services/Settings.h"

namespace front_end {

std::wstring LogHint(const CommandContext& context) {
    const std::wstring logFile = settings::Current()->logFile;
    return logFile.empty() || !platform::Exists(logFile)
               ? L""
               : context.texts.Format(L"Errors/LogHint", {platform::ToNativeText(logFile)});
}

} // namespace front_end
