#pragma once

#include "controller_host/scheduling/ResourcePool.h"
#include "controller_host/scheduling/SchedulingEntry.h"

#include <cstdint>
#include <map>
#include <optional>
#include <set>

/// The waiting jobs that lack nothing but resources, or only wait for their turn. Jobs with equal needs form a group:
/// if the first one of a group cannot start, no other one can, so that a search looks at one job of each group. Jobs
/// whose needs never fit are kept, but not looked at. Does not own the entries, whose keys and needs must not change
/// while they are contained. Not thread-safe.
class ReadyJobs {
public:
    /// `resourcePool` must outlive this object.
    explicit ReadyJobs(const ResourcePool& resourcePool) : resources(resourcePool) {}

    void Add(const SchedulingEntry& entry);
    /// Has no effect if the entry is not contained.
    void Remove(const SchedulingEntry& entry);
    void Clear();

    /// The job that starts next; null if none can start. The first job of a group that does not fit and whose key is at
    /// most `overdueKey` sets its needs aside: jobs behind it start with what remains.
    const SchedulingEntry* First(std::int64_t overdueKey) const;
    /// What is free for `entry`: not taken, and not set aside by jobs before it.
    ResourcePool::Amounts FreeFor(const SchedulingEntry& entry, std::int64_t overdueKey) const;

private:
    struct Group {
        std::set<const SchedulingEntry*, StartsBefore> jobs;
        /// Nothing if the needs never fit.
        std::optional<ResourcePool::Demand> demand;
    };
    struct HeadStartsBefore {
        bool operator()(const Group* left, const Group* right) const {
            return StartsBefore()(*left->jobs.begin(), *right->jobs.begin());
        }
    };

    const ResourcePool& resources;
    std::map<ResourcePool::Needs, Group> groups;
    /// The groups whose needs may fit. A group is taken out while its first job changes.
    std::set<const Group*, HeadStartsBefore> byHead;
};
