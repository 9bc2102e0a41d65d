#pragma once

#include "CommonControllerLib/JobStatus.h"
#include "CommonControllerLib/ScenarioRecords.h"

#include <cstdint>
#include <string>
#include <vector>

/// Everything that is known and kept about one job: one row of the job list file.
struct JobListInfo {
    /// Unique, lower-case hexadecimal.
    std::wstring id;
    /// The number that people and log lines name the job by. Not set by default construction; every creator assigns it.
    std::int32_t seqId;
    /// 0 to 100, as the scenario last reported it.
    std::int32_t progress = 0;
    JobStatus status = JobStatus::Queued;
    /// Where the results go: as requested, later the prepared output directory.
    std::wstring outputDir;
    /// Where the job's process reports.
    std::wstring workDir;
    /// UTC, "2024-03-05T07:08:09Z"; empty until then.
    std::wstring startTime;
    /// As `startTime`.
    std::wstring endTime;
    /// A copy of the scenario's record, taken when the job was enqueued.
    ScenarioInfo scenario;
    /// The input set, in the request's order.
    std::vector<std::wstring> inputFiles;
    /// From the request; handed to the scenario.
    std::wstring runArgument;
    /// From the request; kept, never read.
    std::wstring extraText;

    bool operator==(const JobListInfo&) const = default;
};

/// A request to run one scenario on several input sets.
struct EnqueueJobsInfo {
    /// Names the request in its answer.
    std::wstring requestId;
    /// One element a job to create; each the input files of that job.
    std::vector<std::vector<std::wstring>> inputFileSets;
    /// Its `id` is a catalogue id or a path to the scenario file.
    ScenarioInfo scenario;
    /// Must not be empty.
    std::wstring outputDir;
    std::wstring runArgument;
    std::wstring extraText;
    /// Puts the results into a subdirectory named after the local time of the enqueue.
    bool useTimeStampFolder = false;

    bool operator==(const EnqueueJobsInfo&) const = default;
};

/// The identity of one enqueued job; the default one stands for an input set that was rejected.
struct JobIdInfo {
    std::wstring id;
    std::int32_t seqId = 0;

    bool operator==(const JobIdInfo&) const = default;
};

/// The answer to an `EnqueueJobsInfo`.
struct JobEnqueueResult {
    /// One element an input set of the request, in its order.
    std::vector<JobIdInfo> jobIds;
    std::wstring requestId;
    /// As long as `jobIds`: for each input set without a job why there is none. A host that refuses a request without
    /// input sets puts the reason into an element of its own.
    std::vector<std::vector<std::wstring>> inputSetResults;

    bool operator==(const JobEnqueueResult&) const = default;
};

/// A report on one job. It carries no `seqId`: who needs the number looks the job up by `id`.
struct JobStatusInfo {
    std::wstring id;
    std::int32_t progress = 0;
    JobStatus status = JobStatus::Queued;
    std::wstring outputDir;
    std::wstring workDir;
    std::wstring startTime;
    std::wstring endTime;

    bool operator==(const JobStatusInfo&) const = default;
};
