#include "controller_web/RunWeb.h"

#include <memory>
#include <optional>
#include <thread>
#include <utility>

#include "CommonControllerLib/ControllerLogManager.h"
#include "controller_web/ServerPlace.h"
#include "controller_web/http/Server.h"
#include "platform/files/NativePath.h"
#include "platform/processes/Process.h"
#include "platform/processes/StopSignal.h"
#include "platform/system/Browser.h"
#include "platform/system/Clock.h"
#include "platform/system/LoopbackPeer.h"
#include "platform/terminal/Console.h"
#include "services/Settings.h"
#include "text/EscapeControls.h"
#include "text/Text.h"

namespace web {
namespace {

constexpr std::chrono::seconds stopTimeout{30};

/// Serves requests on a thread of its own until the end of this object.
class RunningServer {
public:
    RunningServer(Server& webServer, Site& site) : server(webServer), thread([this, &site] { server.Run(site); }) {}
    ~RunningServer() {
        server.Stop();
        thread.join();
    }
    RunningServer(const RunningServer&) = delete;
    RunningServer& operator=(const RunningServer&) = delete;

private:
    Server& server;
    std::thread thread;
};

/// Where the system does not tell, secrets protect alone. A reverse proxy may be a program of another user; its users
/// are told apart by their links.
Server::PeerCheck PeerCheckOf(const SiteOptions& site) {
    if (site.publicAddress) {
        return {};
    }
    return [hasWarned = false](std::uint16_t ownPort, std::uint16_t peerPort) mutable {
        const platform::PeerUser user = platform::UserOfLoopbackPeer(ownPort, peerPort);
        if (user == platform::PeerUser::Other && !std::exchange(hasWarned, true)) {
            ControllerLogManager::WarnLog(
                L"A program of another user has tried to reach the web page; such programs are "
                L"refused, and not mentioned again.");
        }
        return user != platform::PeerUser::Other;
    };
}

WebExit RefuseWithoutPort(std::uint16_t port, const platform::Error& error) {
    const std::wstring advice = error.kind == platform::ErrorKind::InUse
                                    ? L"another program has it. Choose another one with --port, or 0 for any free one"
                                    : error.Text();
    return Refuse(L"port " + std::to_wstring(port) + L" of this machine cannot be used: " + advice);
}

/// Nothing if the setting is no address; then the program cannot run.
std::optional<SiteOptions> OptionsOfSite(const WebOptions& options, const settings::Settings& settings) {
    SiteOptions site;
    site.isReadOnly = options.isReadOnly || settings.web.readOnly;
    site.linkDirectory = server_place::LinkDirectoryFor(settings.jobListFile);
    site.uploadDirectory = server_place::UploadDirectoryFor(settings.jobListFile);
    site.now = platform::Now;
    if (!settings.web.publicAddress.empty()) {
        site.publicAddress = ReadPublicAddress(text::ToUtf8(settings.web.publicAddress));
        if (!site.publicAddress) {
            return std::nullopt;
        }
    }
    return site;
}

WebExit Serve(const WebOptions& options, const WebParts& parts, SiteOptions siteOptions, Server& server,
              ServerPlace& place) {
    const platform::StopSignal stop;
    const std::unique_ptr<Handler> handler = parts.makeHandler(siteOptions.isReadOnly);
    siteOptions.port = server.Port();
    Site site(std::move(siteOptions), Assets(parts.page), *handler);
    const RunningServer running(server, site);
    place.SetReady(site.Address());
    ControllerLogManager::Log(L"The web page is at " + text::FromUtf8(site.Address()));
    if (options.readyEvent.empty()) {
        if (const WebExit offered = OfferLink(site.Address(), options); offered != WebExit::Ended) {
            return offered;
        }
    } else {
        platform::Event(platform::TakeInheritedHandle(options.readyEvent)).Raise();
    }
    place.AwaitEnd(stop.Handle());
    return WebExit::Ended;
}

WebExit UseRunningServer(const WebOptions& options, const settings::Settings& settings) {
    const auto server = server_place::FindServer(settings.jobListFile);
    if (!options.readyEvent.empty() || !server || !server->isReady) {
        return Refuse(L"another controller_web is starting or ending. Try again.", WebExit::AlreadyRunning);
    }
    return OfferLink(text::ToUtf8(server->place), options);
}

} // namespace

WebExit Refuse(const std::wstring& problem, WebExit code) {
    ControllerLogManager::ErrorLog(problem);
    platform::WriteErrorOutput("controller_web: " + text::EscapedUtf8(problem) + "\n");
    return code;
}

WebExit RunWeb(const WebOptions& options, const WebParts& parts) {
    if (const std::wstring problem = settings::Problem(); !problem.empty()) {
        return Refuse(problem);
    }
    const auto settings = settings::FrozenForProcess();
    ControllerLogManager::Initialize(0, settings->logFile, false);
    auto site = OptionsOfSite(options, *settings);
    if (!site) {
        return Refuse(L"the setting web.publicAddress is no address such as https://jobs.example.org/alice/: " +
                      settings->web.publicAddress);
    }
    ServerPlace place;
    if (const platform::Error result = place.Take(settings->jobListFile); !result) {
        return result.kind == platform::ErrorKind::InUse
                   ? UseRunningServer(options, *settings)
                   : Refuse(L"the directory " +
                            platform::ToNativeText(server_place::DirectoryFor(settings->jobListFile)) +
                            L" cannot be used: " + result.Text());
    }
    const std::uint16_t port = options.port.value_or(static_cast<std::uint16_t>(settings->web.port));
    Server server({}, PeerCheckOf(*site));
    if (const platform::Error result = server.Listen(port); !result) {
        return RefuseWithoutPort(port, result);
    }
    return Serve(options, parts, std::move(*site), server, place);
}

WebExit StopWeb() {
    const std::wstring jobListFile = settings::Current()->jobListFile;
    const auto server = server_place::FindServer(jobListFile);
    if (!server) {
        platform::WriteErrorOutput("controller_web: no server of the web page runs.\n");
        return WebExit::Ended;
    }
    return server_place::EndServer(jobListFile, *server, stopTimeout)
               ? WebExit::Ended
               : Refuse(L"the server of the web page has not ended: " + host_lock::Describe(*server));
}

WebExit OfferLink(const std::string& address, const WebOptions& options) {
    const OneTimeLinks links(server_place::LinkDirectoryFor(settings::Current()->jobListFile), platform::Now);
    std::string secret;
    if (const platform::Error result = links.Make(secret); !result) {
        return Refuse(L"the link cannot be made: " + result.Text());
    }
    const std::string link = LinkOf(address, secret);
    if (const platform::Error result = platform::WriteOutput(link + "\n"); !result) {
        return Refuse(L"the link cannot be written: " + result.Text());
    }
    if (options.opensBrowser) {
        // Without a browser the link can still be copied.
        (void)platform::OpenInBrowser(text::FromUtf8(link));
    }
    return WebExit::Ended;
}

} // namespace web
