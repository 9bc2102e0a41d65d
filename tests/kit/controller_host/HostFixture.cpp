#include "kit/controller_host/HostFixture.h"

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "controller_host/HostJobEntry.h"
#include "formats/Messages.h"
#include "kit/doubles/ScriptedEngine.h"
#include "services/Settings.h"

#include <algorithm>

namespace {

class ScriptedHostEngine final : public HostEngine {
public:
    using HostEngine::HostEngine;

protected:
    JobEntry* CreateNewJobEntry(const JobListInfo* info) override {
        return info == nullptr ? new ScriptedJobEntry<HostJobEntry>()
                               : new ScriptedJobEntry<HostJobEntry>(*info, NewQueueRecord());
    }
};

} // namespace

HostFixture::HostFixture() {
    WriteTextFile(directory / L"settings.json", R"({"version":1,"workDirectory":"work","jobListFile":"job_list.json",)"
                                                R"("logFile":"","scenarioDirectories":[{"path":"scenarios"}]})");
    WriteTextFile(directory / L"scenarios\\mesh.rb", "puts 1");
    WriteTextFile(directory / L"part.stl", "solid");
    settings::UseFile(directory / L"settings.json");
    script.answer = [this](const test_modules::Call& call, std::wstring& output) {
        if (call.function == "RunScenario") {
            output = processes.emplace_back().Answer();
        }
        return 0L;
    };
    functions =
        std::make_unique<FunctionManager>(std::vector<std::wstring>{test_modules::ModulePath(L"recording_module_a")});
    engine = std::make_unique<ScriptedHostEngine>(functions.get());
    answers = std::make_unique<RequestHandler>(*engine, transmitter);
    queue = std::make_unique<RequestQueue>(transmitter, RequestHandler::Names());
}

HostFixture::~HostFixture() {
    Stop();
    settings::UseFile(L"");
}

void HostFixture::StartLoop() {
    loop =
        std::thread([this] { HostLoop(*engine, *queue, *answers, stop.Handle()).Run(std::chrono::milliseconds(0)); });
}

void HostFixture::Stop() {
    stop.Raise();
    WaitForTheEnd();
}

void HostFixture::WaitForTheEnd() {
    if (loop.joinable()) {
        loop.join();
    }
}

std::wstring HostFixture::Ids(const std::wstring& name, const std::vector<std::wstring>& ids) {
    return ControllerCSWrapper::Serialize(name, ids);
}

std::wstring HostFixture::EnqueueRequest(std::size_t jobs) const {
    EnqueueJobsInfo request;
    request.requestId = L"request";
    request.scenario.id = directory / L"scenarios\\mesh.rb";
    request.outputDir = directory / L"output";
    request.inputFileSets.assign(jobs, {directory / L"part.stl"});
    return ControllerCSWrapper::Serialize(L"EnqueueJobs", request);
}

JobEnqueueResult HostFixture::Enqueue(std::size_t jobs) {
    EXPECT_TRUE(line.Deliver(1, L"EnqueueJobs", EnqueueRequest(jobs)));
    JobEnqueueResult result;
    EXPECT_TRUE(ControllerCSWrapper::Deserialize(line.WaitFor(L"EnqueueJobsFinish").payload, result));
    return result;
}

JobStatusInfo HostFixture::WaitForStatus(JobStatus status) {
    for (;;) {
        std::vector<JobStatusInfo> changed;
        EXPECT_TRUE(ControllerCSWrapper::Deserialize(line.WaitFor(L"UpdateProgress").payload, changed));
        const auto found = std::find_if(changed.begin(), changed.end(),
                                        [status](const JobStatusInfo& job) { return job.status == status; });
        if (found != changed.end()) {
            return *found;
        }
    }
}
