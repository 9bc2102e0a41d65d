#include "controller_cli/LetterCommands.h"

#include "cli/CLIArgumentParser.h"
#include "cli/CLIPresenter.h"
#include "companion/ControllerCSWrapper.h"
#include "controller_cli/HostConnection.h"
#include "controller_cli/LetterArguments.h"
#include "controller_cli/ScratchFolder.h"
#include "modules/CallbackFunctor.h"
#include "modules/EventTransmitter.h"
#include "platform/Directories.h"
#include "platform/FileSystem.h"
#include "platform/NativePath.h"
#include "platform/OutputFile.h"
#include "platform/Text.h"
#include "platform/Waiting.h"
#include "support/ControllerLogManager.h"

namespace controller_cli {
namespace {

constexpr std::size_t largestOutput = std::size_t{256} << 20;

/// Passes the answer to a cancellation on to a presenter, and says that it came.
class CancelAnswer final : public CallbackFunctor {
public:
    explicit CancelAnswer(CLIPresenter& answeredPresenter) : presenter(answeredPresenter) {}

    bool operator()(const std::wstring& payload) override {
        std::vector<JobStatusInfo> infos;
        const bool isUsable = ControllerCSWrapper::Deserialize(payload, infos) && presenter.CancelJobsFinish(infos);
        if (isUsable) {
            answered.Raise();
        }
        return isUsable;
    }

    /// Without the answer a request might still lie in this process when it ends.
    bool Wait(std::chrono::milliseconds patience) {
        const bool isAnswered = platform::WaitForAny({answered.Handle()}, patience).has_value();
        answered.Clear();
        return isAnswered;
    }

private:
    CLIPresenter& presenter;
    platform::Event answered;
};

/// A presenter with a host at the other end of its line. What the host tells everybody reaches it while it is made: a
/// class derived from the presenter would not be whole then.
class LetterSession {
public:
    LetterSession(CommandContext& context, Start start)
        : transmitter(ConnectToHost(context, start)),
          presenter(context.host.TransmitterId(), context.host.TransmitterModule()), cancelAnswer(presenter) {
        transmitter.AddEventHandler(L"CancelJobsFinish", &cancelAnswer);
    }
    ~LetterSession() { presenter.LeaveEventTransmitter(&transmitter); }
    LetterSession(const LetterSession&) = delete;
    LetterSession& operator=(const LetterSession&) = delete;

