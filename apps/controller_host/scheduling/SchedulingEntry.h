#pragma once

#include "formats/Scheduling.h"

#include <cstdint>
#include <map>
#include <string>
#include <tuple>

/// A waiting job as the scheduler keeps it.
struct SchedulingEntry {
    std::wstring id;
    /// Position in the job list.
    std::uint64_t order = 0;
    /// Units: seconds since 1970-01-01 UTC.
    std::int64_t queuedTime = 0;
    /// The smallest one starts first. Units: seconds.
    std::int64_t key = 0;
    Scheduling scheduling;
    /// The predecessors that have not ended, by id; true if the predecessor must succeed.
    std::map<std::wstring, bool> openPredecessors;

    /// True if the job waits for something other than its time and its resources.
    bool IsBlocked() const { return scheduling.hold || !openPredecessors.empty(); }
};

/// The order in which jobs start. Ids decide between jobs of one position, so that the order never depends on memory.
struct StartsBefore {
    bool operator()(const SchedulingEntry* left, const SchedulingEntry* right) const {
        return std::tie(left->key, left->order, left->id) < std::tie(right->key, right->order, right->id);
    }
};
