/// A program with a job engine of its own: runs one scenario on each input file and shows the progress.
/// Usage: run_jobs FUNCTION_MODULE SCENARIO OUTPUT_DIRECTORY INPUT...
/// All paths are absolute. The settings file says where job list and work directories are: CONTROLLER_SETTINGS_FILE.

#include "CommonControllerLib/FunctionManager.h"
#include "CommonControllerLib/JobEntryManagerBase.h"

#include <algorithm>
#include <chrono>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

namespace {

/// A command-line argument, in the encoding of the user's locale.
std::wstring Wide(const char* argument) {
    const std::size_t length = std::mbstowcs(nullptr, argument, 0);
    if (length == static_cast<std::size_t>(-1)) {
        return {};
    }
    std::wstring text(length, L'\0');
    std::mbstowcs(text.data(), argument, length);
    return text;
}

EnqueueJobsInfo Request(const std::vector<std::wstring>& arguments) {
    EnqueueJobsInfo request;
    request.requestId = L"run_jobs";
    request.scenario.id = arguments[1];
    request.outputDir = arguments[2];
    for (auto input = arguments.begin() + 3; input != arguments.end(); ++input) {
        request.inputFileSets.push_back({*input});
    }
    return request;
}

void Show(std::vector<JobStatusInfo>& changed) {
    for (const JobStatusInfo& job : changed) {
        std::printf("%ls %s %d %%\n", job.id.c_str(), JobStatusString(job.status), static_cast<int>(job.progress));
    }
    std::fflush(stdout);
    changed.clear();
}

/// Starts one job after the other and shows each change until all have ended.
void RunAll(JobEntryManagerBase& engine) {
    std::vector<JobStatusInfo> changed;
    while (!engine.IsCompleted()) {
        engine.ExecuteJob(nullptr, changed);
        engine.CheckUpdate(changed);
        Show(changed);
        // A program with an event loop waits for the process handles of its running jobs instead (JobEntry).
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
}

bool HaveAllSucceeded(JobEntryManagerBase& engine, const JobEnqueueResult& jobs) {
    std::vector<std::wstring> ids;
    std::transform(jobs.jobIds.begin(), jobs.jobIds.end(), std::back_inserter(ids),
                   [](const JobIdInfo& job) { return job.id; });
    std::vector<JobStatusInfo> statuses;
    engine.CheckJobStatus(ids, statuses);
    return std::all_of(statuses.begin(), statuses.end(),
                       [](const JobStatusInfo& job) { return job.status == JobStatus::Success; });
}

} // namespace

int main(int count, char** values) {
    std::setlocale(LC_ALL, "");
    if (count < 5) {
        std::fputs("Usage: run_jobs FUNCTION_MODULE SCENARIO OUTPUT_DIRECTORY INPUT...\n", stderr);
        return 2;
    }
    std::vector<std::wstring> arguments;
    std::transform(values + 1, values + count, std::back_inserter(arguments), Wide);

    const FunctionManager modules({arguments[0]});
    if (!modules.HasFunction("RunScenario")) {
        std::fprintf(stderr, "run_jobs: %s is no function module that runs scenarios\n", values[1]);
        return 1;
    }
    JobEntryManagerBase engine(&modules);
    EnqueueJobsInfo request = Request(arguments);
    JobEnqueueResult jobs;
    if (!engine.EnqueueJob(request, jobs)) {
        std::fputs("run_jobs: the request was refused; the log file of the settings says why\n", stderr);
        return 1;
    }
    RunAll(engine);
    engine.Terminate();
    return HaveAllSucceeded(engine, jobs) ? 0 : 1;
}
