#pragma once

#include "controller_host/scheduling/SchedulingEntry.h"

#include <map>
#include <string>
#include <unordered_set>
#include <vector>

/// Which waiting jobs wait for which other jobs. Does not own the entries. Not thread-safe.
class PredecessorIndex {
public:
    /// What the end of a job means for those that wait for it, in no particular order.
    struct Effect {
        /// Their last predecessor has ended.
        std::vector<SchedulingEntry*> released;
        /// They can never start.
        std::vector<SchedulingEntry*> stranded;
    };

    /// Takes the open predecessors of `entry` from its `after` and `afterEnd`.
    void Add(SchedulingEntry& entry);
    /// `entry` no longer waits for any job.
    void Remove(SchedulingEntry& entry);
    Effect End(const std::wstring& id, bool hasSucceeded);
    /// The ids that a job waits for, sorted.
    std::vector<std::wstring> Ids() const;

private:
    std::map<std::wstring, std::unordered_set<SchedulingEntry*>> waitersById;
};
