#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "formats/Provenance.h"
#include "formats/RunProtocol.h"
#include "scenario_runner/FileHashing.h"
#include "scenario_runner/ScenarioCommand.h"
#include "services/Settings.h"

namespace scenario_runner {

/// Describes one run for its provenance file. Errors harm nothing: they are logged, or make the results not reusable.
class RunRecord {
public:
    /// `directory` is the path under which the runner uses the work directory.
    RunRecord(const run_protocol::RunScenarioInfo& info, provenance::RunContext context, std::wstring directory,
              StopCheck stopCheck);

    /// Hashes scenario and inputs. Throws `Stopped`.
    void Begin(const settings::Settings& settings, const ScenarioCommand& command);

    /// If the host names earlier jobs whose results may be those of this one, and one of them is proved right, copies
    /// its results, writes the file, and returns the result of this job. Otherwise returns nothing. Throws `Stopped`,
    /// and `std::runtime_error` if the output directory cannot be used any more.
    [[nodiscard]] std::optional<run_protocol::RunScenarioResult> Reuse();

    /// Hashes the outputs and writes the file into the output directory, unless the scenario has written one of this
    /// name. A run that is asked to stop meanwhile gets no file.
    void End(const run_protocol::RunScenarioResult& result);

private:
    /// Who, where and when.
    void DescribeRun(bool succeeded);
    run_protocol::RunScenarioResult TakeOver(const provenance::Record& earlier);
    provenance::JobName NameOf(const std::wstring& jobId) const;
    void Describe(const run_protocol::RunScenarioResult& result);
    void AddInterpreter(const ScenarioCommand& command);
    void AddUsedTools();
    void AddUsedFile(const std::wstring& path);
    void AddOutputs();
    void AddResultFiles(const std::vector<std::wstring>& outputFiles);
    void Note(const std::wstring& problem);

    const run_protocol::RunScenarioInfo& info;
    std::wstring directory;
    StopCheck isStopped;
    SourceFiles sources;
    provenance::RunContext context;
    provenance::Record record;
    std::int64_t startTime = 0;
};

} // namespace scenario_runner
