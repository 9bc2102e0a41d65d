#include "slurm/Slurm.h"

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "platform/files/NativePath.h"
#include "platform/processes/Process.h"
#include "slurm/JobName.h"
#include "slurm/WaiterProgram.h"
#include "slurm/posix/BoundProgram.h"

namespace slurm {
namespace {

using local_process::ModuleResult;

constexpr const char* endLostRuns = "EndLostRuns";

std::wstring PrefixFor(const settings::Settings& settings) {
    return NamePrefix(MachineName(), settings.jobListFile);
}

} // namespace

Slurm::Slurm() : host(NewNamePart()) {}

std::vector<std::string> Slurm::FunctionNames() const {
    std::vector<std::string> names = LocalProcess::FunctionNames();
    names.emplace_back(endLostRuns);
    return names;
}

ModuleResult Slurm::Call(const std::string& functionName, const std::wstring& input, std::wstring& output) {
    const std::lock_guard lock(mutex);
    if (!platform::IsProcessRunning(cancelling.Get())) {
        cancelling.Reset();
    }
    return functionName == endLostRuns ? EndLostRuns() : LocalProcess::Call(functionName, input, output);
}

local_process::RunnerProgram Slurm::ChooseRunner(const run_protocol::RunScenarioInfo& info,
                                                 const settings::Settings& settings) const {
    return {WaiterProgram(),
            {nameOption, NewJobName(PrefixFor(settings), host, info.jobId)},
            L"It must be beside the program of the host"};
}

ModuleResult Slurm::EndLostRuns() {
    const auto settings = settings::Current();
    const platform::OwnedHandle self = platform::OpenSelf();
    platform::ProcessStart start;
    start.program = WaiterProgram();
    start.arguments = {endLostOption, PrefixFor(*settings), keepOption,
                       host,          hostOption,           platform::InheritedHandleText(self.Get())};
    if (!settings->file.empty()) {
        start.arguments.insert(start.arguments.end(), {settingsOption, platform::ToNativeText(settings->file)});
    }
    start.detached = true;
    start.inherited = {self.Get()};
    const platform::Error result = platform::StartProcess(start, cancelling);
    if (!result) {
        ControllerCSWrapper::WriteErrorLog(
            L"Jobs that an earlier host may have left on the cluster are not cancelled: " +
            platform::ToNativeText(start.program) + L": " + result.Text());
    }
    return result ? ModuleResult::Done : ModuleResult::RunnerNotStarted;
}

} // namespace slurm

namespace local_process {

LocalProcess& Module() {
    static slurm::Slurm module;
    return module;
}

} // namespace local_process
