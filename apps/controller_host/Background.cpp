#include "controller_host/Background.h"

#include <chrono>

#include "controller_host/OtherHost.h"
#include "modules/StartChecks.h"
#include "platform/files/NativePath.h"
#include "platform/processes/Process.h"
#include "platform/processes/Waiting.h"
#include "platform/system/Environment.h"
#include "platform/terminal/Console.h"
#include "services/Settings.h"
#include "text/EscapeControls.h"

namespace {

/// A host is normally ready much sooner; one that takes longer is considered hung.
constexpr std::chrono::seconds startLimit{30};

HostExit Refuse(const std::wstring& problem, HostExit code = HostExit::CouldNotRun) {
    platform::WriteErrorOutput("controller_host: " + text::EscapedUtf8(problem) + "\n");
    return code;
}

/// An already running host is a success if front ends with these settings can reach it.
HostExit UseOtherHost() {
    const auto settings = settings::Current();
    return ReachOtherHost(*settings)
               ? HostExit::Ended
               : Refuse(OtherHostProblem(*settings) + L"; front ends with these settings do not reach it",
                        HostExit::AlreadyRunning);
}

std::wstring LogHint() {
    const std::wstring logFile = settings::Current()->logFile;
    return logFile.empty() ? L" Start it without --background to see why."
                           : L" Its log says why: " + platform::ToNativeText(logFile);
}

HostExit OutcomeOf(void* host) {
    const auto code = platform::ExitCode(host);
    if (code == static_cast<std::int32_t>(HostExit::AlreadyRunning)) {
        return UseOtherHost();
    }
    return Refuse(L"the host ended at once with exit code " + std::to_wstring(code.value_or(-1)) + L"." + LogHint());
}

/// The host writes these problems only to its log, because its terminal is not visible. A front end that starts a host
/// shows them, too.
void TellProblems() {
    for (const std::wstring& problem : start_checks::Problems(*settings::Current())) {
        platform::WriteErrorOutput("controller_host: warning: " + text::EscapedUtf8(problem) + "\n");
    }
}

} // namespace

HostExit StartHostInBackground() {
    // The host would reject them, too, but invisibly to the user.
    if (const std::wstring problem = settings::Problem(); !problem.empty()) {
        return Refuse(problem);
    }
    const platform::Event ready;
    platform::ProcessStart start;
    start.program = platform::ProgramDirectory() + L"\\controller_host" + platform::programExtension;
    start.arguments = {L"--ready-event", platform::InheritedHandleText(ready.Handle())};
    start.currentDirectory = platform::ProgramDirectory();
    start.detached = true;
    start.inherited = {ready.Handle()};
    platform::OwnedHandle host;
    if (const platform::Error result = platform::StartProcess(start, host); !result) {
        return Refuse(L"the host " + platform::ToNativeText(start.program) + L" cannot be started: " + result.Text());
    }
    const auto signalled = platform::WaitForAny({ready.Handle(), host.Get()}, startLimit);
    if (signalled == std::size_t{0}) {
        TellProblems();
        return HostExit::Ended;
    }
    return signalled ? OutcomeOf(host.Get()) : Refuse(L"the host is not ready after 30 s." + LogHint());
}
