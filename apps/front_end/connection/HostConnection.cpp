#include "front_end/connection/HostConnection.h"

#include "CommonControllerLib/EventTransmitter.h"
#include "controller_plugins/EventTransmitterExtension.h"
#include "front_end/commands/CommandFailure.h"
#include "front_end/connection/LogHint.h"
#include "platform/files/NativePath.h"
#include "platform/processes/Waiting.h"

namespace front_end {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

/// Polling interval: a host started by another process gives no notification when it is reachable.
constexpr milliseconds tryInterval{20};

CommandFailure NotReached(const CommandContext& context, const std::wstring& problem) {
    return {ExitCode::NoHost, context.texts.Format(L"Errors/HostNotReached", {problem})};
}

/// `busy` is set while the host has no room, which is temporary. It is kept if a later attempt ends before the host
/// reports it again.
bool IsConnected(const CommandContext& context, EventTransmitterExtension& extension, std::wstring& busy) {
    std::wstring problem;
    const bool isConnected = extension.Connect(problem);
    if (!problem.empty()) {
        if (!extension.IsBusy()) {
            throw UnreachableHost{NotReached(context, problem)};
        }
        busy = problem;
    }
    return isConnected;
}

CommandFailure NoAnswer(const CommandContext& context) {
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(context.timeout).count();
    return {ExitCode::NoHost, context.texts.Format(L"Errors/NoAnswer", {std::to_wstring(seconds)})};
}

/// Neither starting another host nor waiting would help.
void FailIfAHostListensElsewhere(const CommandContext& context) {
    if (const std::wstring running = context.host.HostElsewhere(); !running.empty()) {
        const std::wstring message = context.texts.Format(L"Errors/HostElsewhere", {running, context.host.Place()});
        throw UnreachableHost{{ExitCode::NoHost, message}};
    }
}

void StartHost(CommandContext& context) {
    std::wstring warnings;
    std::wstring problem;
    const bool isStarted = context.host.StartHost(warnings, problem);
    // The lines already contain the name of the host program.
    if (!warnings.empty()) {
        context.console.WriteError(warnings + L"\n");
    }
    if (!isStarted) {
        FailIfAHostListensElsewhere(context);
        throw CommandFailure{ExitCode::NoHost, context.texts.Format(L"Errors/HostNotStarted", {problem})};
    }
}

/// Ctrl-C ends the wait and the command.
void WaitForTheNextTry(const CommandContext& context) {
    const std::vector<void*> handles = context.stop == nullptr ? std::vector<void*>() : std::vector{context.stop};
    if (platform::WaitForAny(handles, tryInterval)) {
        throw CommandFailure{ExitCode::Interrupted, {}};
    }
}

/// Starts a host if no process is one. Waits for one that is starting or busy.
void AwaitHost(CommandContext& context, Start start, EventTransmitterExtension& extension, std::wstring& busy) {
    const auto deadline = steady_clock::now() + context.timeout;
    bool isThere = context.host.IsHostThere();
    if (!isThere && start == Start::WhenNoneRuns) {
        StartHost(context);
    }
    while (!IsConnected(context, extension, busy)) {
        // `isThere` was determined before the attempt: a host could become reachable between the attempt and a later
        // check.
        if (!isThere && start == Start::Never) {
            throw CommandFailure{ExitCode::NoHost, context.texts.Get(L"Errors/NoHost")};
        }
        FailIfAHostListensElsewhere(context);
        if (steady_clock::now() >= deadline) {
            throw UnreachableHost{busy.empty() ? NoAnswer(context) : NotReached(context, busy)};
        }
        WaitForTheNextTry(context);
        isThere = context.host.IsHostThere();
        if (!isThere && start == Start::WhenNoneRuns) {
            StartHost(context);
        }
    }
}

} // namespace

bool HostConnection::IsOpen() const {
    return extension == nullptr || extension->IsConnected();
}

void FailNoAnswer(const CommandContext& context) {
    throw NoAnswerInTime{NoAnswer(context)};
}

HostConnection ConnectToHost(CommandContext& context, Start start) {
    EventTransmitter* const transmitter = context.host.Transmitter();
    if (transmitter == nullptr) {
        const std::wstring module = platform::ToNativeText(context.host.TransmitterModule());
        throw CommandFailure{ExitCode::NoHost, context.texts.Format(L"Errors/NoTransmitter",
                                                                    {module, context.host.TransmitterProblem()}) +
                                                   LogHint(context)};
    }
    EventTransmitterExtension* const extension = context.host.Extension();
    std::wstring busy;
    if (extension != nullptr && !IsConnected(context, *extension, busy)) {
        AwaitHost(context, start, *extension, busy);
    }
    if (extension == nullptr && start == Start::WhenNoneRuns) {
        StartHost(context);
    }
    return {*transmitter, extension};
}

} // namespace front_end
