#include <benchmark/benchmark.h>

#include "controller_host/scheduling/Scheduler.h"

#include <cstdint>
#include <string>

namespace {

/// The longest decision about 100,000 waiting jobs: one running job has taken what all others need a part of, so that
/// none of the groups of equal needs fits. The argument is the number of these groups.
void SchedulerDecision(benchmark::State& state) {
    constexpr std::int64_t jobs = 100'000;
    constexpr std::int64_t now = 1'000'000;
    const std::int64_t groups = state.range(0);
    Scheduler scheduler;
    scheduler.SetRules({{{L"gpu", groups}, {L"licence", groups}, {L"memory", groups}}, 3600});
    const auto wait = [&](std::int64_t job, const std::map<std::wstring, std::int64_t>& needs) {
        Scheduling scheduling;
        scheduling.priority = static_cast<std::int32_t>(job % 7);
        scheduling.needs = needs;
        scheduler.Wait({std::to_wstring(job), static_cast<std::uint64_t>(job), now - job, scheduling});
    };
    wait(0, {{L"gpu", groups}, {L"licence", groups}, {L"memory", groups}});
    scheduler.Start(L"0");
    for (std::int64_t job = 1; job <= jobs; ++job) {
        wait(job, {{job % 2 == 0 ? L"gpu" : L"licence", 1 + job % 2}, {L"memory", 1 + job % groups}});
    }
    for (auto unused : state) {
        benchmark::DoNotOptimize(scheduler.Next(now));
    }
}

} // namespace

BENCHMARK(SchedulerDecision)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond)->UseRealTime();
