#include <optional>

#include "controller_cli/FrontEnd.h"
#include "controller_cli/command_line/LongOptions.h"
#include "front_end/connection/SystemHostAccess.h"
#include "front_end/terminal/SystemConsole.h"
#include "platform/processes/StopSignal.h"
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
    const std::vector<std::wstring> arguments = platform::ProgramArguments(argc, argv);
    // One-letter commands install no handler: they end at once on Ctrl-C.
    std::optional<platform::StopSignal> stop;
    if (HasLongOptions(arguments)) {
        stop.emplace();
    }
    SystemConsole console;
    const Texts texts(settings::Current()->stringResourceFile);
    SystemHostAccess host;
    CommandContext context{
        console, texts, host, stop ? stop->Handle() : nullptr, response_patience::FromEnvironment(), platform::Now};
    return static_cast<int>(RunFrontEnd(context, arguments));
}
