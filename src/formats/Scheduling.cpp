#include "formats/Scheduling.h"

#include "platform/files/NativePath.h"

void AddDefaults(const RunRules& defaults, RunRules& rules) {
    const auto add = [&](const auto... members) {
        ((rules.*members = rules.*members ? rules.*members : defaults.*members), ...);
    };
    add(&RunRules::retries, &RunRules::retryDelay, &RunRules::retryBackoff, &RunRules::retryOnlyAfterCrash,
        &RunRules::timeLimit, &RunRules::silenceLimit, &RunRules::memoryLimitMiB, &RunRules::cpuLimitPercent);
}

std::wstring RequestedOutputDir(const std::wstring& outputDir, const QueueRecord& queue) {
    return queue.hasOwnOutputDir ? platform::ParentDirectory(outputDir) : outputDir;
}

ScheduledRequest RequestToRepeat(const ListedJob& job) {
    ScheduledRequest request({}, static_cast<const Scheduling&>(job));
    request.inputFileSets = {job.inputFiles};
    request.scenario.id = job.scenario.id;
    request.outputDir = RequestedOutputDir(job.outputDir, job);
    request.runArgument = job.runArgument;
    request.extraText = job.extraText;
    request.hold = false;
    request.notBefore = 0;
    request.after.clear();
    request.afterEnd.clear();
    // To run again is not to get the results of the same job again.
    request.reuse = false;
    return request;
}
