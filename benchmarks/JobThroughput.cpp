// Runs COUNT no-op scenarios through the whole chain (engine, function module, runner, process), one at a time with
// short and long lists, two and four at a time, and COUNT bare processes, in rounds by turns, so that other load meets
// all. Prints "NAME SECONDS" lines: the seconds of one job or process, median of the rounds. Usage: job_throughput
// COUNT

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <stdexcept>
#include <utility>
#include <vector>

#include "CommonControllerLib/FunctionManager.h"
#include "RawLimits.h"
#include "RunLoop.h"
#include "Timing.h"
#include "Workplace.h"
#include "controller_host/HostEngine.h"
#include "services/Settings.h"

namespace {

/// Seconds to run jobs that wait in a list with `rows` ended jobs.
double RunJobs(std::size_t count, int parallelJobs, std::size_t rows = 10) {
    const Workplace workplace(parallelJobs);
    workplace.WriteJobList(rows);
    EnqueueJobsInfo request;
    request.scenario.id = workplace.MakeFile(L"no_operation.rb");
    request.outputDir = workplace.Path(L"output");
    request.inputFileSets.assign(count, {workplace.MakeFile(L"part.stl")});
    const FunctionManager functions(settings::Current()->functionModules);
    HostEngine engine(&functions);
    JobEnqueueResult result;
    std::size_t succeeded = 0;
    const bool isEnqueued = engine.EnqueueJob(request, result);
    const double seconds = SecondsFor([&] { succeeded = RunUntilCompleted(engine); });
    if (!isEnqueued || succeeded != count) {
        throw std::runtime_error("job_throughput: not every job succeeded");
    }
    return seconds;
}

void SpawnProcesses(std::size_t count) {
    for (std::size_t number = 0; number < count; ++number) {
        raw_limits::SpawnAndWait("/bin/true");
    }
}

} // namespace

int main(int argc, char** argv) {
    const std::size_t count = argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 1000;
    const std::size_t rounds = count < 100 ? 1 : 3;
    const std::size_t countInRound = count / rounds;
    const std::vector<std::pair<const char*, std::function<double()>>> measurements = {
        {"posix_spawn", [&] { return SecondsFor([&] { SpawnProcesses(countInRound); }); }},
        {"controller", [&] { return RunJobs(countInRound, 1); }},
        {"controller_2_at_a_time", [&] { return RunJobs(countInRound, 2); }},
        {"controller_4_at_a_time", [&] { return RunJobs(countInRound, 4); }},
        {"controller_10000_rows", [&] { return RunJobs(countInRound, 1, 10'000); }},
        {"controller_100000_rows", [&] { return RunJobs(countInRound, 1, 100'000); }}};
    std::vector<std::vector<double>> seconds(measurements.size());
    for (std::size_t round = 0; round < rounds; ++round) {
        for (std::size_t i = 0; i < measurements.size(); ++i) {
            seconds[i].push_back(measurements[i].second() / static_cast<double>(countInRound));
        }
    }
    for (std::size_t i = 0; i < measurements.size(); ++i) {
        std::printf("%s %.9f\n", measurements[i].first, Median(std::move(seconds[i])));
    }
}
