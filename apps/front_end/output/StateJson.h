#pragma once

#include "front_end/output/JobReports.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// The JSON of commands that report a state or what they did: one object on one line, like in `JsonOutput.h`.
namespace front_end {

/// A host as `host status` shows it. Paths are native.
struct HostState {
    bool isRunning = false;
    /// Missing if unknown, like the others.
    std::int64_t process = 0;
    std::wstring since = {};
    std::wstring endpoint = {};
    std::wstring jobListFile = {};
    std::wstring settingsFile = {};
};

/// The numbers of jobs in each state.
struct JobCounts {
    std::int64_t queued = 0;
    std::int64_t running = 0;
    std::int64_t succeeded = 0;
    std::int64_t failed = 0;
    std::int64_t cancelled = 0;
};

/// The number to which a job with this status counts.
std::int64_t& CountOf(JobCounts& counts, JobStatus status);

struct QueueNumbers : JobCounts {
    bool isPaused = false;
};

/// The result of one check.
struct CheckResult {
    /// Of the kind of check; not translated.
    std::wstring name = {};
    bool isFine = false;
    /// What was found, or what is wrong and what to do.
    std::wstring message = {};
};

std::wstring ReportsJson(const std::vector<JobReport>& reports);
std::wstring HostJson(const HostState& host);
/// `queue` without a value: no host runs.
std::wstring OverviewJson(const HostState& host, const std::optional<QueueNumbers>& queue);
/// {"version":1,"paused":true}
std::wstring PausedJson(bool isPaused);
std::wstring ChecksJson(const std::vector<CheckResult>& checks);
/// What was made: {"version":1,"path":"..."}
std::wstring PathJson(const std::wstring& nativePath);
/// {"version":1,"settings":{...}}; `settings` is JSON.
std::wstring SettingsJson(const std::wstring& settings);
/// A part of a job's log.
std::wstring LogPartJson(std::int32_t number, const std::wstring& text);

} // namespace front_end
