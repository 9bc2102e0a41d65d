#include "front_end/commands/Commands.h"
#include "front_end/commands/HostStates.h"
#include "front_end/connection/HostSession.h"
#include "front_end/jobs/JobRow.h"
#include "platform/files/NativePath.h"
#include "services/Settings.h"

namespace front_end {

HostState StateOfHost(const CommandContext& context) {
    const auto settings = settings::Current();
    HostState state;
    state.jobListFile = platform::ToNativeText(settings->jobListFile);
    state.settingsFile = platform::ToNativeText(settings->file);
    if (const auto holder = context.host.RunningHost()) {
        state.isRunning = true;
        state.process = holder->process;
        state.since = TimeText(holder->since);
        state.endpoint = holder->place;
    }
    return state;
}

std::wstring HostLine(const CommandContext& context) {
    const auto holder = context.host.RunningHost();
    if (!holder) {
        return context.texts.Get(L"Host/None");
    }
    const std::wstring described = host_lock::Describe(*holder);
    return described.empty() ? context.texts.Get(L"Host/Unknown") : context.texts.Format(L"Host/Runs", {described});
}

namespace commands {

ExitCode StartHost(CommandContext& context, const Command& command) {
    // Also waits for a host that is just starting.
    (void)ConnectToHost(context, Start::WhenNoneRuns);
    return HostStatus(context, command);
}

ExitCode HostStatus(CommandContext& context, const Command& command) {
    const HostState state = StateOfHost(context);
    context.console.Write(command.asJson ? HostJson(state) : HostLine(context) + L"\n");
    return state.isRunning ? ExitCode::Success : ExitCode::NoHost;
}

} // namespace commands
} // namespace front_end
