/// slurm_waiter: stands for one job on a Slurm cluster, as the process whose end is the end of the job. The same
/// program runs on the node, around the program that runs the scenario. What it does is chosen by its first option
/// (WaiterProgram.h).

#include <algorithm>
#include <charconv>
#include <functional>
#include <map>

#include "formats/ResultFile.h"
#include "platform/files/NativePath.h"
#include "platform/processes/Process.h"
#include "platform/processes/StopSignal.h"
#include "platform/system/Environment.h"
#include "platform/system/SharedLibrary.h"
#include "platform/terminal/Console.h"
#include "services/Settings.h"
#include "slurm/JobName.h"
#include "slurm/JobPreparation.h"
#include "slurm/LostJobs.h"
#include "slurm/NodeRun.h"
#include "slurm/Waiter.h"
#include "slurm/WaiterProgram.h"
#include "slurm/posix/BoundProgram.h"
#include "text/Numbers.h"
#include "text/Text.h"

namespace {

using slurm::WaiterExit;

using Words = std::vector<std::wstring>;
using Options = std::map<std::wstring, std::wstring>;

WaiterExit Refuse(const std::wstring& problem) {
    platform::WriteErrorOutput("slurm_waiter: " + text::ToUtf8(problem) + "\n");
    return WaiterExit::WrongArguments;
}

/// Pairs of an option and its value.
bool ReadOptions(const Words& words, Options& options) {
    for (std::size_t index = 0; index + 1 < words.size(); index += 2) {
        options[words[index]] = words[index + 1];
    }
    return words.size() % 2 == 0 && !words.empty();
}

WaiterExit RunJob(const Options& options) {
    const auto value = [&](const wchar_t* name) { return options.contains(name) ? options.at(name) : std::wstring(); };
    const std::wstring workDir = value(slurm::workDirOption);
    if (!platform::IsAbsolute(workDir) || !slurm::IsJobName(value(slurm::nameOption))) {
        return Refuse(L"expected --work-dir DIR --name NAME [--host HANDLE] [--settings FILE]");
    }
    const platform::OwnedHandle host = platform::TakeInheritedHandle(value(slurm::hostOption));
    const platform::StopSignal stopSignal;
    settings::UseFile(value(slurm::settingsOption));
    slurm::WaiterJob job;
    std::wstring problem = settings::Problem();
    if (!problem.empty() || !slurm::PrepareJob(workDir, value(slurm::nameOption), job, problem)) {
        const auto result = run_protocol::FailedResult(job.jobId, problem);
        return run_protocol::WriteResult(workDir, result) ? WaiterExit::NotStarted : WaiterExit::NoResult;
    }
    return slurm::Waiter(job, host.Get(), stopSignal).Run();
}

WaiterExit RunOnNode(const Options& options) {
    const auto needed = {slurm::nodeOption, slurm::workDirOption, slurm::runnerOption, slurm::settingsOption,
                         slurm::lostAfterOption};
    const bool isComplete =
        std::all_of(needed.begin(), needed.end(), [&](const wchar_t* name) { return options.contains(name); });
    const std::int32_t lostAfter = isComplete ? numbers::ReadInteger(options.at(slurm::lostAfterOption)) : 0;
    if (lostAfter <= 0) {
        return Refuse(L"expected --node NAME --work-dir DIR --runner PROGRAM --settings FILE --lost-after SECONDS");
    }
    slurm::NodeJob job;
    job.name = options.at(slurm::nodeOption);
    job.workDir = options.at(slurm::workDirOption);
    job.runner = options.at(slurm::runnerOption);
    job.settingsFile = options.at(slurm::settingsOption);
    job.lostAfter = std::chrono::seconds(lostAfter);
    const platform::StopSignal stopSignal;
    return slurm::NodeRun(job, stopSignal).Run();
}

WaiterExit RunBound(const Words& words) {
    constexpr std::size_t fewestWords = 3;
    std::uint32_t parent = 0;
    const std::string digits = words.size() < fewestWords ? "" : text::ToUtf8(words[1]);
    if (std::from_chars(digits.data(), digits.data() + digits.size(), parent).ec != std::errc()) {
        return Refuse(L"expected --bound-to PROCESS PROGRAM [ARGUMENT...]");
    }
    slurm::BecomeBoundProgram(parent, words[2], {words.begin() + 3, words.end()});
    return WaiterExit::NotStarted;
}

WaiterExit EndLost(const Options& options) {
    if (!options.contains(slurm::keepOption) || !options.contains(slurm::hostOption)) {
        return Refuse(L"expected --end-lost PREFIX --keep HOST --host HANDLE [--settings FILE]");
    }
    const platform::OwnedHandle host = platform::TakeInheritedHandle(options.at(slurm::hostOption));
    settings::UseFile(options.contains(slurm::settingsOption) ? options.at(slurm::settingsOption) : L"");
    return slurm::EndLostJobs(options.at(slurm::endLostOption), options.at(slurm::keepOption), host.Get());
}

WaiterExit Run(const Words& words) {
    if (!words.empty() && words.front() == slurm::boundOption) {
        return RunBound(words);
    }
    Options options;
    if (!ReadOptions(words, options)) {
        return Refuse(L"expected pairs of an option and its value");
    }
    if (options.contains(slurm::nodeOption)) {
        return RunOnNode(options);
    }
    return options.contains(slurm::endLostOption) ? EndLost(options) : RunJob(options);
}

WaiterExit RunSafely(const Words& words) {
    try {
        return Run(words);
    } catch (const std::exception& failure) {
        platform::WriteErrorOutput(std::string("slurm_waiter: failed: ") + failure.what() + "\n");
        return WaiterExit::NoResult;
    }
}

} // namespace

int main(int count, char** values) {
    platform::HardenLibrarySearch();
    platform::PrepareConsole();
    platform::IgnoreFileSizeSignal();
    return static_cast<int>(RunSafely(platform::ProgramArguments(count, values)));
}
