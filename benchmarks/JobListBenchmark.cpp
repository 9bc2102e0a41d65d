#include <benchmark/benchmark.h>

#include "CommonControllerLib/FunctionManager.h"
#include "RawLimits.h"
#include "Workplace.h"
#include "controller_host/HostEngine.h"
#include "platform/files/NativePath.h"
#include "text/Text.h"

namespace {

/// A poll that reports a change rewrites the whole list, which is its only cost. Not the first rewrite, which also
/// copies each record.
void RewriteJobList(benchmark::State& state) {
    const Workplace workplace;
    workplace.WriteJobList(static_cast<std::size_t>(state.range(0)));
    const FunctionManager functions({});
    JobEntryManagerBase engine(&functions);
    const auto rewrite = [&engine] {
        std::vector<JobStatusInfo> changed(1);
        engine.CheckUpdate(changed);
    };
    rewrite();
    for (auto unused : state) {
        rewrite();
    }
}

/// A host appends the changed row to the journal and flushes it. The journal is folded whenever it has grown as long as
/// the list.
void JournalOneChange(benchmark::State& state) {
    const Workplace workplace;
    workplace.WriteJobList(static_cast<std::size_t>(state.range(0)));
    const FunctionManager functions({});
    HostEngine engine(&functions);
    const std::wstring report =
        LR"({"version":1,"jobId":")" + FinishedJob(1).id + LR"(","progressInfoList":[{"progress":40,"message":""}]})";
    const auto change = [&] {
        std::vector<JobStatusInfo> changed;
        if (!engine.UpdateProgress(report, changed)) {
            state.SkipWithError("the report is refused");
        }
        engine.FlushJobList();
    };
    change(); // writes the snapshot
    for (auto unused : state) {
        change();
    }
}

void WriteAndRenameSameBytes(benchmark::State& state, bool flush) {
    const Workplace workplace;
    workplace.WriteJobList(static_cast<std::size_t>(state.range(0)));
    const std::string bytes = ReadTextFile(workplace.JobListFile());
    const std::string path = text::ToUtf8(platform::ToNativeText(workplace.Path(L"raw.json")));
    for (auto unused : state) {
        raw_limits::WriteAndRename(path, bytes, flush);
    }
    state.counters["bytes"] = static_cast<double>(bytes.size());
}

} // namespace

BENCHMARK(RewriteJobList)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(JournalOneChange)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)->UseRealTime();
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
