#pragma once

#include "CommonControllerLib/JobEntry.h"

#include <chrono>
#include <list>
#include <memory>
#include <mutex>
#include <vector>

/// Keeps the copies of the records that a rewrite of the list has made, for the next rewrite: to allocate and release
/// the texts of a long list takes as long as half of the rest. Whoever takes them has them alone; a second user at that
/// time begins with none. Threads: any.
class RecordCopies {
public:
    using Entries = std::list<std::shared_ptr<JobEntry>>;
    using Records = std::vector<JobListInfo>;
    using Time = std::chrono::steady_clock::time_point;

    /// Copies are given back to the system after this time without a rewrite.
    static constexpr std::chrono::seconds longestRest{10};

    /// The copies of the process, because the published interface fixes the members of the engine.
    static RecordCopies& OfProcess();

    Records Take();
    void Keep(Records&& records, Time now);
    /// Releases the copies if they have rested since `now - longestRest`.
    void ReleaseRested(Time now);
    void Release() { Take(); }

    /// Makes `records` the same as those of the entries. Only what differs is written: most of a list has not changed
    /// since the rewrite before.
    static void Update(Records& records, const Entries& entries);

private:
    std::mutex mutex;
    Records kept;
    Time lastUse;
};
