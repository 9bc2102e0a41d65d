#include "scenario_runner/RunRecord.h"

#include <algorithm>
#include <utility>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "formats/ScenarioManifest.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/system/Clock.h"
#include "platform/system/Machine.h"
#include "scenario_runner/OutputListing.h"
#include "scenario_runner/ResultReuse.h"
#include "text/Text.h"

namespace scenario_runner {
namespace {

void Warn(const std::wstring& problem) {
    ControllerCSWrapper::WriteWarnLog(problem);
}

/// The path below `directory` with slashes; empty if it is not below.
std::wstring RelativePath(const std::wstring& directory, const std::wstring& path) {
    const std::wstring whole = platform::ResolveAgainst(directory, path);
    const std::wstring root = platform::ResolveAgainst(directory, L".") + L'\\';
    if (whole.size() <= root.size() || !platform::SameName(whole.substr(0, root.size()), root)) {
        return {};
    }
    std::wstring relative = whole.substr(root.size());
    std::replace(relative.begin(), relative.end(), L'\\', L'/');
    return relative;
}

} // namespace

RunRecord::RunRecord(const run_protocol::RunScenarioInfo& runInfo, provenance::RunContext runContext,
                     std::wstring workDirectory, StopCheck stopCheck)
    : info(runInfo), directory(std::move(workDirectory)), isStopped(std::move(stopCheck)), sources(isStopped),
      context(std::move(runContext)) {}

void RunRecord::Begin(const settings::Settings& settings, const ScenarioCommand& command) {
    startTime = platform::Now();
    record.controllerVersion = CONTROLLER_VERSION;
    record.runArgument = info.runArgument;
    record.toolVersions = settings.toolVersions;
    record.scenario.push_back(sources.Add(info.scenarioPath));
    const std::wstring description = scenario_manifest::ManifestBeside(info.scenarioPath);
    if (!scenario_manifest::IsPackage(info.scenarioPath) && platform::Exists(description)) {
        record.scenario.push_back(sources.Add(description));
    }
    for (const std::wstring& path : info.inputFiles) {
        record.inputs.push_back(sources.Add(path));
    }
    AddInterpreter(command);
}

void RunRecord::AddInterpreter(const ScenarioCommand& command) {
    if (command.interpreter.empty()) {
        return;
    }
    record.interpreter.path = platform::ToNativeText(command.program);
    record.interpreter.arguments.assign(command.interpreter.begin() + 1, command.interpreter.end());
    if (const auto stamp = platform::StampOf(command.program)) {
        record.interpreter.size = static_cast<std::int64_t>(stamp->size);
        record.interpreter.lastWrite = platform::LastWriteTime(*stamp);
    }
}

void RunRecord::End(const run_protocol::RunScenarioResult& result) {
    const std::wstring path = platform::ResolveAgainst(info.outputFolder, provenance::fileName);
    if (platform::Exists(path) || platform::IsLink(path)) {
        Warn(L"The origin of the results of job " + info.jobId +
             L" is not recorded, because its scenario has written " + platform::ToNativeText(path));
        return;
    }
    try {
        Describe(result);
        // The function logs a failure.
        (void)run_protocol::WriteFile(provenance::Serialize(record), path);
    } catch (const Stopped&) {
        // Nobody waits for the file any more.
    } catch (const std::exception& failure) {
        Warn(L"The origin of the results of job " + info.jobId + L" is not recorded: " +
             text::FromUtf8(failure.what()));
    }
}

std::optional<run_protocol::RunScenarioResult> RunRecord::Reuse() {
    if (context.candidates.empty() || !sources.Problem().empty()) {
        return std::nullopt;
    }
    ResultReuse reuse(info.outputFolder, record, isStopped);
    const auto earlier = reuse.Take(context.candidates);
    if (!earlier) {
        return std::nullopt;
    }
    sources.CheckUnchanged();
    if (!sources.Problem().empty()) {
        reuse.Undo();
        return std::nullopt;
    }
    return TakeOver(*earlier);
}

run_protocol::RunScenarioResult RunRecord::TakeOver(const provenance::Record& earlier) {
    record.tools = earlier.tools;
    record.usedFiles = earlier.usedFiles;
    record.outputs = earlier.outputs;
    record.outputDirectories = earlier.outputDirectories;
    record.resultFiles = earlier.resultFiles;
    record.resultsOf = earlier.resultsOf ? earlier.resultsOf : NameOf(earlier.jobId);
    DescribeRun(true);
    // The function logs a failure.
    (void)run_protocol::WriteFile(provenance::Serialize(record),
                                  platform::ResolveAgainst(info.outputFolder, provenance::fileName));
    run_protocol::RunScenarioResult result{info.jobId, true, {}, {}};
    result.messages.emplace_back(0, L"Results of job " + std::to_wstring(record.resultsOf->jobNumber) + L".");
    for (const std::wstring& file : record.resultFiles) {
        result.outputFiles.push_back(platform::ToNativeText(platform::ResolveAgainst(info.outputFolder, file)));
    }
    return result;
}

provenance::JobName RunRecord::NameOf(const std::wstring& jobId) const {
    const auto found = std::find_if(context.candidates.begin(), context.candidates.end(),
                                    [&](const auto& candidate) { return candidate.jobId == jobId; });
    const bool isKnown = found != context.candidates.end();
    return {jobId, isKnown ? found->jobNumber : 0};
}

void RunRecord::Describe(const run_protocol::RunScenarioResult& result) {
    DescribeRun(result.succeeded);
    sources.CheckUnchanged();
    Note(sources.Problem());
    AddUsedTools();
    AddOutputs();
    AddResultFiles(result.outputFiles);
}

void RunRecord::DescribeRun(bool succeeded) {
    record.jobId = info.jobId;
    record.attempt = context.attempt;
    record.succeeded = succeeded;
    record.machine = platform::MachineName();
    record.user = platform::AccountName();
    record.startTime = platform::UtcTimestamp(startTime);
    record.endTime = platform::UtcTimestamp(platform::Now());
}

void RunRecord::AddUsedTools() {
    const std::wstring path = platform::ResolveAgainst(directory, provenance::usedToolsFileName);
    if (!platform::Exists(path) && !platform::IsLink(path)) {
        return;
    }
    provenance::UsedTools used;
    std::wstring problem;
    if (!provenance::ReadUsedTools(path, used, problem)) {
        Warn(L"The tools of job " + info.jobId + L" are unknown: " + problem);
        Note(problem);
        return;
    }
    record.tools = used.tools;
    for (const std::wstring& file : used.files) {
        AddUsedFile(file);
    }
}

/// Such a file is named after it was loaded: a newer one could have another content than the loaded one.
void RunRecord::AddUsedFile(const std::wstring& path) {
    provenance::FileRecord file;
    file.path = path;
    const auto stamp = platform::StampOf(path);
    Note(platform::IsAbsolute(path) ? HashFile(path, isStopped, file) : path + L" is not an absolute path.");
    if (stamp && platform::LastWriteTime(*stamp) >= startTime) {
        Note(platform::ToNativeText(path) + L" was written during the run.");
    }
    record.usedFiles.push_back(file);
}

void RunRecord::AddOutputs() {
    OutputListing outputs;
    Note(ListOutputs(info.outputFolder, outputs));
    record.outputDirectories = std::move(outputs.directories);
    for (const std::wstring& name : outputs.files) {
        provenance::FileRecord file;
        file.path = name;
        Note(HashFile(platform::ResolveAgainst(info.outputFolder, name), isStopped, file));
        record.outputs.push_back(file);
    }
}

void RunRecord::AddResultFiles(const std::vector<std::wstring>& outputFiles) {
    for (const std::wstring& path : outputFiles) {
        const std::wstring relative = RelativePath(info.outputFolder, path);
        Note(relative.empty() ? L"The output " + path + L" is not in the output directory." : L"");
        record.resultFiles.push_back(relative.empty() ? path : relative);
    }
}

void RunRecord::Note(const std::wstring& problem) {
    if (record.notReusable.empty()) {
        record.notReusable = problem;
    }
}

} // namespace scenario_runner
