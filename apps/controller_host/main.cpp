#include <exception>
#include <system_error>

#include "CommonControllerLib/ControllerLogManager.h"
#include "controller_host/Background.h"
#include "controller_host/Host.h"
#include "controller_host/HostOptions.h"
#include "controller_host/Output.h"
#include "controller_host/Status.h"
#include "controller_host/hooks/HookSupervisor.h"
#include "platform/system/Environment.h"
#include "platform/system/SharedLibrary.h"
#include "platform/terminal/Console.h"
#include "text/EscapeControls.h"
#include "text/Text.h"

namespace {

HostExit Run(const HostOptions& options) {
    switch (options.mode) {
    case HostOptions::Mode::Help:
        return Print(hostUsage);
    case HostOptions::Mode::Version:
        return Print("controller_host " CONTROLLER_VERSION "\n");
    case HostOptions::Mode::Wrong:
        platform::WriteErrorOutput("controller_host: '" + text::EscapedUtf8(options.problem) + "' is no option.\n\n" +
                                   hostUsage);
        return HostExit::WrongUse;
    case HostOptions::Mode::Status:
        return PrintHostStatus();
    case HostOptions::Mode::Background:
        return StartHostInBackground();
    case HostOptions::Mode::SuperviseHook:
        return SuperviseHook(options.supervisedHook);
    case HostOptions::Mode::Foreground:
        return RunHost(options.readyEvent);
    }
    return HostExit::WrongUse;
}

HostExit Fail(const std::wstring& problem) {
    ControllerLogManager::ErrorLog(problem);
    platform::WriteErrorOutput("controller_host: " + text::EscapedUtf8(problem) + "\n");
    return HostExit::CouldNotRun;
}

/// A lack of system resources, such as memory, threads or open files, ends the host with a message.
HostExit RunSafely(const HostOptions& options) {
    try {
        return Run(options);
    } catch (const std::system_error& failure) {
        const bool isOpenFiles = failure.code() == std::errc::too_many_files_open;
        return Fail(L"the host cannot go on: " + text::FromUtf8(failure.what()) +
                    (isOpenFiles ? L". Start it with a higher limit of open files (ulimit -n)." : L""));
    } catch (const std::exception& failure) {
        return Fail(L"the host cannot go on: " + text::FromUtf8(failure.what()));
    }
}

} // namespace

int main(int argc, char** argv) {
    platform::TrimHeapEagerly();
    platform::HardenLibrarySearch();
    platform::PrepareConsole();
    platform::IgnoreFileSizeSignal();
    return static_cast<int>(RunSafely(ParseHostOptions(platform::ProgramArguments(argc, argv))));
}
