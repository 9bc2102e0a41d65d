#pragma once

#include "front_end/commands/CommandContext.h"
#include "front_end/connection/HostConnection.h"
#include "front_end/connection/RequestProxy.h"
#include "front_end/connection/ResponseInbox.h"

#include <optional>

namespace front_end {

/// The requests of a command to the host, sent one at a time; each waits for its answer. Throws `CommandFailure` if
/// there is no host, or if it disconnects, does not answer in time or rejects the request, and when the user interrupts
/// the wait.
class HostSession {
public:
    HostSession(CommandContext& commandContext, Start start);
    ~HostSession();
    HostSession(const HostSession&) = delete;
    HostSession& operator=(const HostSession&) = delete;

    /// False once the host has disconnected.
    bool IsOpen() const { return connection.IsOpen(); }

    std::vector<ListedJob> FetchJobs();
    std::vector<ListedJob> FetchJobs(const JobsQuery& query);
    /// `FetchJobs` in two steps: the host and this process's transmitter work on the answer meanwhile.
    void RequestJobs(const JobsQuery& query);
    std::vector<ListedJob> AwaitJobs();
    JobEnqueueResult Enqueue(const ScheduledRequest& request);
    std::vector<JobStatusInfo> Cancel(std::vector<std::wstring> ids);
    std::vector<JobStatusInfo> CancelAll();
    /// The ids of the jobs that were deleted.
    std::vector<std::wstring> Delete(std::vector<std::wstring> ids);
    /// Reports of the jobs that were changed.
    std::vector<JobStatusInfo> Edit(const JobsEdit& edit);
    /// The state that the queue then has.
    QueueState SetQueueState(const QueueState& state);
    QueueState FetchQueueState();
    std::vector<ScenarioInfo> FetchScenarios();
    /// The problems that the host found when it was last asked for the scenarios.
    std::vector<std::wstring> TakeScenarioProblems();
    std::vector<ScenarioParameterSetInfo> FetchParameterSets(const std::wstring& scenarioId);
    /// Returns when the host has ended.
    void StopHost();

    /// Waits until jobs have changed and returns the changes; returns none if `interval` expires first. Fails if
    /// standard output has lost its reader.
    std::vector<JobStatusInfo> WaitForUpdates(std::optional<std::chrono::milliseconds> interval = std::nullopt);
    /// Same, and returns none as soon as `wake` is signalled.
    std::vector<JobStatusInfo> WaitForUpdates(std::chrono::milliseconds interval, void* wake);

private:
    enum class Wake { Readable, TimeIsOver, HostGone };
    /// What ends a wait beside mail and time; null: nothing does.
    struct OtherEnds {
        /// Ends it with a failure.
        void* readerGone = nullptr;
        /// Counts as the end of the time.
        void* wake = nullptr;
    };
    using Deadline = std::optional<std::chrono::steady_clock::time_point>;

    template <typename Answer>
    Answer Await(bool wasSent, std::optional<Answer> Answers::*answer);
    void RequireSent(bool wasSent) const;
    std::vector<JobStatusInfo> CollectUpdates(Deadline deadline, const OtherEnds& ends);
    Wake WaitForMail(Deadline deadline, const OtherEnds& ends = {nullptr, nullptr});
    /// Nothing if the time is over.
    std::optional<Wake> WaitOnce(std::chrono::milliseconds longest, const OtherEnds& ends);
    [[noreturn]] void FailInterrupted() const;
    [[noreturn]] void FailHostGone() const;

    CommandContext& context;
    const HostConnection connection;
    ResponseInbox inbox;
    RequestProxy requests;
};

} // namespace front_end
