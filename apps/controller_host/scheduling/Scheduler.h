#pragma once

#include "controller_host/scheduling/PredecessorIndex.h"
#include "controller_host/scheduling/ReadyJobs.h"
#include "controller_host/scheduling/ResourcePool.h"
#include "controller_host/scheduling/SchedulingEntry.h"
#include "formats/Scheduling.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

/// Decides which waiting job starts next. Knows only what it is told: no engine, no files, no clock.
///
/// A waiting job may start if it is not on hold, its time has come, all its predecessors have ended as required, and
/// its needs fit into what is free. Of those that may start, the one with the smallest key starts: the time at which it
/// was queued, minus its priority times `ageingSeconds`. Jobs of one key start in list order. A higher priority
/// therefore starts first, and each `ageingSeconds` of waiting outweighs one step of priority.
///
/// A job that cannot start does not block those behind it, with one exception: a job that waits only for resources for
/// longer than `ageingSeconds` after its key sets its needs aside, so that the jobs behind it start only with what
/// remains, and it starts as soon as enough running jobs have ended. Of several jobs with equal needs only the first
/// one does so; a job whose needs never fit does not.
///
/// A job that waits for itself, or for a job that waits for it, waits until it is edited or ended. Ended jobs are not
/// remembered: a predecessor that ended before `Wait` is reported by `End` afterwards. Not thread-safe.
class Scheduler {
public:
    Scheduler() = default;
    Scheduler(const Scheduler&) = delete;
    Scheduler& operator=(const Scheduler&) = delete;

    /// What is scarce, by name, and how fast waiting jobs gain priority.
    struct Rules {
        std::map<std::wstring, std::int64_t> resources;
        /// Taken as 1 if smaller.
        std::int64_t ageingSeconds = 3600;

        bool operator==(const Rules&) const = default;
    };
    struct WaitingJob {
        std::wstring id;
        /// Position in the job list.
        std::uint64_t order = 0;
        /// Units: seconds since 1970-01-01 UTC.
        std::int64_t queuedTime = 0;
        Scheduling scheduling;
    };
    /// A waiting job that can never start because of a predecessor.
    struct Stranded {
        std::wstring id;
        /// It ended without success, or is stranded itself.
        std::wstring predecessor;
        /// `Scheduling::skipIfAfterFails` of the job.
        bool isSkipped = false;

        bool operator==(const Stranded&) const = default;
    };
    /// Why a job does not start now. If there are several reasons, the first one in the order hold, time, predecessor,
    /// resource is given; a job that lacks nothing waits for its turn.
    struct WaitReason {
        enum class Kind { Turn, Hold, Time, Predecessor, Resource } kind = Kind::Turn;
        /// The id of the predecessor or the name of the resource.
        std::wstring name;

        bool operator==(const WaitReason&) const = default;
    };

    /// Running jobs keep what they have taken, even if that is now more than there is.
    void SetRules(const Rules& newRules);
    /// Takes a job that is new, edited or queued again; replaces what is known of this id. Needs that are not positive
    /// count as none.
    void Wait(const WaitingJob& job);
    /// A waiting job has been started: it takes its needs, whether they fit or not. Unknown ids have no effect.
    void Start(const std::wstring& id);
    /// A job has ended or left the list; what it took at its start is free. Returns the waiting jobs that can never
    /// start now, in list order, followed by those that wait for them, and so on. These count as ended.
    [[nodiscard]] std::vector<Stranded> End(const std::wstring& id, bool hasSucceeded);
    /// The job to start next, which then must be reported by `Start`; nothing if none may start. The time may go back.
    std::optional<std::wstring> Next(std::int64_t now);
    /// The earliest `notBefore`, after the time of the last `Next`, of the jobs that wait neither for a release nor for
    /// a predecessor; nothing if there is none.
    std::optional<std::int64_t> NextTime() const;
    /// Nothing if the job is not waiting. What is set aside is as of the last `Next`.
    std::optional<WaitReason> WhyWaiting(const std::wstring& id, std::int64_t now) const;
    /// The ids for which a waiting job waits, sorted.
    std::vector<std::wstring> Predecessors() const { return predecessors.Ids(); }

private:
    /// Stranded jobs with their positions in the list.
    using Wave = std::vector<std::pair<std::uint64_t, Stranded>>;

    std::int64_t KeyOf(const SchedulingEntry& entry) const;
    std::int64_t OverdueKey(std::int64_t now) const;
    bool IsReady(const SchedulingEntry& entry) const;
    void File(const SchedulingEntry& entry);
    void Unfile(const SchedulingEntry& entry);
    void Forget(const std::wstring& id);
    void MoveClock(std::int64_t now);
    Wave EndPredecessor(const std::wstring& id, bool hasSucceeded);
    const std::wstring* LackingResource(const SchedulingEntry& entry, std::int64_t now) const;

    Rules rules;
    std::unordered_map<std::wstring, SchedulingEntry> waiting;
    /// What each running job took at its start.
    std::unordered_map<std::wstring, ResourcePool::Needs> running;
    PredecessorIndex predecessors;
    ResourcePool resources;
    ReadyJobs ready{resources};
    /// The jobs with a `notBefore`, by that time, that are neither on hold nor wait for a predecessor. Those up to
    /// `clock` are also in `ready`.
    std::map<std::int64_t, std::unordered_set<const SchedulingEntry*>> timed;
    /// The time of the last `Next`.
    std::int64_t clock = 0;
};
