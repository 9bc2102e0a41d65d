#include <benchmark/benchmark.h>

#include <memory>

#include "CommonControllerLib/FunctionManager.h"
#include "CommonControllerLib/JobEntryManagerBase.h"
#include "RawLimits.h"
#include "Workplace.h"
#include "platform/files/NativePath.h"
#include "text/Text.h"

namespace {

constexpr int directories = 500;
constexpr int filesPerDirectory = 20;

/// 10,000 files in 500 directories: ten of each twenty are scenarios, and half of these have settings.
void MakeScenarios(const Workplace& workplace) {
    for (int directory = 0; directory < directories; ++directory) {
        const std::wstring path = L"scenarios\\group_" + std::to_wstring(directory);
        for (int file = 0; file < filesPerDirectory; ++file) {
            const wchar_t* extension = file % 2 == 0 ? L".rb" : (file % 4 == 1 ? L".adc" : L".txt");
            workplace.MakeFile(path + L"\\scenario_" + std::to_wstring(file - file % 2) + extension);
        }
    }
}

void Fetch(JobEntryManagerBase& engine, benchmark::State& state) {
    std::vector<ScenarioInfo> scenarios;
    engine.FetchScenarios(scenarios);
    state.counters["scenarios"] = static_cast<double>(scenarios.size());
}

/// The first fetch of an engine.
void FetchScenariosFirst(benchmark::State& state) {
    const Workplace workplace;
    MakeScenarios(workplace);
    const FunctionManager functions({});
    for (auto unused : state) {
        state.PauseTiming();
        auto engine = std::make_unique<JobEntryManagerBase>(&functions);
        state.ResumeTiming();
        Fetch(*engine, state);
        state.PauseTiming();
        engine.reset();
        state.ResumeTiming();
    }
}

/// Further fetches, with nothing changed.
void FetchScenariosAgain(benchmark::State& state) {
    const Workplace workplace;
    MakeScenarios(workplace);
    const FunctionManager functions({});
    JobEntryManagerBase engine(&functions);
    Fetch(engine, state);
    for (auto unused : state) {
        Fetch(engine, state);
    }
}

void WalkDirectories(benchmark::State& state) {
    const Workplace workplace;
    MakeScenarios(workplace);
    const std::string path = text::ToUtf8(platform::ToNativeText(workplace.Path(L"scenarios")));
    for (auto unused : state) {
        state.counters["files"] = static_cast<double>(raw_limits::CountFiles(path));
    }
}

void WalkDirectoriesAndReadSettings(benchmark::State& state) {
    const Workplace workplace;
    MakeScenarios(workplace);
    const std::string path = text::ToUtf8(platform::ToNativeText(workplace.Path(L"scenarios")));
    for (auto unused : state) {
        state.counters["files"] = static_cast<double>(raw_limits::CountAndReadFiles(path, ".adc"));
    }
}

} // namespace

BENCHMARK(FetchScenariosFirst)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(FetchScenariosAgain)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(WalkDirectoriesAndReadSettings)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(WalkDirectories)->Unit(benchmark::kMillisecond)->UseRealTime();
