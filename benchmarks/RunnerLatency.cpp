// Runs COUNT no-op scenarios by the function module alone, without engine and job list, and as many bare processes, by
// turns, so that other load meets both. Prints "NAME SECONDS" lines: median and tenth percentile. Usage: runner_latency
// COUNT

#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <vector>

#include "CommonControllerLib/FunctionManager.h"
#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "RawLimits.h"
#include "Timing.h"
#include "Workplace.h"
#include "formats/RunProtocol.h"
#include "platform/files/Directory.h"
#include "platform/processes/Process.h"
#include "platform/processes/Waiting.h"
#include "services/Settings.h"

namespace {

run_protocol::RunScenarioInfo Request(const Workplace& workplace) {
    run_protocol::RunScenarioInfo request;
    request.scenarioPath = workplace.MakeFile(L"no_operation.rb");
    request.inputFiles = {workplace.MakeFile(L"part.stl")};
    return request;
}

/// Starts the runner and waits for its end.
void Run(const FunctionManager& functions, const run_protocol::RunScenarioInfo& request) {
    std::wstring answer;
    void* process = nullptr;
    if (functions.CallFunction("RunScenario", run_protocol::SerializeRunScenarioInfo(request), answer, nullptr) != 0 ||
        !ControllerCSWrapper::Deserialize(answer, process)) {
        throw std::runtime_error("the runner was not started");
    }
    const platform::OwnedHandle runner(process);
    platform::WaitForAny({runner.Get()}, std::nullopt);
    if (platform::ExitCode(runner.Get()) != 0) {
        throw std::runtime_error("the runner failed");
    }
}

/// The tenth is the figure with the least other load.
void Print(const char* name, const std::vector<double>& seconds) {
    std::printf("%s_median %.6f\n", name, Median(seconds));
    std::printf("%s_tenth %.6f\n", name, Quantile(seconds, 0.1));
}

} // namespace

int main(int argc, char** argv) {
    const int count = argc > 1 ? std::atoi(argv[1]) : 500;
    const Workplace workplace;
    const FunctionManager functions(settings::Current()->functionModules);
    run_protocol::RunScenarioInfo request = Request(workplace);
    std::vector<double> processes;
    std::vector<double> runs;
    for (int number = 1; number <= count; ++number) {
        request.jobId = std::to_wstring(10'000'000 + number);
        request.workDir = workplace.Path(L"work\\" + request.jobId);
        request.outputFolder = workplace.Path(L"output\\" + request.jobId);
        // As the engine does before it calls the module.
        if (!platform::MakeMissingPrivateDirectories(request.outputFolder)) {
            throw std::runtime_error("cannot create an output directory");
        }
        processes.push_back(SecondsFor([] { raw_limits::SpawnAndWait("/bin/true"); }));
        runs.push_back(SecondsFor([&] { Run(functions, request); }));
    }
    Print("process", processes);
    Print("runner", runs);
}
