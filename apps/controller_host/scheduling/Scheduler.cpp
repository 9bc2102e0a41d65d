#include "controller_host/scheduling/Scheduler.h"

#include <algorithm>
#include <iterator>
#include <tuple>
#include <utility>

namespace {

/// Bounds within which no sum of a key overflows: the product with any priority is below 2^62.
constexpr std::int64_t longestAgeing = std::int64_t{1} << 31;
constexpr std::int64_t latestQueuedTime = std::int64_t{1} << 60;

SchedulingEntry EntryOf(const Scheduler::WaitingJob& job) {
    SchedulingEntry entry{job.id, job.order, job.queuedTime, 0, job.scheduling, {}};
    std::erase_if(entry.scheduling.needs, [](const auto& need) { return need.second <= 0; });
    return entry;
}

} // namespace

std::int64_t Scheduler::KeyOf(const SchedulingEntry& entry) const {
    const std::int64_t queued = std::clamp(entry.queuedTime, -latestQueuedTime, latestQueuedTime);
    return queued - entry.scheduling.priority * std::clamp<std::int64_t>(rules.ageingSeconds, 1, longestAgeing);
}

/// Jobs with this key or a smaller one are overdue.
std::int64_t Scheduler::OverdueKey(std::int64_t now) const {
    return std::max<std::int64_t>(now, 0) - std::clamp<std::int64_t>(rules.ageingSeconds, 1, longestAgeing);
}

bool Scheduler::IsReady(const SchedulingEntry& entry) const {
    return !entry.IsBlocked() && entry.scheduling.notBefore <= clock;
}

void Scheduler::SetRules(const Rules& newRules) {
    if (rules == newRules) {
        return;
    }
    rules = newRules;
    resources.SetCapacities(rules.resources);
    ready.Clear();
    for (auto& [id, entry] : waiting) {
        entry.key = KeyOf(entry);
        if (IsReady(entry)) {
            ready.Add(entry);
        }
    }
}

void Scheduler::File(const SchedulingEntry& entry) {
    if (!entry.IsBlocked() && entry.scheduling.notBefore > 0) {
        timed[entry.scheduling.notBefore].insert(&entry);
    }
    if (IsReady(entry)) {
        ready.Add(entry);
    }
}

void Scheduler::Unfile(const SchedulingEntry& entry) {
    ready.Remove(entry);
    const auto place = timed.find(entry.scheduling.notBefore);
    if (place != timed.end() && place->second.erase(&entry) > 0 && place->second.empty()) {
        timed.erase(place);
    }
}

void Scheduler::Wait(const WaitingJob& job) {
    Forget(job.id);
    SchedulingEntry& entry = waiting.emplace(job.id, EntryOf(job)).first->second;
    entry.key = KeyOf(entry);
    predecessors.Add(entry);
    File(entry);
}

void Scheduler::Forget(const std::wstring& id) {
    if (const auto started = running.find(id); started != running.end()) {
        resources.Return(started->second);
        running.erase(started);
    }
    if (const auto job = waiting.find(id); job != waiting.end()) {
        Unfile(job->second);
        predecessors.Remove(job->second);
        waiting.erase(job);
    }
}

void Scheduler::Start(const std::wstring& id) {
    const auto job = waiting.find(id);
    if (job == waiting.end()) {
        return;
    }
    const ResourcePool::Needs needs = job->second.scheduling.needs;
    Forget(id);
    resources.Take(needs);
    running.emplace(id, needs);
}

std::vector<Scheduler::Stranded> Scheduler::End(const std::wstring& id, bool hasSucceeded) {
    Forget(id);
    std::vector<Stranded> stranded;
    for (Wave wave = EndPredecessor(id, hasSucceeded), next; !wave.empty(); wave = std::exchange(next, {})) {
        std::sort(wave.begin(), wave.end(), [](const auto& left, const auto& right) {
            return std::tie(left.first, left.second.id) < std::tie(right.first, right.second.id);
        });
        for (auto& [order, job] : wave) {
            Wave followers = EndPredecessor(job.id, false);
            std::move(followers.begin(), followers.end(), std::back_inserter(next));
            stranded.push_back(std::move(job));
        }
    }
    return stranded;
}

/// Returns the jobs that the end of job `id` strands, which have left the scheduler.
Scheduler::Wave Scheduler::EndPredecessor(const std::wstring& id, bool hasSucceeded) {
    const PredecessorIndex::Effect effect = predecessors.End(id, hasSucceeded);
    for (const SchedulingEntry* entry : effect.released) {
        File(*entry);
    }
    Wave wave;
    for (const SchedulingEntry* entry : effect.stranded) {
        const Stranded job{entry->id, id, entry->scheduling.skipIfAfterFails};
        wave.emplace_back(entry->order, job);
        Forget(job.id);
    }
    return wave;
}

/// Jobs whose time comes between the old and the new time are added to those that are ready, or taken from them.
void Scheduler::MoveClock(std::int64_t now) {
    const auto last = timed.upper_bound(std::max(clock, now));
    for (auto jobs = timed.upper_bound(std::min(clock, now)); jobs != last; ++jobs) {
        for (const SchedulingEntry* entry : jobs->second) {
            now > clock ? ready.Add(*entry) : ready.Remove(*entry);
        }
    }
    clock = now;
}

std::optional<std::wstring> Scheduler::Next(std::int64_t now) {
    MoveClock(std::max<std::int64_t>(now, 0));
    const SchedulingEntry* first = ready.First(OverdueKey(now));
    return first == nullptr ? std::nullopt : std::optional(first->id);
}

std::optional<std::int64_t> Scheduler::NextTime() const {
    const auto next = timed.upper_bound(clock);
    return next == timed.end() ? std::nullopt : std::optional(next->first);
}

/// Null if the needs of the job fit into what is free for it.
const std::wstring* Scheduler::LackingResource(const SchedulingEntry& entry, std::int64_t now) const {
    if (const std::wstring* name = resources.NeverFitting(entry.scheduling.needs)) {
        return name;
    }
    const auto demand = resources.DemandOf(entry.scheduling.needs);
    const std::size_t* place = demand->FirstLack(ready.FreeFor(entry, OverdueKey(now)));
    return place == nullptr ? nullptr : &resources.NameOf(*place);
}

std::optional<Scheduler::WaitReason> Scheduler::WhyWaiting(const std::wstring& id, std::int64_t now) const {
    const auto job = waiting.find(id);
    if (job == waiting.end()) {
        return std::nullopt;
    }
    const SchedulingEntry& entry = job->second;
    if (entry.scheduling.hold) {
        return WaitReason{WaitReason::Kind::Hold, {}};
    }
    if (entry.scheduling.notBefore > std::max<std::int64_t>(now, 0)) {
        return WaitReason{WaitReason::Kind::Time, {}};
    }
    if (!entry.openPredecessors.empty()) {
        return WaitReason{WaitReason::Kind::Predecessor, entry.openPredecessors.begin()->first};
    }
    const std::wstring* resource = LackingResource(entry, now);
    return resource == nullptr ? WaitReason{WaitReason::Kind::Turn, {}}
                               : WaitReason{WaitReason::Kind::Resource, *resource};
}
