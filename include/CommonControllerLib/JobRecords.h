#pragma once

/// @file
/// The records of jobs: rows of the list, requests, answers, reports.

#include "CommonControllerLib/JobStatus.h"
#include "CommonControllerLib/ScenarioRecords.h"

#include <cstdint>
#include <string>
#include <vector>

/// The persisted record of one job: one row of the job list file.
struct JobListInfo {
    /// Unique, lower-case hexadecimal.
    std::wstring id;
    /// The number that identifies the job in messages and logs. Not initialized; every creator assigns it.
    std::int32_t seqId;
    /// Percent, 0 to 100, as last reported by the scenario.
    std::int32_t progress = 0;
    /// The state of the job.
    JobStatus status = JobStatus::Queued;
    /// The output directory: first as requested, later the directory prepared for the job.
    std::wstring outputDir;
    /// The work directory, where the job's process writes its reports.
    std::wstring workDir;
    /// UTC, "2024-03-05T07:08:09Z"; empty before the start.
    std::wstring startTime;
    /// In the format of `startTime`; empty before the end.
    std::wstring endTime;
    /// A copy of the scenario's record, taken when the job was enqueued.
    ScenarioInfo scenario;
    /// The input set, in the request's order.
    std::vector<std::wstring> inputFiles;
    /// From the request; passed to the scenario.
    std::wstring runArgument;
    /// From the request; stored and never interpreted.
    std::wstring extraText;

    /// Compares all members.
    bool operator==(const JobListInfo&) const = default;
};

/// A request to run one scenario on several input sets.
struct EnqueueJobsInfo {
    /// Identifies the request in its answer.
    std::wstring requestId;
    /// One element per job to create: the input files of that job.
    std::vector<std::vector<std::wstring>> inputFileSets;
    /// Its `id` is a catalogue id or a path to the scenario file.
    ScenarioInfo scenario;
    /// Must not be empty.
    std::wstring outputDir;
    /// Passed to the scenario.
    std::wstring runArgument;
    /// Stored with the jobs and never interpreted.
    std::wstring extraText;
    /// If true, the results go into a subdirectory named after the local time at which the jobs were enqueued.
    bool useTimeStampFolder = false;

    /// Compares all members.
    bool operator==(const EnqueueJobsInfo&) const = default;
};

/// The identity of one enqueued job; the default value represents a rejected input set.
struct JobIdInfo {
    /// As in `JobListInfo`.
    std::wstring id;
    /// As in `JobListInfo`.
    std::int32_t seqId = 0;

    /// Compares all members.
    bool operator==(const JobIdInfo&) const = default;
};

/// The answer to an `EnqueueJobsInfo`.
struct JobEnqueueResult {
    /// One element per input set of the request, in its order.
    std::vector<JobIdInfo> jobIds;
    /// That of the request.
    std::wstring requestId;
    /// As long as `jobIds`: for each rejected input set the reasons. A host that rejects a request without input sets
    /// stores the reason in one additional element.
    std::vector<std::vector<std::wstring>> inputSetResults;

    /// Compares all members.
    bool operator==(const JobEnqueueResult&) const = default;
};

/// The status of one job. It carries no `seqId`: a receiver that needs the number looks the job up by `id`.
struct JobStatusInfo {
    /// As in `JobListInfo`.
    std::wstring id;
    /// As in `JobListInfo`.
    std::int32_t progress = 0;
    /// As in `JobListInfo`.
    JobStatus status = JobStatus::Queued;
    /// As in `JobListInfo`.
    std::wstring outputDir;
    /// As in `JobListInfo`.
    std::wstring workDir;
    /// As in `JobListInfo`.
    std::wstring startTime;
    /// As in `JobListInfo`.
    std::wstring endTime;

    /// Compares all members.
    bool operator==(const JobStatusInfo&) const = default;
};
