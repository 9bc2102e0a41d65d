#include "controller_cli/short_options/ShortOptionOutput.h"

#include <utility>

#include "front_end/commands/CommandFailure.h"
#include "front_end/commands/FileRoles.h"

namespace front_end {

ShortOptionOutput::ShortOptionOutput(CommandContext& commandContext, std::wstring outputFile)
    : context(commandContext), path(std::move(outputFile)) {
    if (path.empty()) {
        return;
    }
    if (const platform::Error result = file.Open(AbsolutePath(path)); !result) {
        throw CommandFailure{ExitCode::Usage, context.texts.Format(L"Errors/OutputFile", {path, result.Text()})};
    }
}

void ShortOptionOutput::Write(const std::string& lines) {
    if (path.empty()) {
        context.console.WriteBytes(TextOutput::WithLineEndsOfSystem(lines));
        return;
    }
    if (const platform::Error result = file.Write(lines); !result) {
        context.console.WriteBytes(TextOutput::WithLineEndsOfSystem(lines));
        throw CommandFailure{ExitCode::Usage, context.texts.Format(L"Errors/OutputLines", {path, result.Text()})};
    }
}

} // namespace front_end
