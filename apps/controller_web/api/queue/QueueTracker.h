#pragma once

#include "controller_web/api/queue/EventStream.h"
#include "controller_web/api/queue/JobEndings.h"
#include "controller_web/api/queue/JobStore.h"
#include "controller_web/api/queue/QueueStatus.h"
#include "front_end/connection/HostSession.h"

#include <chrono>
#include <cstdint>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <vector>

namespace web {

/// Keeps the jobs and the state of the queue as the host has them, and tells the event stream. What is not `const` is
/// for the thread of the host's connection, and throws like `HostSession`; the rest is for any thread.
class QueueTracker {
public:
    /// The shortest time between two events about jobs.
    static constexpr std::chrono::milliseconds interval{250};
    /// With more changes at once, clients fetch everything anew.
    static constexpr std::size_t mostChanges = 2000;

    explicit QueueTracker(bool isReadOnly) { status.isReadOnly = isReadOnly; }

    /// A connection begins: takes the whole list.
    void Begin(front_end::HostSession& session, const front_end::HostState& host);
    /// The connection has ended. The jobs stay as they were last known.
    void End(const front_end::HostState& host);
    void Apply(front_end::HostSession& session, const std::vector<JobStatusInfo>& updates);
    /// Takes these jobs anew, and removes those that the host no longer lists.
    void Refresh(front_end::HostSession& session, const std::vector<std::wstring>& ids);
    void SetPaused(bool isPaused);
    /// Sends the changes to the clients, unless the last ones were sent less than `interval` ago.
    void PublishIfDue(front_end::HostSession& session);
    /// How long to wait for further changes.
    std::chrono::milliseconds UntilDue() const;

    /// True if the jobs of a host were known at some time.
    bool IsKnown() const;
    QueueStatus Status() const;
    const JobStore& Jobs() const { return jobs; }
    JobEndings& Endings() { return endings; }
    /// How many jobs have ended since the first connection, by status.
    std::map<JobStatus, std::uint64_t> Ended() const;
    EventStream& Events() { return events; }
    const EventStream& Events() const { return events; }

private:
    void Take(ListedJob job);
    void CountEnd(const Row& former, JobStatus current);
    void Remove(const std::wstring& id);
    void TakeReport(const JobStatusInfo& report);
    void ReadMessages();
    void RefreshWaiting(front_end::HostSession& session);
    void Publish();
    void PollQueueState(front_end::HostSession& session);

    JobStore jobs;
    JobEndings endings;
    EventStream events;
    mutable std::mutex mutex;
    QueueStatus status;
    bool isKnown = false;
    std::map<JobStatus, std::uint64_t> ended;

    // For the connection's thread.
    std::set<std::wstring> changed;
    std::set<std::wstring> removed;
    /// A job has ended or started: others may wait for another reason now.
    bool mayUnblock = false;
    bool hasStatusChanged = false;
    std::chrono::steady_clock::time_point lastPublication;
    std::chrono::steady_clock::time_point lastPoll;
};

} // namespace web
