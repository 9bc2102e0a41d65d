#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "CommonControllerLib/JobRecords.h"

/// What the user of a job wants to decide about when it starts. The defaults start jobs in the order of their age.
struct Scheduling {
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

/// The state of the whole queue.
struct QueueState {
    /// No further job starts; running jobs go on.
    bool isPaused = false;

    bool operator==(const QueueState&) const = default;
};
