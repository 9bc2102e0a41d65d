#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

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
