#include <benchmark/benchmark.h>

#include <stdexcept>

#include "CommonControllerLib/FunctionManager.h"
#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "RawLimits.h"
#include "Workplace.h"
#include "controller_host/HostEngine.h"
#include "platform/files/NativePath.h"
#include "text/Text.h"

namespace {

void WriteJobList(const Workplace& workplace, std::int64_t rows) {
    std::vector<JobListInfo> jobs;
    for (int number = 1; number <= static_cast<int>(rows); ++number) {
        jobs.push_back(FinishedJob(number));
    }
    if (!ControllerCSWrapper::CreateJsonFile(ControllerCSWrapper::Serialize(L"JobList", jobs),
                                             workplace.JobListFile())) {
        throw std::runtime_error("cannot write the job list");
    }
}

/// A poll that reports a change rewrites the whole list, which is its only cost.
template <class Engine>
void RewriteJobList(benchmark::State& state) {
    const Workplace workplace;
    WriteJobList(workplace, state.range(0));
    const FunctionManager functions({});
    Engine engine(&functions);
    for (auto unused : state) {
        std::vector<JobStatusInfo> changed(1);
        engine.CheckUpdate(changed);
    }
}

void WriteAndRenameSameBytes(benchmark::State& state, bool flush) {
    const Workplace workplace;
    WriteJobList(workplace, state.range(0));
    const std::string bytes = ReadTextFile(workplace.JobListFile());
    const std::string path = text::ToUtf8(platform::ToNativeText(workplace.Path(L"raw.json")));
    for (auto unused : state) {
        raw_limits::WriteAndRename(path, bytes, flush);
    }
    state.counters["bytes"] = static_cast<double>(bytes.size());
}

} // namespace

BENCHMARK_TEMPLATE(RewriteJobList, JobEntryManagerBase)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_TEMPLATE(RewriteJobList, HostEngine)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(WriteAndRenameSameBytes, flushed, true)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(WriteAndRenameSameBytes, unflushed, false)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
