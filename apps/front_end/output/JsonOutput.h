#pragma once

#include "CommonControllerLib/ScenarioRecords.h"
#include "front_end/jobs/JobRow.h"

#include <cstddef>
#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

/// The output of `--json`: one JSON object per line, each with the version of its format, without lone surrogates
/// (`MakePortable`). Its names do not depend on the language.
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

/// Names members of a job in the document of `JobsJson`.
class JobMembers {
public:
    static JobMembers All();
    /// Those that lists have.
    static JobMembers OfList() { return All().InLists(); }

    /// Only these. Returns nothing if a job has no member of one of these names; sets `unknown` to it.
    static std::optional<JobMembers> Named(const std::vector<std::wstring>& names, std::wstring& unknown);

    /// These without those that need a file of the job.
    JobMembers InLists() const;
    /// These without some; a job has members of these names.
    JobMembers Without(std::initializer_list<const wchar_t*> names) const;

    bool operator==(const JobMembers&) const = default;

    bool Has(std::size_t index) const { return isSelected[index]; }

private:
    std::vector<bool> isSelected;
};

std::wstring JobsJson(std::vector<JobRow> jobs);
/// Appends one job, as in the document of `JobsJson`, without the members that `members` does not name.
void AppendJob(JobRow job, const JobMembers& members, std::wstring& json);
/// `problems` without a value: the document does not have them.
std::wstring ScenariosJson(const std::vector<ScenarioInfo>& scenarios,
                           std::optional<std::vector<std::wstring>> problems = std::nullopt);
std::wstring ParameterSetsJson(const std::vector<ScenarioParameterSetInfo>& parameterSets);

} // namespace front_end
