#include "controller_cli/connection/LogHint.h"

#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "services/Settings.h"

namespace controller_cli {

std::wstring LogHint(const CommandContext& context) {
    const std::wstring logFile = settings::Current()->logFile;
    return logFile.empty() || !platform::Exists(logFile)
               ? L""
               : context.texts.Format(L"Errors/LogHint", {platform::ToNativeText(logFile)});
}

} // namespace controller_cli
