#include "controller_host/Status.h"

#include "controller_host/Output.h"
#include "formats/HostLock.h"
#include "modules/StartChecks.h"
#include "platform/files/NativePath.h"
#include "platform/terminal/Console.h"
#include "services/Settings.h"
#include "text/EscapeControls.h"

namespace {

std::string Line(const std::wstring& text) {
    return text::EscapedUtf8(text) + "\n";
}

} // namespace

HostExit PrintHostStatus() {
    if (const std::wstring problem = settings::Problem(); !problem.empty()) {
        platform::WriteErrorOutput("controller_host: " + Line(problem));
        return HostExit::CouldNotRun;
    }
    const auto settings = settings::Current();
    host_lock::Holder holder;
    const bool isRunning = host_lock::FindHolder(settings->jobListFile, holder);
    const std::wstring list = platform::ToNativeText(settings->jobListFile);
    std::string text = isRunning ? Line(L"A host runs for the job list " + list + L": " +
                                        (holder.process == 0 ? L"process unknown" : host_lock::Describe(holder)))
                                 : Line(L"No host runs for the job list " + list);
    const std::vector<std::wstring> problems = start_checks::Problems(*settings);
    for (const std::wstring& problem : problems) {
        text += "warning: " + Line(problem);
    }
    const HostExit printed = Print(text);
    return printed == HostExit::Ended && (!isRunning || !problems.empty()) ? HostExit::CouldNotRun : printed;
}
