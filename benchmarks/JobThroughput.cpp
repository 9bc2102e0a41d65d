// Runs COUNT no-op scenarios through the whole chain (engine, function module, runner, process), one at a time and two
// at a time, and COUNT bare processes. Prints "NAME SECONDS" lines. Usage: job_throughput COUNT

#include <cstdio>
#include <cstdlib>

#include "CommonControllerLib/FunctionManager.h"
#include "RawLimits.h"
#include "RunLoop.h"
#include "Timing.h"
#include "Workplace.h"
#include "controller_host/HostEngine.h"
#include "services/Settings.h"

namespace {

bool RunJobs(std::size_t count, int parallelJobs) {
    const Workplace workplace(parallelJobs);
    EnqueueJobsInfo request;
    request.scenario.id = workplace.MakeFile(L"no_operation.rb");
    request.outputDir = workplace.Path(L"output");
    request.inputFileSets.assign(count, {workplace.MakeFile(L"part.stl")});
    const FunctionManager functions(settings::Current()->functionModules);
    HostEngine engine(&functions);
    JobEnqueueResult result;
    return engine.EnqueueJob(request, result) && RunUntilCompleted(engine) == count;
}

void SpawnProcesses(std::size_t count) {
    for (std::size_t number = 0; number < count; ++number) {
        raw_limits::SpawnAndWait("/bin/true");
    }
}

} // namespace

int main(int argc, char** argv) {
    const std::size_t count = argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 1000;
    bool succeeded = true;
    std::printf("controller %.6f\n", SecondsFor([&] { succeeded = RunJobs(count, 1); }));
    std::printf("controller_2_at_a_time %.6f\n", SecondsFor([&] { succeeded = RunJobs(count, 2) && succeeded; }));
    std::printf("posix_spawn %.6f\n", SecondsFor([&] { SpawnProcesses(count); }));
    if (!succeeded) {
        std::fputs("job_throughput: not every job succeeded; its figure says nothing\n", stderr);
    }
    return succeeded ? 0 : 1;
}
