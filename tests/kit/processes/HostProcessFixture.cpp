#include "kit/processes/HostProcessFixture.h"

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "kit/Deadline.h"
#include "kit/OtherProcesses.h"
#include "kit/local_socket/EndpointNames.h"
#include "platform/files/FileLock.h"
#include "platform/files/NativePath.h"
#include "platform/processes/Waiting.h"
#include "platform/system/Environment.h"
#include "text/Text.h"

#include <chrono>

namespace {

std::string RepeatedInputs(int count) {
    std::string sets;
    for (int set = 0; set < count; ++set) {
        sets += set == 0 ? R"(["inputs.txt"])" : R"(,["inputs.txt"])";
    }
    return sets;
}

/// Scenario interpreters, and the libraries of packaged programs, are found there.
std::wstring PathWithPrograms() {
    return platform::GetEnvironment(L"PATH").value_or(L"") + platform::pathListSeparator +
           platform::ToNativeText(platform::ProgramDirectory());
}

} // namespace

HostProcessFixture::HostProcessFixture() : endpointName(text::FromUtf8(NewEndpointName())) {
    WriteSettings(UsualSettings("job_list.json"));
    WriteTextFile(directory / L"inputs.txt", "an input");
}

HostProcessFixture::~HostProcessFixture() {
    if (platform::IsProcessRunning(host.Get())) {
        test_support::KillProcess(host.Get());
        EXPECT_TRUE(test_support::WaitUntilSignalled(host.Get()));
    }
}

platform::ProcessStart HostProcessFixture::Host(const std::vector<std::wstring>& arguments) const {
    const std::wstring userDirectory = platform::ToNativeText(directory / L"user");
    platform::ProcessStart start;
    start.program = test_support::ProgramPath(L"controller_host");
    start.arguments = arguments;
    start.environment = {{L"CONTROLLER_SETTINGS_FILE", platform::ToNativeText(directory / L"settings.json")},
                         {L"PATH", PathWithPrograms()},
                         {L"LOCALAPPDATA", userDirectory},
                         {L"XDG_DATA_HOME", userDirectory}};
    return start;
}

platform::ProcessStart HostProcessFixture::FrontEndProcess(const std::vector<std::wstring>& commandLine,
                                                           std::chrono::seconds wait) const {
    platform::ProcessStart start = Host({commandLine.begin() + 1, commandLine.end()});
    start.program = test_support::ProgramPath(commandLine.front());
    start.environment.emplace_back(L"QRV_KT_WAIT_RESPONSE_SEC", std::to_wstring(wait.count()));
    return start;
}

void HostProcessFixture::StartHost() {
    const platform::Event ready;
    platform::ProcessStart start = Host({L"--ready-event", platform::InheritedHandleText(ready.Handle())});
    start.inherited = {ready.Handle()};
    ASSERT_TRUE(platform::StartProcess(start, host));
    const auto signalled = platform::WaitForAny({ready.Handle(), host.Get()}, test_support::timeout);
    ASSERT_EQ(signalled, std::size_t{0}) << "the host is not ready";
}

std::int32_t HostProcessFixture::AwaitHostEnd() {
    EXPECT_TRUE(test_support::WaitUntilSignalled(host.Get()));
    return platform::ExitCode(host.Get()).value_or(-1);
}

void HostProcessFixture::AwaitNoHost() const {
    // The end of a process that is not a child cannot be waited for, but its lock is free then.
    const test_support::Deadline deadline("the end of the host");
    constexpr std::chrono::milliseconds interval{20};
    platform::FileLock lock;
    while (!lock.Take(directory / L"job_list.json.lock")) {
        platform::WaitForAny({}, interval);
    }
}

void HostProcessFixture::WriteSettings(const std::string& text) const {
    WriteTextFile(directory / L"settings.json", text);
}

std::string HostProcessFixture::UsualSettings(const std::string& jobList) const {
    return R"({"version":1,"workDirectory":"work","logFile":"","cancelGraceSeconds":1,)"
           R"("interpreters":{".rb":["test_scenario"]},"jobListFile":")" +
           jobList + R"(","transmitterName":")" + text::ToUtf8(endpointName) + "\"}";
}

std::wstring HostProcessFixture::JobsFile(const std::string& steps, int count) {
    const std::string scenario = "scenario" + std::to_string(++scenarios) + ".rb";
    WriteTextFile(directory / text::FromUtf8(scenario), steps);
    return JobsFileFor(scenario, count);
}

std::wstring HostProcessFixture::JobsFileFor(const std::string& scenario, int count) const {
    std::wstring path = directory / text::FromUtf8(scenario + ".jobs.json");
    WriteTextFile(path, R"({"EnqueueJobs":[{"scenario":{"id":")" + scenario + R"("},"inputFileSets":[)" +
                            RepeatedInputs(count) + R"(],"outputDir":"out"}]})");
    return path;
}

void HostProcessFixture::SaveLongList() const {
    constexpr int rows = 5000;
    std::vector<JobListInfo> jobs;
    for (int number = 1; number <= rows; ++number) {
        JobListInfo& job = jobs.emplace_back();
        job.id = std::to_wstring(number);
        job.seqId = number;
        job.status = JobStatus::Success;
        job.outputDir = std::wstring(200, L'x');
    }
    ASSERT_TRUE(ControllerCSWrapper::CreateJsonFile(ControllerCSWrapper::Serialize(L"JobList", jobs),
                                                    directory / L"job_list.json"));
}

void HostProcessFixture::Await(const std::string& what, const std::function<bool()>& condition) {
    const test_support::Deadline deadline(what);
    constexpr std::chrono::milliseconds interval{20};
    while (!condition()) {
        platform::WaitForAny({}, interval);
    }
}

std::wstring HostProcessFixture::WorkDirOf(const std::wstring& jobId) const {
    return directory / (L"work\\" + jobId);
}
