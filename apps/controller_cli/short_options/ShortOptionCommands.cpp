#include "controller_cli/short_options/ShortOptionCommands.h"

#include <algorithm>
#include <iterator>

#include "CommonControllerLib/CLIArgumentParser.h"
#include "CommonControllerLib/ControllerLogManager.h"
#include "controller_cli/command_line/ShortOptionArguments.h"
#include "controller_cli/command_line/ShortOptionUsage.h"
#include "controller_cli/short_options/JobNumbers.h"
#include "controller_cli/short_options/ShortOptionEnqueue.h"
#include "controller_cli/short_options/ShortOptionOutput.h"
#include "controller_cli/short_options/ShortOptionSession.h"
#include "formats/JobsFile.h"
#include "front_end/command_line/NamesInText.h"
#include "front_end/commands/FileRoles.h"
#include "front_end/commands/Problems.h"
#include "front_end/connection/LogHint.h"
#include "platform/files/NativePath.h"
#include "services/Settings.h"

namespace front_end {
namespace {

[[noreturn]] void FailUsage(const CommandContext& context, const std::wstring& textKey) {
    throw CommandFailure{ExitCode::Usage, context.texts.Get(textKey) + L"\n" + UsageHint(context)};
}

Start StartOf(const CLIArgumentParser& parser) {
    return parser.IsForceClientMode() ? Start::Never : Start::WhenNoneRuns;
}

[[noreturn]] void FailHostGone(const CommandContext& context) {
    throw CommandFailure{ExitCode::NoHost, context.texts.Get(L"Errors/HostGone") + LogHint(context)};
}

/// An output file must not be an input file, whose content would be lost. Called before anything is written.
void RequireDistinctFilesOf(const CommandContext& context, const CLIArgumentParser& parser,
                            const std::vector<ScheduledRequest>& requests) {
    if (parser.GetOutputFileName().empty() && parser.GetLogFileName().empty()) {
        return;
    }
    std::vector<FileRole> read = FilesOfSettings();
    read.push_back({L"Roles/JobsFile", parser.GetJobFileName()});
    for (const EnqueueJobsInfo& request : requests) {
        // A relative path is a name in the host's catalogue.
        read.push_back({L"Roles/Scenario", platform::IsAbsolute(request.scenario.id) ? request.scenario.id : L""});
        for (const auto& inputSet : request.inputFileSets) {
            std::transform(inputSet.begin(), inputSet.end(), std::back_inserter(read), [](const std::wstring& input) {
                return FileRole{L"Roles/Input", input};
            });
        }
    }
    RequireDistinctFiles(
        context, {{L"Roles/OutputFile", parser.GetOutputFileName()}, {L"Roles/LogFile", parser.GetLogFileName()}},
        read);
    RequireDistinctFiles(context, {{L"Roles/OutputFile", parser.GetOutputFileName()}},
                         {{L"Roles/HostLog", settings::Current()->logFile}});
}

void StartLog(const CLIArgumentParser& parser) {
    if (const std::wstring logFile = parser.GetLogFileName(); !logFile.empty()) {
        ControllerLogManager::Initialize(0, AbsolutePath(logFile), false);
    }
}

ExitCode Enqueue(CommandContext& context, const CLIArgumentParser& parser) {
    std::vector<ScheduledRequest> requests;
    std::wstring problem;
    const bool isRead = jobs_file::Read(AbsolutePath(parser.GetJobFileName()), requests, problem);
    RequireDistinctFilesOf(context, parser, requests);
    StartLog(parser);
    if (!isRead) {
        ControllerLogManager::ErrorLog(L"The jobs file cannot be used: " + problem);
        throw CommandFailure{ExitCode::Usage, context.texts.Format(L"Errors/JobsFile", {problem})};
    }
    ShortOptionOutput output(context, parser.GetOutputFileName());
    ShortOptionSession session(context, StartOf(parser));
    const ExitCode exitCode = EnqueueRequests(context, session, parser.GetJobFileName(), requests, output);
    if (exitCode == ExitCode::NoHost && !session.IsConnected()) {
        FailHostGone(context);
    }
    return exitCode;
}

ExitCode CheckStatus(CommandContext& context, const CLIArgumentParser& parser) {
    ShortOptionOutput output(context, parser.GetOutputFileName());
    const std::vector<std::wstring> numbers = JobNumbers(context, StartOf(parser), parser.GetIds());
    ShortOptionSession session(context, StartOf(parser));
    std::string lines;
    const bool isAnswered = session.Presenter().FetchStatusLines(numbers, lines);
    output.Write(lines);
    if (!isAnswered && !session.IsConnected()) {
        FailHostGone(context);
    }
    if (!isAnswered) {
        FailNoAnswer(context);
    }
    return ExitCode::Success;
}

/// Sends one request per id. Sends all of them before waiting for answers: an unanswered request might still be queued
/// in this process when it ends.
ExitCode Cancel(CommandContext& context, const CLIArgumentParser& parser) {
    const std::vector<std::wstring> numbers = JobNumbers(context, StartOf(parser), parser.GetIds());
    ShortOptionSession session(context, StartOf(parser));
    for (const std::wstring& number : numbers) {
        session.Presenter().CancelJobs(number);
    }
    const std::size_t answered = session.WaitForCancelAnswers(numbers.size(), context.timeout);
    if (answered < numbers.size() && !session.IsConnected()) {
        FailHostGone(context);
    }
    std::wstring unanswered;
    for (std::size_t i = answered; i < numbers.size(); ++i) {
        unanswered += (unanswered.empty() ? L"" : L", ") + numbers[i];
    }
    if (!unanswered.empty()) {
        throw CommandFailure{ExitCode::NoHost, context.texts.Format(L"Errors/CancelNotAnswered", {unanswered})};
    }
    return ExitCode::Success;
}

ExitCode Carry(CommandContext& context, CLIArgumentParser& parser) {
    if (parser.GetCommandType() == CLIArgumentParser::EnqueueJobs) {
        return Enqueue(context, parser);
    }
    RequireDistinctFilesOf(context, parser, {});
    StartLog(parser);
    return parser.GetCommandType() == CLIArgumentParser::CancelJobs ? Cancel(context, parser)
                                                                    : CheckStatus(context, parser);
}

ExitCode BeHost(CommandContext& context, const CLIArgumentParser& parser) {
    RequireDistinctFilesOf(context, parser, {});
    StartLog(parser);
    std::wstring problem;
    const auto exitCode = context.host.RunHost(problem);
    if (!exitCode) {
        throw CommandFailure{ExitCode::NoHost, context.texts.Format(L"Errors/HostNotStarted", {problem})};
    }
    return static_cast<ExitCode>(*exitCode);
}

bool NamesIds(CLIArgumentParser& parser) {
    return parser.GetCommandType() == CLIArgumentParser::EnqueueJobs || !WithoutBlanks(parser.GetIds()).empty();
}

} // namespace

ExitCode RunLetterCommand(CommandContext& context, const std::vector<std::wstring>& arguments) {
    const std::vector<std::wstring> prepared = PrepareShortOptionArguments(arguments, platform::IsAbsolute(L"/"));
    RequireShortOptionUsage(prepared);
    CLIArgumentParser parser;
    const bool hasOneCommand = parser.Parse(prepared);
    const bool hasCommand = parser.GetCommandType() != CLIArgumentParser::None;
    if (parser.IsForceServerMode() && (hasCommand || parser.IsForceClientMode())) {
        FailUsage(context, L"Usage/HostAlone");
    }
    if (!hasOneCommand && !parser.IsForceServerMode()) {
        FailUsage(context, hasCommand ? L"Usage/TwoCommands" : L"Usage/NoCommand");
    }
    if (hasCommand && !NamesIds(parser)) {
        FailUsage(context, L"Usage/NoIds");
    }
    return parser.IsForceServerMode() ? BeHost(context, parser) : Carry(context, parser);
}

} // namespace front_end
