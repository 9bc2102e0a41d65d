#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "CommonControllerLib/Export.h"
#include "CommonControllerLib/JobRecords.h"

/// How often a job runs, how long, and what its processes may take. A request gets the values that it does not have
/// from the setting `jobDefaults`; without these a job runs once, without a limit.
struct RunRules {
    /// How often a job that has failed is run again.
    std::optional<std::int32_t> retries = {};
    /// The time between the end of an attempt and the next one. Units: seconds.
    std::optional<std::int64_t> retryDelay = {};
    /// Each further delay is twice as long, at most a day.
    std::optional<bool> retryBackoff = {};
    /// Only an attempt that has crashed, was killed or has exceeded a limit is repeated.
    std::optional<bool> retryOnlyAfterCrash = {};
    /// An attempt that runs longer is stopped and has failed; 0: no limit. Units: seconds.
    std::optional<std::int64_t> timeLimit = {};
    /// The same for an attempt without new progress and output for so long. Units: seconds.
    std::optional<std::int64_t> silenceLimit = {};
    /// What the processes of the job may use together, enforced where the system offers it; 0: no limit. Units: MiB.
    std::optional<std::int64_t> memoryLimitMiB = {};
    /// The same for processor time; 100 stands for one core.
    std::optional<std::int32_t> cpuLimitPercent = {};

    bool operator==(const RunRules&) const = default;
};

/// What the user of a job wants to decide about when it starts and how it runs. The defaults start jobs in the order of
/// their age.
struct Scheduling : RunRules {
    /// A higher one starts earlier.
    std::int32_t priority = 0;
    /// The job waits until it is released.
    bool hold = false;
    /// The jobs that must have succeeded before this one starts: ids, in requests also numbers (decimal text).
    std::vector<std::wstring> after;
    /// The jobs that must have ended before this one starts, whatever their result is.
    std::vector<std::wstring> afterEnd;
    /// If one of `after` does not succeed, the job leaves the queue (`Dequeued`) instead of being `Failed`.
    bool skipIfAfterFails = false;
    /// The job does not start earlier. Units: seconds since 1970-01-01 UTC.
    std::int64_t notBefore = 0;
    /// The resources that the job takes while it runs, by name; amounts in the units of the settings' `resources`.
    std::map<std::wstring, std::int64_t> needs;
    /// Whether the job gets the results of an earlier one with equal scenario, argument and inputs instead of running;
    /// without a value, the setting of this name decides.
    std::optional<bool> reuse = {};

    bool operator==(const Scheduling&) const = default;
};

/// A request for jobs with what its user decides about their start.
struct ScheduledRequest : EnqueueJobsInfo, Scheduling {
    ScheduledRequest() = default;
    // NOLINTNEXTLINE(google-explicit-constructor): a request without such decisions is one too.
    ScheduledRequest(EnqueueJobsInfo request, Scheduling scheduling = {})
        : EnqueueJobsInfo(std::move(request)), Scheduling(std::move(scheduling)) {}

    bool operator==(const ScheduledRequest&) const = default;
};

/// What a host keeps of a job beside its record.
struct QueueRecord : Scheduling {
    /// When the job was enqueued; 0 if unknown. Units: seconds since 1970-01-01 UTC.
    std::int64_t queuedTime = 0;
    /// The number of the attempt that runs or has ended, from 1 on; 0 before the first one.
    std::int32_t attempt = 0;
    /// Why the attempt before this one has ended; empty if there was none.
    std::wstring lastEnding = {};
    /// The job's `outputDir` was created for it below the one that was requested.
    bool hasOwnOutputDir = false;

    bool operator==(const QueueRecord&) const = default;
};

/// A row of the job list.
struct ListedJob : JobListInfo, QueueRecord {
    ListedJob() = default;
    // NOLINTNEXTLINE(google-explicit-constructor): a record alone is a row too.
    ListedJob(JobListInfo record, QueueRecord queue = {})
        : JobListInfo(std::move(record)), QueueRecord(std::move(queue)) {}

    /// Why the job waits, in answers of a host: "hold", "time", "job" or "resource"; empty if it does not wait, or only
    /// for its turn.
    std::wstring waitReason;
    /// The number of the job, or the name of the resource, for which the job waits.
    std::wstring waitName;

    bool operator==(const ListedJob&) const = default;
};

/// Gives each rule that has no value that of `defaults`.
CONTROLLER_API void AddDefaults(const RunRules& defaults, RunRules& rules);

/// Returns how many times the job runs at most.
inline std::int32_t MostAttempts(const RunRules& rules) {
    return rules.retries.value_or(0) + 1;
}

/// Returns the output directory that the request for a job had named. `outputDir` is the job's.
CONTROLLER_API std::wstring RequestedOutputDir(const std::wstring& outputDir, const QueueRecord& queue);

/// Returns a request, without an id, for a job like this one that starts in its turn: without hold, time and
/// predecessors.
CONTROLLER_API ScheduledRequest RequestToRepeat(const ListedJob& job);

/// A change of waiting jobs. A member without a value stays as it is.
struct JobsEdit {
    /// Ids or numbers (decimal text).
    std::vector<std::wstring> jobs;
    std::optional<std::int32_t> priority;
    std::optional<bool> hold;
    std::optional<std::int64_t> notBefore;
    std::optional<std::map<std::wstring, std::int64_t>> needs;

    bool operator==(const JobsEdit&) const = default;
};

/// A part of the job list.
struct JobsQuery {
    /// Ids or numbers (decimal text); empty: all jobs.
    std::vector<std::wstring> jobs;
    /// Of all jobs, only those with a higher number: the last one of the part before, 0 for the first part.
    std::int32_t after = 0;
    /// The number of rows of the part; 0: no limit.
    std::int32_t limit = 0;

    bool operator==(const JobsQuery&) const = default;
};

/// The state of the whole queue.
struct QueueState {
    /// No further job starts; running jobs go on.
    bool isPaused = false;

    bool operator==(const QueueState&) const = default;
};
