#include "controller_web/Background.h"
#include "controller_web/RunWeb.h"
#include "controller_web/api/Api.h"
#include "platform/system/Environment.h"
#include "platform/system/SharedLibrary.h"
#include "platform/terminal/Console.h"
#include "text/EscapeControls.h"
#include "text/Text.h"

#include <exception>
#include <memory>

namespace {

using web::WebExit;

std::unique_ptr<web::Handler> MakeHandler(bool isReadOnly) {
    return web::MakeApi(web::ApiOptions{isReadOnly});
}

WebExit Print(const std::string& text) {
    return platform::WriteOutput(text) ? WebExit::Ended : WebExit::CouldNotRun;
}

WebExit Run(const web::WebOptions& options) {
    using Mode = web::WebOptions::Mode;
    switch (options.mode) {
    case Mode::Help:
        return Print(options.message);
    case Mode::Version:
        return Print("controller_web " CONTROLLER_VERSION "\n");
    case Mode::Wrong:
        platform::WriteErrorOutput("controller_web: " + text::EscapedUtf8(text::FromUtf8(options.message)) +
                                   "\nUsage: controller_web --help\n");
        return WebExit::WrongUse;
    case Mode::Stop:
        return web::StopWeb();
    case Mode::Background:
        return web::StartInBackground(options);
    case Mode::Foreground:
        break;
    }
    return web::RunWeb(options, {web::BuiltInAssets(), MakeHandler});
}

} // namespace

int main(int argc, char** argv) {
    platform::TrimHeapEagerly();
    platform::HardenLibrarySearch();
    platform::PrepareConsole();
    platform::IgnoreFileSizeSignal();
    try {
        return static_cast<int>(Run(web::ParseWebOptions(platform::ProgramArguments(argc, argv))));
    } catch (const std::exception& failure) {
        return static_cast<int>(web::Refuse(L"the web page cannot go on: " + text::FromUtf8(failure.what())));
    }
}
