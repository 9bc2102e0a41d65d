#include "local_process/LocalProcess.h"

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "fault_points/FaultPoint.h"
#include "formats/RunProtocol.h"
#include "local_process/RunnerStart.h"
#include "local_process/WorkDirectory.h"
#include "services/Settings.h"

namespace local_process {
namespace {

constexpr const char* runScenario = "RunScenario";
constexpr const char* cancelScenario = "CancelScenario";
constexpr const char* terminate = "Terminate";

ModuleResult Fail(ModuleResult result, const std::wstring& problem) {
    ControllerCSWrapper::WriteErrorLog(problem);
    return result;
}

ModuleResult FailJob(ModuleResult result, const run_protocol::RunScenarioInfo& info, const std::wstring& problem,
                     std::wstring& answer) {
    LeaveFailedResult(info, problem);
    answer = problem;
    return Fail(result, problem);
}

} // namespace

std::vector<std::string> LocalProcess::FunctionNames() const {
    return {runScenario, cancelScenario, terminate};
}

RunnerProgram LocalProcess::ChooseRunner(const run_protocol::RunScenarioInfo&,
                                         const settings::Settings& settings) const {
    return {settings.scenarioRunner, {}, L"Check the setting \"scenarioRunner\""};
}

ModuleResult LocalProcess::Call(const std::string& functionName, const std::wstring& input, std::wstring& output) {
    if (functionName == runScenario) {
        return RunScenario(input, output);
    }
    if (functionName == cancelScenario) {
        return CancelScenario(input);
    }
    return functionName == terminate ? Terminate() : ModuleResult::UnknownFunction;
}

ModuleResult LocalProcess::RunScenario(const std::wstring& request, std::wstring& answer) {
    run_protocol::RunScenarioInfo info;
    std::wstring problem;
    if (!run_protocol::ParseRunScenarioInfo(request, info, problem)) {
        answer = L"A request to run a scenario cannot be read: " + problem;
        return Fail(ModuleResult::InvalidRequest, answer);
    }
    if (!PrepareWorkDirectory(info, problem)) {
        return FailJob(ModuleResult::NoWorkDirectory, info, problem, answer);
    }
    fault_points::ReachFaultPoint(fault_points::FaultPoint::RunRequestWritten);
    const auto settings = settings::Current();
    const RunnerProgram program = ChooseRunner(info, *settings);
    platform::OwnedHandle runner = server.StartRunner(info, *settings, program);
    if (!runner && !StartRunner(info, *settings, program, runner, problem)) {
        return FailJob(ModuleResult::RunnerNotStarted, info, problem, answer);
    }
    fault_points::ReachFaultPoint(fault_points::FaultPoint::RunnerStarted);
    registry.Add(info.jobId, info.workDir, runner.Get());
    answer = run_protocol::SerializeProcessHandle(runner.Get());
    // The caller owns the handle from here on.
    static_cast<void>(runner.Release());
    return ModuleResult::Done;
}

ModuleResult LocalProcess::CancelScenario(const std::wstring& jobId) {
    return registry.RequestStopOf(jobId) ? ModuleResult::Done : ModuleResult::JobNotRunning;
}

ModuleResult LocalProcess::Terminate() {
    server.End();
    registry.RequestStopOfAll();
    return ModuleResult::Done;
}

} // namespace local_process
