#include "controller_web/Background.h"

#include <chrono>

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

/// The address of the page; empty if no server becomes ready. Another program may have started it at the same time.
std::string AwaitAddress(const std::wstring& jobListFile) {
    const auto end = std::chrono::steady_clock::now() + startLimit;
    auto server = server_place::FindServer(jobListFile);
    while (server && !server->isReady && std::chrono::steady_clock::now() < end) {
        platform::WaitForAny({}, pollInterval);
        server = server_place::FindServer(jobListFile);
    }
    return server && server->isReady ? text::ToUtf8(server->place) : "";
}

WebExit OfferLinkOfServer(const WebOptions& options, const std::wstring& jobListFile) {
    const std::string address = AwaitAddress(jobListFile);
    return address.empty() ? Refuse(L"the server of the web page has ended at once." + LogHint())
                           : OfferLink(address, options);
}

} // namespace

WebExit StartInBackground(const WebOptions& options) {
    if (const std::wstring problem = settings::Problem(); !problem.empty()) {
        return Refuse(problem);
    }
    const std::wstring jobListFile = settings::Current()->jobListFile;
    if (const auto server = server_place::FindServer(jobListFile); server && server->isReady) {
        return OfferLink(text::ToUtf8(server->place), options);
    }
    const platform::Event ready;
    platform::OwnedHandle process;
    if (const platform::Error error = platform::StartProcess(ServerProcess(options, ready), process)) {
        return Refuse(L"the server of the web page cannot be started: " + error.Text());
    }
    const auto signalled = platform::WaitForAny({ready.Handle(), process.Get()}, startLimit);
    return signalled ? OfferLinkOfServer(options, jobListFile)
                     : Refuse(L"the server of the web page is not ready after 30 s.");
}

} // namespace web
