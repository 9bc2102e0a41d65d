#include "cadjobs/Cadjobs.h"
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
    const platform::StopSignal stop;
    SystemConsole console;
    const Texts texts(settings::Current()->stringResourceFile);
    SystemHostAccess host;
    CommandContext context{console,       texts,     host, stop.Handle(), response_timeout::FromEnvironment(),
                           platform::Now, L"cadjobs"};
    return static_cast<int>(RunCadjobs(context, platform::ProgramArguments(argc, argv)));
}
