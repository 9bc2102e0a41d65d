#include <benchmark/benchmark.h>

#include <memory>

#include "CommonControllerLib/FunctionManager.h"
#include "CommonControllerLib/JobEntryManagerBase.h"
#include "Workplace.h"

namespace {

constexpr int inputSets = 10000;

EnqueueJobsInfo Request(const Workplace& workplace) {
    EnqueueJobsInfo request;
    request.requestId = L"benchmark";
    request.scenario.id = workplace.MakeFile(L"no_operation.rb");
    request.outputDir = workplace.Path(L"output");
    request.inputFileSets.assign(inputSets, {workplace.MakeFile(L"part.stl")});
    return request;
}

/// One request of 10,000 input sets into an empty engine, log lines and job list file included.
void EnqueueTenThousandSets(benchmark::State& state) {
    for (auto unused : state) {
        state.PauseTiming();
        auto workplace = std::make_unique<Workplace>();
        EnqueueJobsInfo request = Request(*workplace);
        JobEnqueueResult result;
        const FunctionManager functions({});
        auto engine = std::make_unique<JobEntryManagerBase>(&functions);
        state.ResumeTiming();
        const bool isEnqueued = engine->EnqueueJob(request, result);
        state.PauseTiming();
        if (!isEnqueued) {
            state.SkipWithError("the request is refused");
        }
        state.counters["jobs"] = static_cast<double>(result.jobIds.size());
        engine.reset();
        workplace.reset();
        state.ResumeTiming();
    }
}

} // namespace

BENCHMARK(EnqueueTenThousandSets)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(10);
