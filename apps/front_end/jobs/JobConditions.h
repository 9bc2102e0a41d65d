#pragma once

#include "formats/Scheduling.h"

#include <array>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace front_end {

/// Conditions that select jobs. All of them must hold; the default selects every job. Units of times: seconds since
/// 1970-01-01 UTC.
struct JobConditions {
    /// Empty: any.
    std::set<JobStatus> states = {};
    /// When the job has ended, or was enqueued if it has not.
    std::optional<std::int64_t> latest = {};
    std::optional<std::int64_t> earliest = {};
    // In lower case; empty: any.
    /// A part of the scenario's name, or its id.
    std::wstring scenario = {};
    /// One of these is the label of the scenario's directory.
    std::vector<std::wstring> labels = {};
    /// A part of scenario, inputs, argument or output directory.
    std::wstring text = {};

    bool IsEmpty() const;
    bool Matches(const ListedJob& job) const;

private:
    bool MatchesScenario(const ListedJob& job) const;
    bool MatchesLabel(const ListedJob& job) const;
    bool MatchesAge(const ListedJob& job) const;
};

/// Every status that a listed job can have.
inline constexpr std::array namedStates = {JobStatus::Queued,  JobStatus::Running,  JobStatus::Success,
                                           JobStatus::Failed,  JobStatus::Dequeued, JobStatus::Canceling,
                                           JobStatus::Canceled};

/// The status of this name (`StatusName`), whatever its case; nothing for any other text.
std::optional<JobStatus> StatusNamed(const std::wstring& name);

/// The text before " : " in the name of a job's scenario: the label of the scenario's directory. Empty if there is
/// none.
std::wstring LabelOf(const JobListInfo& job);

} // namespace front_end
