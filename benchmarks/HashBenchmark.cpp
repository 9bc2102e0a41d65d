#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

#include "Workplace.h"
#include "platform/files/FileSystem.h"
#include "platform/files/ReplaceFile.h"
#include "platform/system/Sha256.h"

namespace {

constexpr std::int64_t fileSize = std::int64_t{256} << 20;

void ReportRate(benchmark::State& state) {
    state.SetBytesProcessed(state.iterations() * fileSize);
}

/// A file in the cache, as the runner hashes inputs and outputs.
void HashFile(benchmark::State& state) {
    const Workplace workplace;
    const std::wstring path = workplace.Path(L"large");
    if (!platform::ReplaceFile(path, std::string(std::size_t{fileSize}, 'x'), platform::Durability::Unsynced)) {
        state.SkipWithError("the file cannot be written");
    }
    for (auto unused : state) {
        platform::Sha256 hash;
        const platform::Error result = platform::ReadFileInBlocks(path, [&](std::string_view block) {
            hash.Add(block);
            return platform::Reading::GoOn;
        });
        benchmark::DoNotOptimize(hash.Finish());
        benchmark::DoNotOptimize(result);
    }
    ReportRate(state);
}

void HashMemory(benchmark::State& state) {
    const std::string bytes(std::size_t{fileSize}, 'x');
    for (auto unused : state) {
        platform::Sha256 hash;
        hash.Add(bytes);
        benchmark::DoNotOptimize(hash.Finish());
    }
    ReportRate(state);
}

} // namespace

BENCHMARK(HashFile)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(HashMemory)->Unit(benchmark::kMillisecond)->UseRealTime();
