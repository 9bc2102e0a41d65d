#include "controller_cli/ControllerCli.h"
#include "front_end/connection/SystemHostAccess.h"
#include "front_end/terminal/SystemConsole.h"
#include "platform/system/Clock.h"
#include "platform/system/Environment.h"
#include "platform/system/SharedLibrary.h"
#include "platform/terminal/Console.h"
#include "services/ResponseTimeout.h"
#include "services/Settings.h"

int main(int argc, char** argv) {
    using namespace front_end;
    platform::HardenLibrarySearch();
    platform::PrepareConsole();
    SystemConsole console;
    const Texts texts(settings::Current()->stringResourceFile);
    SystemHostAccess host;
    // No handler of signals: the commands end at once on Ctrl-C.
    CommandContext context{console,          texts, host, nullptr, response_timeout::FromEnvironment(), platform::Now,
                           L"controller_cli"};
    return static_cast<int>(RunControllerCli(context, platform::ProgramArguments(argc, argv)));
}
