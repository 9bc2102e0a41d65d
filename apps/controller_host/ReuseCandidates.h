#pragma once

#include "CommonControllerLib/JobRecords.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

/// The succeeded jobs by what their results were made from: scenario, argument and names of the inputs. The runner of a
/// job compares the contents and proves the results. Threads: the engine calls it under its own lock.
class ReuseCandidates {
public:
    /// The maximum number of jobs that are named to a runner.
    static constexpr std::size_t most = 16;

    /// Takes over a change of a job.
    void Update(const JobListInfo& job);
    void Remove(const JobListInfo& job);

    /// Ids of the latest succeeded jobs with the same scenario, argument and names of inputs, and of a few others, the
    /// latest first. None for a job without inputs, whose output directory is the user's.
    std::vector<std::wstring> Of(const JobListInfo& job) const;

private:
    /// Ids by number.
    std::unordered_map<std::size_t, std::map<std::int32_t, std::wstring>> jobs;
};
