#include "controller_host/scheduling/PredecessorIndex.h"

#include <algorithm>
#include <iterator>

void PredecessorIndex::Add(SchedulingEntry& entry) {
    for (const std::wstring& id : entry.scheduling.afterEnd) {
        entry.openPredecessors[id] = false;
    }
    for (const std::wstring& id : entry.scheduling.after) {
        entry.openPredecessors[id] = true;
    }
    for (const auto& [id, mustSucceed] : entry.openPredecessors) {
        waitersById[id].insert(&entry);
    }
}

void PredecessorIndex::Remove(SchedulingEntry& entry) {
    for (const auto& [id, mustSucceed] : entry.openPredecessors) {
        const auto waiters = waitersById.find(id);
        waiters->second.erase(&entry);
        if (waiters->second.empty()) {
            waitersById.erase(waiters);
        }
    }
    entry.openPredecessors.clear();
}

PredecessorIndex::Effect PredecessorIndex::End(const std::wstring& id, bool hasSucceeded) {
    Effect effect;
    const auto ended = waitersById.extract(id);
    if (ended.empty()) {
        return effect;
    }
    for (SchedulingEntry* waiter : ended.mapped()) {
        const auto predecessor = waiter->openPredecessors.find(id);
        const bool isStranded = predecessor->second && !hasSucceeded;
        waiter->openPredecessors.erase(predecessor);
        if (isStranded) {
            effect.stranded.push_back(waiter);
        } else if (waiter->openPredecessors.empty()) {
            effect.released.push_back(waiter);
        }
    }
    return effect;
}

std::vector<std::wstring> PredecessorIndex::Ids() const {
    std::vector<std::wstring> ids;
    ids.reserve(waitersById.size());
    std::transform(waitersById.begin(), waitersById.end(), std::back_inserter(ids),
                   [](const auto& waiters) { return waiters.first; });
    return ids;
}
