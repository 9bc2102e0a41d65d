#include "controller_web/Background.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "controller_web/ServerPlace.h"
#include "platform/files/NativePath.h"
#include "platform/processes/Process.h"
#include "platform/processes/Waiting.h"
#include "platform/system/Environment.h"
#include "services/Settings.h"
#include "text/Text.h"

namespace web {
namespace {

constexpr std::chrono::seconds startLimit{30};
/// A server of another program gives no notification when it is ready.
constexpr std::chrono::milliseconds pollInterval{50};

std::wstring LogHint() {
    const std::wstring logFile = settings::Current()->logFile;
    return logFile.empty() ? L" Start it without --background to see why."
                           : L" Its log says why: " + platform::ToNativeText(logFile);
}

platform::ProcessStart ServerProcess(const WebOptions& options, const platform::Event& ready) {
    platform::ProcessStart start;
    start.program = platform::ProgramDirectory() + L"\\controller_web" + platform::programExtension;
    start.arguments = {L"--ready-event", platform::InheritedHandleText(ready.Handle())};
    if (options.port) {
        start.arguments.insert(start.arguments.end(), {L"--port", std::to_wstring(*options.port)});
    }
    if (options.isReadOnly) {
        start.arguments.push_back(L"--read-only");
    }
    start.currentDirectory = platform::ProgramDirectory();
    start.detached = true;
    start.inherited = {ready.Handle()};
    return start;
}

using std::chrono::steady_clock;

/// Starts a server and returns its exit code if it has ended at once; nothing if it has become ready or may do so.
std::optional<WebExit> StartServer(const WebOptions& options, steady_clock::time_point deadline) {
    const platform::Event ready;
    platform::OwnedHandle process;
    if (const platform::Error result = platform::StartProcess(ServerProcess(options, ready), process); !result) {
        return Refuse(L"the server of the web page cannot be started: " + result.Text());
    }
    const auto timeout = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - steady_clock::now());
    const auto signalled = platform::WaitForAny({ready.Handle(), process.Get()}, timeout);
    const auto exitCode = signalled == std::size_t{1} ? platform::ExitCode(process.Get()) : std::nullopt;
    if (!exitCode || *exitCode == static_cast<std::int32_t>(WebExit::AlreadyRunning)) {
        return std::nullopt;
    }
    return Refuse(L"the server of the web page has ended at once." + LogHint());
}

} // namespace

WebExit StartInBackground(const WebOptions& options) {
    if (const std::wstring problem = settings::Problem(); !problem.empty()) {
        return Refuse(problem);
    }
    const std::wstring jobListFile = settings::Current()->jobListFile;
    const auto deadline = steady_clock::now() + startLimit;
    while (steady_clock::now() < deadline) {
        const auto server = server_place::FindServer(jobListFile);
        if (server && server->isReady) {
            return OfferLink(text::ToUtf8(server->place), options);
        }
        if (server) {
            // Another program's server is starting, or one is ending.
            platform::WaitForAny({}, pollInterval);
        } else if (const auto failure = StartServer(options, deadline)) {
            return *failure;
        }
    }
    return Refuse(L"the server of the web page is not ready after 30 s." + LogHint());
}

} // namespace web
