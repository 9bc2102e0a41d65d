#include "controller_cli/HostConnection.h"

#include "controller_cli/CommandFailure.h"
#include "controller_cli/LogHint.h"
#include "modules/EventTransmitter.h"
#include "platform/NativePath.h"

namespace controller_cli {
namespace {

/// Starting another host would not help.
void FailIfAHostRuns(CommandContext& context) {
    if (const std::wstring running = context.host.RunningHost(); !running.empty()) {
        const std::wstring message = context.texts.Format(L"Errors/HostElsewhere", {running, context.host.Place()});
        throw UnreachableHost{{ExitCode::NoHost, message}};
    }
}

} // namespace

EventTransmitter& ConnectToHost(CommandContext& context, Start start) {
    EventTransmitter* const transmitter = context.host.Transmitter();
    if (transmitter == nullptr) {
        const std::wstring module = platform::ToNativeText(context.host.TransmitterModule());
        throw CommandFailure{ExitCode::NoHost,
                             context.texts.Format(L"Errors/NoTransmitter", {module}) + LogHint(context)};
    }
    if (transmitter->IsConnected()) {
        return *transmitter;
    }
    if (start == Start::Never) {
        FailIfAHostRuns(context);
        throw CommandFailure{ExitCode::NoHost, context.texts.Get(L"Errors/NoHost")};
    }
    if (const std::wstring problem = context.host.StartHost(); !problem.empty()) {
        FailIfAHostRuns(context);
        throw CommandFailure{ExitCode::NoHost, context.texts.Format(L"Errors/HostNotStarted", {problem})};
    }
    return *transmitter;
}

} // namespace controller_cli
