#include "kit/engine/EngineFixture.h"

#include "CommonControllerLib/PathFuncs.h"
#include "platform/system/Clock.h"

#include <algorithm>
#include <future>
#include <mutex>
#include <stdexcept>

EngineFixture::EngineFixture() {
    companion.workDirectory = directory / L"work";
    script.answer = [this](const test_modules::Call& call, std::wstring& output) {
        return AnswerWithProcess(call, output);
    };
}

long EngineFixture::AnswerWithProcess(const test_modules::Call& call, std::wstring& output) {
    const std::wstring jobId = call.input.substr(std::wstring(L"run request of ").size());
    output = L"process of " + jobId;
    companion.processHandles[output] = processes[jobId].Handle();
    return 0;
}

void EngineFixture::Start(const std::vector<JobListInfo>& savedJobs) {
    companion.savedJobs = savedJobs;
    engine = std::make_unique<OpenEngine>(&functions);
}

JobListInfo EngineFixture::SavedJob(std::int32_t seqId, JobStatus status) {
    JobListInfo job{};
    job.id = L"saved" + std::to_wstring(seqId);
    job.seqId = seqId;
    job.status = status;
    job.workDir = L"C:\\work\\" + job.id;
    return job;
}

std::wstring EngineFixture::StartedHoursAgo(int hours) {
    const std::int64_t time = platform::Now() - hours * 3600;
    const std::int64_t offset = time - JobEntry::ConvertTimeStringToStruct(JobEntry::CreateTimeString(time));
    return JobEntry::CreateTimeString(time + offset);
}

std::wstring EngineFixture::Write(const std::wstring& name, const std::string& content) const {
    const std::wstring path = directory / name;
    WriteTextFile(path, content);
    return path;
}

EnqueueJobsInfo EngineFixture::Request(const InputSets& inputSets) const {
    EnqueueJobsInfo request;
    request.requestId = L"request";
    request.scenario.id = scenarioFile;
    request.inputFileSets = inputSets;
    request.outputDir = directory / L"out";
    return request;
}

JobEnqueueResult EngineFixture::Enqueue(const InputSets& inputSets) {
    EnqueueJobsInfo request = Request(inputSets);
    JobEnqueueResult result;
    EXPECT_TRUE(engine->EnqueueJob(request, result));
    return result;
}

void EngineFixture::EnqueueJobs(int count) {
    Enqueue(InputSets(static_cast<std::size_t>(count), {Input(L"a.stl")}));
    companion.Forget();
}

std::vector<JobStatusInfo> EngineFixture::Execute() {
    std::vector<JobStatusInfo> updated;
    engine->ExecuteJob(nullptr, updated);
    return updated;
}

void EngineFixture::ReportProgress(std::int32_t seqId, int progress) {
    const std::wstring path = PathFuncs::Join(Job(seqId).GetWorkDir(), L"progress_info_list.json");
    companion.progressFiles[path] = {L"", L"reading", progress};
}

void EngineFixture::ReportResult(std::int32_t seqId, bool succeeded) {
    const std::wstring path = PathFuncs::Join(Job(seqId).GetWorkDir(), L"run_scenario_result.json");
    companion.resultFiles[path] = {L"", succeeded};
}

std::vector<JobStatusInfo> EngineFixture::Poll() {
    std::vector<JobStatusInfo> changed;
    engine->CheckUpdate(changed);
    return changed;
}

JobEntry& EngineFixture::Job(std::int32_t seqId) {
    const auto found = std::find_if(engine->jobList.begin(), engine->jobList.end(),
                                    [seqId](const auto& job) { return job->GetSeqId() == seqId; });
    if (found == engine->jobList.end()) {
        throw std::out_of_range("There is no job " + std::to_string(seqId));
    }
    return **found;
}

bool EngineFixture::IsEngineFree() {
    const auto tryLock = [this] { return std::unique_lock(engine->mutex, std::try_to_lock).owns_lock(); };
    return std::async(std::launch::async, tryLock).get();
}

std::int32_t EngineFixture::NumberAtCursor() {
    return engine->nextJob == engine->jobList.end() ? 0 : (*engine->nextJob)->GetSeqId();
}
