// Runs COUNT no-op scenarios through the whole chain (engine, function module, runner, process), one at a time with
// short and long lists and two at a time, and COUNT bare processes. Prints "NAME SECONDS" lines. Usage: job_throughput
// COUNT

#include <cstdio>
#include <cstdlib>
#include <stdexcept>

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
    std::printf("controller %.6f\n", RunJobs(count, 1));
    std::printf("controller_10000_rows %.6f\n", RunJobs(count, 1, 10'000));
    std::printf("controller_100000_rows %.6f\n", RunJobs(count, 1, 100'000));
    std::printf("controller_2_at_a_time %.6f\n", RunJobs(count, 2));
    std::printf("posix_spawn %.6f\n", SecondsFor([&] { SpawnProcesses(count); }));
}
