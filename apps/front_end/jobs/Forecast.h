#pragma once

#include "front_end/jobs/JobRow.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

/// How long jobs will take, as far as it can be known from the progress that they report.
namespace front_end {

/// How far a set of jobs is.
struct JobsProgress {
    std::size_t jobCount = 0;
    /// Ended jobs, and the fractions that running ones report.
    double done = 0;
    /// A job waits for something that is not only its turn: nobody knows when it starts.
    bool mayStall = false;

    /// 0 to 100.
    std::int32_t Percent() const;
};

JobsProgress ProgressOf(const std::vector<const JobRow*>& jobs);

struct Forecast {
    /// Nothing: unknown, like the other.
    std::optional<double> jobsPerMinute;
    /// Units: seconds.
    std::optional<std::int64_t> left;
};

/// What is to be expected if jobs go on as they did in the `seconds` between two observations. Unknown without
/// progress, or in the first seconds.
Forecast ForecastOf(const JobsProgress& before, const JobsProgress& now, std::int64_t seconds);

/// The time until a running job ends if it goes on as it did; nothing if it has not reported enough. Units: seconds.
/// `now` is in seconds since 1970.
std::optional<std::int64_t> TimeLeft(const JobRow& job, std::int64_t now);

} // namespace front_end