    CLIPresenter& Presenter() { return presenter; }
    CancelAnswer& AnswerToCancel() { return cancelAnswer; }
    bool IsConnected() const { return transmitter.IsConnected(); }

private:
    EventTransmitter& transmitter;
    CLIPresenter presenter;
    CancelAnswer cancelAnswer;
};

std::wstring Absolute(const std::wstring& path) {
    return platform::ResolveAgainst(platform::CurrentFolder(), path);
}

[[noreturn]] void FailUsage(const CommandContext& context, const std::wstring& textKey) {
    throw CommandFailure{ExitCode::Usage, context.texts.Get(textKey) + L"\n" + context.texts.Get(L"Usage/Hint")};
}

/// The lines go to the output file or, without one, to standard output.
void Deliver(CommandContext& context, const std::string& lines, const std::wstring& outputFile) {
    if (outputFile.empty()) {
        context.console.WriteBytes(lines);
        return;
    }
    platform::OutputFile file;
    platform::Error error = file.Open(Absolute(outputFile), true);
    if (!error) {
        error = file.Write(lines);
    }
    if (error) {
        throw CommandFailure{ExitCode::Usage, context.texts.Format(L"Errors/OutputFile", {outputFile, error.Text()})};
    }
}

ExitCode Enqueue(CommandContext& context, LetterSession& session, const CLIArgumentParser& parser) {
    const ScratchFolder scratch;
    const std::wstring linesFile = scratch.Path() + L"\\lines.txt";
    session.Presenter().EnqueueJobsFromFile(parser.GetJobFileName(), linesFile);
    std::string lines;
    if (platform::ReadFile(linesFile, largestOutput, lines)) {
        throw CommandFailure{ExitCode::Usage, context.texts.Format(L"Errors/JobsFile", {parser.GetJobFileName()})};
    }
    Deliver(context, lines, parser.GetOutputFileName());
    return lines.find("-1,") == std::string::npos ? ExitCode::Success : ExitCode::JobFailed;
}

ExitCode CheckStatus(CommandContext& context, LetterSession& session, const CLIArgumentParser& parser) {
    const ScratchFolder scratch;
    const std::wstring linesFile = scratch.Path() + L"\\lines.txt";
    session.Presenter().CheckJobStatus(parser.GetIds(), linesFile);
    std::string lines;
    if (const platform::Error error = platform::ReadFile(linesFile, largestOutput, lines)) {
        throw CommandFailure{ExitCode::Usage, context.texts.Format(L"Errors/OutputFile",
                                                                   {platform::ToNativeText(linesFile), error.Text()})};
    }
    Deliver(context, lines, parser.GetOutputFileName());
    return ExitCode::Success;
}

/// One request an id, each answered before the next.
ExitCode Cancel(CommandContext& context, LetterSession& session, const CLIArgumentParser& parser) {
    for (const std::wstring& id : parser.GetIds()) {
        session.Presenter().CancelJobs(id);
        if (!session.AnswerToCancel().Wait(context.patience)) {
            throw CommandFailure{ExitCode::NoHost, context.texts.Format(L"Errors/CancelNotAnswered", {id})};
        }
    }
    return ExitCode::Success;
}

ExitCode Carry(CommandContext& context, CLIArgumentParser& parser) {
    LetterSession session(context, parser.IsForceClientMode() ? Start::Never : Start::WhenNoneRuns);
    ExitCode exitCode = ExitCode::Success;
    switch (parser.GetCommandType()) {
    case CLIArgumentParser::EnqueueJobs:
        exitCode = Enqueue(context, session, parser);
        break;
    case CLIArgumentParser::CancelJobs:
        exitCode = Cancel(context, session, parser);
        break;
    case CLIArgumentParser::CheckJobStatus:
        exitCode = CheckStatus(context, session, parser);
        break;
    case CLIArgumentParser::None:
        break;
    }
    if (!session.IsConnected()) {
        throw CommandFailure{ExitCode::NoHost, context.texts.Get(L"Errors/HostGone")};
    }
    return exitCode;
}

ExitCode BeHost(CommandContext& context) {
    std::wstring problem;
    const std::int32_t exitCode = context.host.RunHost(problem);
    if (!problem.empty()) {
        throw CommandFailure{ExitCode::NoHost, context.texts.Format(L"Errors/HostNotStarted", {problem})};
    }
    return static_cast<ExitCode>(exitCode);
}

bool NamesIds(CLIArgumentParser& parser) {
    return parser.GetCommandType() == CLIArgumentParser::EnqueueJobs || !parser.GetIds().empty();
}

} // namespace

ExitCode RunLetterCommand(CommandContext& context, const std::vector<std::wstring>& arguments) {
    CLIArgumentParser parser;
    const bool hasOneCommand = parser.Parse(PrepareLetterArguments(arguments, platform::IsAbsolute(L"/")));
    const bool hasCommand = parser.GetCommandType() != CLIArgumentParser::None;
    if (parser.IsForceServerMode() && (hasCommand || parser.IsForceClientMode())) {
        FailUsage(context, L"Usage/HostAlone");
    }
    if (!hasOneCommand && !parser.IsForceServerMode()) {
        FailUsage(context, hasCommand ? L"Usage/TwoLetterCommands" : L"Usage/NoCommand");
    }
    if (hasCommand && !NamesIds(parser)) {
        FailUsage(context, L"Usage/NoIds");
    }
    if (const std::wstring logFile = parser.GetLogFileName(); !logFile.empty()) {
        ControllerLogManager::Initialize(0, Absolute(logFile), false);
    }
    return parser.IsForceServerMode() ? BeHost(context) : Carry(context, parser);
}

} // namespace controller_cli
