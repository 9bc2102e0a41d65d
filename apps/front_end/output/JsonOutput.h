#pragma once

#include "CommonControllerLib/ScenarioRecords.h"
#include "front_end/jobs/JobRow.h"

#include <string>
#include <vector>

/// The output of `--json`: one JSON object per line, each with the version of its format. Its names do not depend on
/// the language.
namespace front_end {

/// The document of `JobsJson` in parts.
class JobsJsonParts {
public:
    std::wstring Rows(std::vector<JobRow> jobs);
    /// Follows at least one call of `Rows`.
    static std::wstring End() { return L"]}\n"; }

private:
    bool hasBegun = false;
};

std::wstring JobsJson(std::vector<JobRow> jobs);
std::wstring ScenariosJson(const std::vector<ScenarioInfo>& scenarios);
std::wstring ParameterSetsJson(const std::vector<ScenarioParameterSetInfo>& parameterSets);

} // namespace front_end
