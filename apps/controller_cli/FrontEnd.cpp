#include "controller_cli/FrontEnd.h"

#include <array>
#include <exception>
#include <functional>

#include "CommonControllerLib/ControllerLogManager.h"
#include "controller_cli/command_line/LongOptions.h"
#include "controller_cli/commands/Commands.h"
#include "controller_cli/commands/FileRoles.h"
#include "controller_cli/commands/InputSets.h"
#include "controller_cli/commands/Problems.h"
#include "controller_cli/connection/DamagedListNotice.h"
#include "controller_cli/short_options/ShortOptionCommands.h"
#include "platform/terminal/Console.h"
#include "services/Settings.h"
#include "text/Text.h"

namespace controller_cli {
namespace {

ExitCode Help(CommandContext& context, const LongCommand& /*command*/) {
    constexpr std::array sections = {L"Help/Usage",    L"Help/Commands",  L"Help/Options",    L"Help/Letters",
                                     L"Help/Examples", L"Help/ExitCodes", L"Help/Environment"};
    std::wstring text;
    for (const wchar_t* const section : sections) {
        text += (text.empty() ? L"" : L"\n") + context.texts.Get(section) + L"\n";
    }
    context.console.Write(text);
    return ExitCode::Success;
}

ExitCode Version(CommandContext& context, const LongCommand& /*command*/) {
    context.console.Write(L"controller_cli " CONTROLLER_VERSION "\n");
    return ExitCode::Success;
}

using Operation = ExitCode (*)(CommandContext&, const LongCommand&);

Operation OperationOf(LongCommandKind kind) {
    switch (kind) {
    case LongCommandKind::Version:
        return Version;
    case LongCommandKind::List:
        return commands::List;
    case LongCommandKind::Watch:
        return commands::Watch;
    case LongCommandKind::Run:
        return commands::Run;
    case LongCommandKind::Wait:
        return commands::Wait;
    case LongCommandKind::Cancel:
        return commands::Cancel;
    case LongCommandKind::CancelAll:
        return commands::CancelAll;
    case LongCommandKind::Delete:
        return commands::Delete;
    case LongCommandKind::Again:
        return commands::Again;
    case LongCommandKind::Clean:
        return commands::Clean;
    case LongCommandKind::Edit:
        return commands::Edit;
    case LongCommandKind::Hold:
        return commands::Hold;
    case LongCommandKind::Release:
        return commands::Release;
    case LongCommandKind::Pause:
        return commands::Pause;
    case LongCommandKind::Resume:
        return commands::Resume;
    case LongCommandKind::Log:
        return commands::Log;
    case LongCommandKind::Scenarios:
        return commands::Scenarios;
    case LongCommandKind::ParameterSets:
        return commands::ParameterSets;
    case LongCommandKind::StopHost:
        return commands::StopHost;
    case LongCommandKind::Help:
        break;
    }
    return Help;
}

/// Invalid settings could select a host other than the intended one.
void RequireSettings(const CommandContext& context) {
    if (const std::wstring problem = settings::Problem(); !problem.empty()) {
        throw CommandFailure{ExitCode::Usage, context.texts.Format(L"Errors/Settings", {problem})};
    }
}

/// Runs a command that concerns jobs. Reports quarantined job lists before the command, and those that its host
/// quarantines after it.
ExitCode RunJobCommand(CommandContext& context, const std::function<ExitCode()>& command) {
    RequireSettings(context);
    DamagedListNotice notice(context);
    notice.Tell();
    const ExitCode exitCode = command();
    notice.Tell();
    return exitCode;
}

/// The files that must not be used as log file.
std::vector<FileRole> FilesReadBy(const LongCommand& command) {
    std::vector<FileRole> files = FilesOfSettings();
    files.push_back({L"Roles/Scenario", command.scenario});
    for (const std::wstring& input : command.inputs) {
        for (const std::wstring& file : FilesOfInputSet(input)) {
            files.push_back({L"Roles/Input", file});
        }
    }
    return files;
}

ExitCode RunLongCommand(CommandContext& context, const std::vector<std::wstring>& arguments) {
    const LongCommand command = ParseLongCommand(arguments);
    if (!command.logFile.empty()) {
        RequireDistinctFiles(context, {{L"Roles/LogFile", command.logFile}}, FilesReadBy(command));
        ControllerLogManager::Initialize(0, AbsolutePath(command.logFile), false);
    }
    if (command.kind == LongCommandKind::StopHost) {
        if (const std::wstring problem = settings::Problem(); !problem.empty()) {
            return commands::StopHostWithoutSettings(context, problem);
        }
    }
    const auto run = [&] { return OperationOf(command.kind)(context, command); };
    const bool isAboutJobs = command.kind != LongCommandKind::Help && command.kind != LongCommandKind::Version;
    return isAboutJobs ? RunJobCommand(context, run) : run();
}

ExitCode RunCommand(CommandContext& context, const std::vector<std::wstring>& arguments) {
    if (HasLongOptions(arguments)) {
        return RunLongCommand(context, arguments);
    }
    return RunJobCommand(context, [&] { return RunLetterCommand(context, arguments); });
}

/// A reader that closed the pipe early (`| head`) is not an error.
ExitCode TellLostOutput(CommandContext& context, const platform::Error& error) {
    if (platform::IsReaderGone(error)) {
        return ExitCode::ReaderGone;
    }
    WriteProblem(context, context.texts.Format(L"Errors/Output", {error.Text()}));
    return ExitCode::Usage;
}

} // namespace

ExitCode RunFrontEnd(CommandContext& context, const std::vector<std::wstring>& arguments) {
    try {
        return RunCommand(context, arguments);
    } catch (const CommandFailure& failure) {
        WriteProblem(context, failure.message);
        return failure.exitCode;
    } catch (const UsageProblem& problem) {
        WriteProblem(context, context.texts.Format(problem.textKey, {problem.argument}) + L"\n" +
                                  context.texts.Get(L"Usage/Hint"));
        return ExitCode::Usage;
    } catch (const OutputFailure& failure) {
        return TellLostOutput(context, failure.error);
    } catch (const std::exception& failure) {
        WriteProblem(context, text::FromUtf8(failure.what()));
        return ExitCode::JobFailed;
    }
}

} // namespace controller_cli
