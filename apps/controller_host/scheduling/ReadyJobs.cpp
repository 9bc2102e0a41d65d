#include "controller_host/scheduling/ReadyJobs.h"

void ReadyJobs::Add(const SchedulingEntry& entry) {
    const auto [place, isNew] = groups.try_emplace(entry.scheduling.needs);
    Group& group = place->second;
    if (isNew) {
        group.demand = resources.DemandOf(entry.scheduling.needs);
    } else {
        byHead.erase(&group);
    }
    group.jobs.insert(&entry);
    if (group.demand) {
        byHead.insert(&group);
    }
}

void ReadyJobs::Remove(const SchedulingEntry& entry) {
    const auto place = groups.find(entry.scheduling.needs);
    if (place == groups.end()) {
        return;
    }
    Group& group = place->second;
    byHead.erase(&group);
    group.jobs.erase(&entry);
    if (group.jobs.empty()) {
        groups.erase(place);
    } else if (group.demand) {
        byHead.insert(&group);
    }
}

void ReadyJobs::Clear() {
    byHead.clear();
    groups.clear();
}

const SchedulingEntry* ReadyJobs::First(std::int64_t overdueKey) const {
    ResourcePool::Amounts free = resources.Free();
    for (const Group* group : byHead) {
        const SchedulingEntry* head = *group->jobs.begin();
        if (group->demand->FitsInto(free)) {
            return head;
        }
        if (head->key <= overdueKey) {
            group->demand->SetAside(free);
        }
    }
    return nullptr;
}

ResourcePool::Amounts ReadyJobs::FreeFor(const SchedulingEntry& entry, std::int64_t overdueKey) const {
    ResourcePool::Amounts free = resources.Free();
    for (const Group* group : byHead) {
        const SchedulingEntry* head = *group->jobs.begin();
        if (!StartsBefore()(head, &entry) || head->key > overdueKey) {
            break;
        }
        if (!group->demand->FitsInto(free)) {
            group->demand->SetAside(free);
        }
    }
    return free;
}
