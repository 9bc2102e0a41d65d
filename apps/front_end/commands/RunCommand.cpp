#include "front_end/commands/RunCommand.h"

#include <exception>

#include "CommonControllerLib/ControllerLogManager.h"
#include "front_end/commands/Commands.h"
#include "front_end/commands/FileRoles.h"
#include "front_end/commands/InputSets.h"
#include "front_end/commands/Problems.h"
#include "front_end/connection/DamagedListNotice.h"
#include "platform/terminal/Console.h"
#include "services/Settings.h"
#include "text/Text.h"

namespace front_end {
namespace {

ExitCode Version(CommandContext& context, const Command& /*command*/) {
    context.console.Write(context.program + L" " CONTROLLER_VERSION "\n");
    return ExitCode::Success;
}

using Operation = ExitCode (*)(CommandContext&, const Command&);

Operation OperationOf(CommandKind kind) {
    switch (kind) {
    case CommandKind::Overview:
        return commands::Overview;
    case CommandKind::List:
        return commands::List;
    case CommandKind::Show:
        return commands::Show;
    case CommandKind::Watch:
        return commands::Watch;
    case CommandKind::Run:
        return commands::Run;
    case CommandKind::Add:
        return commands::Add;
    case CommandKind::Wait:
        return commands::Wait;
    case CommandKind::Cancel:
        return commands::Cancel;
    case CommandKind::CancelAll:
        return commands::CancelAll;
    case CommandKind::Delete:
        return commands::Delete;
    case CommandKind::Again:
        return commands::Again;
    case CommandKind::Clean:
        return commands::Clean;
    case CommandKind::Edit:
        return commands::Edit;
    case CommandKind::Hold:
        return commands::Hold;
    case CommandKind::Release:
        return commands::Release;
    case CommandKind::Pause:
        return commands::Pause;
    case CommandKind::Resume:
        return commands::Resume;
    case CommandKind::Log:
        return commands::Log;
    case CommandKind::Scenarios:
        return commands::Scenarios;
    case CommandKind::ParameterSets:
        return commands::ParameterSets;
    case CommandKind::Web:
        return commands::Web;
    case CommandKind::Doctor:
        return commands::Doctor;
    case CommandKind::SettingsPath:
        return commands::SettingsPath;
    case CommandKind::SettingsShow:
        return commands::ShowSettings;
    case CommandKind::SettingsCheck:
        return commands::CheckSettings;
    case CommandKind::LanguageCheck:
        return commands::CheckLanguage;
    case CommandKind::StartHost:
        return commands::StartHost;
    case CommandKind::StopHost:
        return commands::StopHost;
    case CommandKind::HostStatus:
        return commands::HostStatus;
    case CommandKind::Completion: // this one and the next are of the program that has subcommands
    case CommandKind::Complete:
    case CommandKind::NewScenario:
    case CommandKind::PackScenario:
    case CommandKind::CheckScenario:
    case CommandKind::Help:
    case CommandKind::Version:
        break;
    }
    return Version;
}

/// Invalid settings could select a host other than the intended one.
void RequireSettings(const CommandContext& context) {
    if (const std::wstring problem = settings::Problem(); !problem.empty()) {
        throw CommandFailure{ExitCode::Usage, context.texts.Format(L"Errors/Settings", {problem})};
    }
}

/// The files that must not be used as log file.
std::vector<FileRole> FilesReadBy(const Command& command) {
    std::vector<FileRole> files = FilesOfSettings();
    files.push_back({L"Roles/Scenario", command.scenario});
    files.push_back({L"Roles/JobsFile", command.jobsFile == L"-" ? L"" : command.jobsFile});
    for (const std::wstring& input : command.inputs) {
        for (const std::wstring& file : FilesOfInputSet(input)) {
            files.push_back({L"Roles/Input", file});
        }
    }
    return files;
}

/// The doctor and the commands about settings report invalid ones themselves.
bool NeedsNoSettings(CommandKind kind) {
    return kind == CommandKind::Version || kind == CommandKind::Doctor || kind == CommandKind::SettingsPath ||
           kind == CommandKind::SettingsShow || kind == CommandKind::SettingsCheck ||
           kind == CommandKind::LanguageCheck;
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

ExitCode RunJobCommand(CommandContext& context, const std::function<ExitCode()>& command) {
    RequireSettings(context);
    DamagedListNotice notice(context);
    notice.Tell();
    const ExitCode exitCode = command();
    notice.Tell();
    return exitCode;
}

void ApplyCommonOptions(CommandContext& context, const Command& command) {
    if (command.colours == L"always" || command.colours == L"never") {
        context.console.UseColours(command.colours == L"always");
    }
    if (!command.logFile.empty()) {
        RequireDistinctFiles(context, {{L"Roles/LogFile", command.logFile}}, FilesReadBy(command));
        ControllerLogManager::Initialize(0, AbsolutePath(command.logFile), false);
    }
}

ExitCode RunCommand(CommandContext& context, const Command& command) {
    ApplyCommonOptions(context, command);
    if (command.kind == CommandKind::StopHost) {
        if (const std::wstring problem = settings::Problem(); !problem.empty()) {
            return commands::StopHostWithoutSettings(context, problem);
        }
    }
    const auto run = [&] { return OperationOf(command.kind)(context, command); };
    return NeedsNoSettings(command.kind) ? run() : RunJobCommand(context, run);
}

ExitCode RunGuarded(CommandContext& context, const std::function<ExitCode()>& command) {
    try {
        return command();
    } catch (const CommandFailure& failure) {
        WriteProblem(context, failure.message);
        return failure.exitCode;
    } catch (const UsageProblem& problem) {
        WriteProblem(context, context.texts.Format(problem.textKey, {problem.argument, problem.suggestion}) + L"\n" +
                                  UsageHint(context));
        return ExitCode::Usage;
    } catch (const OutputFailure& failure) {
        return TellLostOutput(context, failure.error);
    } catch (const std::exception& failure) {
        WriteProblem(context, text::FromUtf8(failure.what()));
        return ExitCode::JobFailed;
    }
}

} // namespace front_end
