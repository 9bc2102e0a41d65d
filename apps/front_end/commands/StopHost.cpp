#include "front_end/commands/Commands.h"

#include "front_end/commands/HostStates.h"
#include "front_end/commands/Problems.h"
#include "front_end/connection/HostSession.h"

namespace front_end::commands {
namespace {

ExitCode TellEnded(CommandContext& context, bool asJson = false) {
    context.console.Write(asJson ? HostJson(StateOfHost(context)) : context.texts.Get(L"Outcome/HostStopped") + L"\n");
    return ExitCode::Success;
}

/// `unasked` is the reason why the host could not be asked over a connection.
void RequireEnd(const CommandContext& context, HostEnd end, const CommandFailure& unasked) {
    if (end == HostEnd::StillRunning) {
        throw CommandFailure{ExitCode::JobFailed, context.texts.Get(L"Errors/HostStillEnding")};
    }
    if (end == HostEnd::CannotBeAsked) {
        throw unasked;
    }
}

std::wstring Describe(const std::vector<host_lock::Holder>& hosts) {
    std::wstring text;
    for (const host_lock::Holder& host : hosts) {
        text += (text.empty() ? L"" : L"; ") + host_lock::Describe(host);
    }
    return text;
}

} // namespace

ExitCode StopHost(CommandContext& context, const Command& command) {
    try {
        HostSession(context, Start::Never).StopHost();
    } catch (const UnreachableHost& unreachable) {
        RequireEnd(context, context.host.EndRunningHost(context.timeout), unreachable);
    }
    return TellEnded(context, command.asJson);
}

ExitCode StopHostWithoutSettings(CommandContext& context, const std::wstring& problem) {
    const std::vector<host_lock::Holder> hosts = context.host.HostsOfSettingsFile();
    if (hosts.empty()) {
        throw CommandFailure{ExitCode::Usage, context.texts.Format(L"Errors/SettingsWithoutHost", {problem})};
    }
    const std::wstring description = Describe(hosts);
    const std::wstring unasked = context.texts.Format(L"Errors/SettingsHostNotAsked", {problem, description});
    if (hosts.size() > 1) {
        throw CommandFailure{ExitCode::Usage, unasked};
    }
    WriteProblem(context, context.texts.Format(L"Notes/SettingsHost", {problem, description}));
    RequireEnd(context, context.host.EndHostOfSettingsFile(hosts.front(), context.timeout), {ExitCode::Usage, unasked});
    return TellEnded(context);
}

} // namespace front_end::commands
