#include "system/crash/CrashSite.h"

#include "kit/Deadline.h"
#include "kit/OtherProcesses.h"
#include "kit/Require.h"
#include "kit/TestProcess.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/processes/Process.h"
#include "platform/processes/Waiting.h"
#include "platform/system/Environment.h"
#include "system/crash/EndOwnProcess.h"
#include "text/Text.h"

#include <algorithm>
#include <stdexcept>

namespace crash {
namespace {

/// Both systems accept slashes, which JSON does not escape.
std::string Quoted(const std::wstring& path) {
    std::string text = text::ToUtf8(platform::ToNativeText(path));
    std::replace(text.begin(), text.end(), '\\', '/');
    return '"' + text + '"';
}

std::wstring InProgramDirectory(const std::wstring& name) {
    return platform::ResolveAgainst(platform::ProgramDirectory(), name);
}

std::wstring CrashProgram(const std::wstring& name) {
    return InProgramDirectory(L"crash\\" + name);
}

} // namespace

CrashSite::CrashSite(const std::wstring& endpointName, const std::string& afterRestart) {
    WriteSettings(endpointName, afterRestart);
    WriteScenarios();
    WriteTextFile(Input(), "an input");
    test_support::Require(platform::CreateNewDirectory(Lives()), "the folder for signs of life cannot be made");
}

CrashSite::~CrashSite() {
    if (HostLives()) {
        test_support::KillProcess(host.Get());
        // A destructor cannot report a host that does not end.
        (void)test_support::WaitUntilSignalled(host.Get());
    }
}

bool CrashSite::StartHost() {
    const std::wstring userDirectory = platform::ToNativeText(directory / L"user");
    const platform::Event ready;
    platform::ProcessStart start;
    start.program = CrashProgram(std::wstring(L"controller_host") + platform::programExtension);
    start.arguments = {L"--ready-event", platform::InheritedHandleText(ready.Handle())};
    start.inherited = {ready.Handle()};
    start.environment = {{L"CONTROLLER_SETTINGS_FILE", platform::ToNativeText(directory / L"settings.json")},
                         {faultFileVariable, platform::ToNativeText(FaultFile())},
                         {L"PATH", platform::GetEnvironment(L"PATH").value_or(L"") + platform::pathListSeparator +
                                       platform::ToNativeText(platform::ProgramDirectory())},
                         {L"LOCALAPPDATA", userDirectory},
                         {L"XDG_DATA_HOME", userDirectory}};
    test_support::Require(platform::StartProcess(start, host), "the host cannot be started");
    const auto signalled = platform::WaitForAny({ready.Handle(), host.Get()}, test_support::timeout);
    if (signalled == std::size_t{0}) {
        return true;
    }
    const auto code = platform::ExitCode(host.Get());
    if (code != killedExitCode) {
        throw std::runtime_error("a host did not start: exit code " + std::to_string(code.value_or(-1)));
    }
    return false;
}

bool CrashSite::HostLives() const {
    return host && platform::IsProcessRunning(host.Get());
}

void CrashSite::Arm(const Fault& fault) const {
    WriteTextFile(FaultFile(), FaultText(fault));
}

void CrashSite::Disarm() const {
    const platform::Error result = platform::RemoveFile(FaultFile());
    // A host killed from outside may not have created one.
    if (result.kind != platform::ErrorKind::NotFound) {
        test_support::Require(result, "the fault cannot be taken away");
    }
}

std::optional<JobStatus> CrashSite::EndOf(const std::wstring& scenarioPath) const {
    if (scenarioPath == Scenario(L"quick")) {
        return JobStatus::Success;
    }
    return scenarioPath == Scenario(L"failing") ? std::optional(JobStatus::Failed) : std::nullopt;
}

void CrashSite::KillHost() {
    test_support::KillProcess(host.Get());
}

void CrashSite::AwaitHostEnd() {
    if (!test_support::WaitUntilSignalled(host.Get())) {
        throw std::runtime_error("a host does not end");
    }
}

std::string CrashSite::EndOfLog() const {
    constexpr std::size_t length = 6000;
    std::string log;
    // Shown only with a failure; a missing log is no error.
    (void)platform::ReadFile(directory / L"controller.log", std::size_t{1} << 30, log);
    return log.substr(log.size() - std::min(log.size(), length));
}

void CrashSite::WriteSettings(const std::wstring& endpointName, const std::string& afterRestart) const {
    const std::wstring extension = platform::moduleExtension;
    WriteTextFile(directory / L"settings.json",
                  R"({"version":1,"workDirectory":"work","jobListFile":"job_list.json","logFile":"controller.log",)"
                  R"("cancelGraceSeconds":0,"afterRestart":")" +
                      afterRestart + R"(","transmitterName":")" + text::ToUtf8(endpointName) +
                      R"(","functionModules":[)" + Quoted(CrashProgram(L"local_process" + extension)) +
                      R"(],"eventTransmitter":)" + Quoted(InProgramDirectory(L"local_socket" + extension)) +
                      R"(,"scenarioRunner":)" + Quoted(test_support::ProgramPath(L"scenario_runner")) +
                      R"(,"interpreters":{".steps":[)" + Quoted(test_support::ProgramPath(L"test_scenario")) + "]}}");
}

void CrashSite::WriteScenarios() const {
    const std::string life = "live in " + text::ToUtf8(Lives()) + "\n";
    const std::string child = "have child living in " + text::ToUtf8(Lives()) + "\n";
    WriteTextFile(Scenario(L"quick"), life + "exit 0");
    WriteTextFile(Scenario(L"failing"), life + "exit 3");
    WriteTextFile(Scenario(L"waiting"), life + child + "wait");
    WriteTextFile(Scenario(L"reporting"), life + "report progress 40\nwait for request");
}

} // namespace crash
