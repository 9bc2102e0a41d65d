#include "controller_host/Background.h"
#include "controller_host/Host.h"
#include "controller_host/HostOptions.h"
#include "controller_host/Output.h"
#include "controller_host/Status.h"
#include "platform/Console.h"
#include "platform/FileSizeLimit.h"
#include "platform/Memory.h"
#include "platform/OneLine.h"
#include "platform/ProgramArguments.h"
#include "platform/SharedLibrary.h"
#include "platform/Text.h"

namespace {

HostExit Run(const HostOptions& options) {
    switch (options.mode) {
    case HostOptions::Mode::Help:
        return Print(hostUsage);
    case HostOptions::Mode::Version:
        return Print("controller_host " CONTROLLER_VERSION "\n");
    case HostOptions::Mode::Wrong:
        platform::WriteErrorOutput("controller_host: '" + platform::ToUtf8(platform::Escaped(options.problem)) +
                                   "' is no option.\n\n" + hostUsage);
        return HostExit::WrongUse;
    case HostOptions::Mode::Status:
        return PrintHostStatus();
    case HostOptions::Mode::Background:
        return StartHostInBackground();
    case HostOptions::Mode::Foreground:
        return RunHost(options.readyEvent);
    }
    return HostExit::WrongUse;
}

} // namespace

int main(int argc, char** argv) {
    platform::GiveBackFreedMemory();
    platform::NarrowModuleSearch();
    platform::PrepareConsole();
    platform::FailBeyondFileSizeLimit();
    return static_cast<int>(Run(ParseHostOptions(platform::ProgramArguments(argc, argv))));
}
