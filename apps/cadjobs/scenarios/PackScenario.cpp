#include "cadjobs/scenarios/ScenarioCommands.h"

#include "cadjobs/scenarios/PackageContent.h"
#include "front_end/commands/FileRoles.h"
#include "front_end/output/StateJson.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"

namespace front_end::commands {

ExitCode PackScenario(CommandContext& context, const Command& command) {
    const std::wstring directory = AbsolutePath(command.operands.front());
    if (!platform::IsDirectory(directory)) {
        throw CommandFailure{ExitCode::Usage,
                             context.texts.Format(L"Scenario/NoDirectory", {platform::ToNativeText(directory)})};
    }
    const std::wstring target = AbsolutePath(command.outputFolder);
    if (const platform::Error result = platform::EnsureDirectory(target); !result) {
        throw CommandFailure{ExitCode::Usage, context.texts.Format(L"Scenario/NotMade",
                                                                   {platform::ToNativeText(target), result.Text()})};
    }
    const std::wstring package = platform::ResolveAgainst(target, platform::FileName(directory) + L".esa");
    const std::size_t count = PackDirectory(context, directory, package);
    const std::wstring native = platform::ToNativeText(package);
    context.console.Write(command.asJson
                              ? PathJson(native)
                              : context.texts.Format(L"Scenario/Packed", {native, std::to_wstring(count)}) + L"\n");
    return ExitCode::Success;
}

} // namespace front_end::commands
