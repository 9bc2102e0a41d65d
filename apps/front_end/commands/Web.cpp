#include "front_end/commands/Commands.h"
#include "front_end/connection/HostConnection.h"

#include <vector>

namespace front_end::commands {
namespace {

std::vector<std::wstring> ArgumentsOf(const Command& command) {
    if (command.stopsServer) {
        return {L"--stop"};
    }
    std::vector<std::wstring> arguments = {L"--background"};
    if (!command.port.empty()) {
        arguments.insert(arguments.end(), {L"--port", command.port});
    }
    if (command.isReadOnly) {
        arguments.push_back(L"--read-only");
    }
    if (command.opensNoBrowser) {
        arguments.push_back(L"--no-browser");
    }
    return arguments;
}

} // namespace

ExitCode Web(CommandContext& context, const Command& command) {
    // The server itself starts a host only for a new job.
    if (!command.stopsServer && !command.clientOnly) {
        (void)ConnectToHost(context, Start::WhenNoneRuns);
    }
    std::wstring problem;
    const auto exitCode = context.host.RunWebProgram(ArgumentsOf(command), problem);
    if (!exitCode) {
        throw CommandFailure{ExitCode::JobFailed, context.texts.Format(L"Errors/WebNotStarted", {problem})};
    }
    // The program has said why it failed. Its exit codes mean the same.
    return static_cast<ExitCode>(*exitCode);
}

} // namespace front_end::commands
