#pragma once

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
    RunRecord(const run_protocol::RunScenarioInfo& info, std::wstring directory, StopCheck stopCheck);

    /// Hashes scenario and inputs. Throws `Stopped`.
    void Begin(const settings::Settings& settings, const ScenarioCommand& command);

    /// Hashes the outputs and writes the file into the output directory, unless the scenario has written one of this
    /// name. A run that is asked to stop meanwhile gets no file.
    void End(const run_protocol::RunScenarioResult& result);

    const provenance::Ingredients& UsedIngredients() const { return record; }
    const provenance::RunContext& Context() const { return context; }

private:
    void ReadContext();
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
