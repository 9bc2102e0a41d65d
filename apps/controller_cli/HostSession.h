#pragma once

#include "controller_cli/CommandContext.h"
#include "controller_cli/HostConnection.h"
#include "controller_cli/RequestProxy.h"
#include "controller_cli/ResponseInbox.h"

#include <optional>

namespace controller_cli {

/// A command's conversation with the host. Requests are sent one at a time, each followed by the wait for its answer.
/// Throws `CommandFailure` where there is no host, it goes away, does not answer in time, refuses the request, or the
/// person at the terminal does not want to wait any longer.
class HostSession {
public:
    HostSession(CommandContext& commandContext, Start start);
    ~HostSession();
    HostSession(const HostSession&) = delete;
    HostSession& operator=(const HostSession&) = delete;

    std::vector<JobListInfo> FetchJobs();
    JobEnqueueResult Enqueue(EnqueueJobsInfo& info);
    std::vector<JobStatusInfo> Cancel(std::vector<std::wstring> ids);
    std::vector<JobStatusInfo> CancelAll();
    /// The ids of the jobs that were deleted.
    std::vector<std::wstring> Delete(std::vector<std::wstring> ids);
    std::vector<ScenarioInfo> FetchScenarios();
    /// What the host found broken when it was asked for the scenarios last.
    std::vector<std::wstring> TakeScenarioProblems();
    std::vector<ScenarioParameterSetInfo> FetchParameterSets(const std::wstring& scenarioId);
    /// Returns when the host has gone.
    void StopHost();

    /// Waits until jobs have changed and returns the changes, or, when `interval` is over before, none. Fails when
    /// nobody reads the command's results any more.
    std::vector<JobStatusInfo> WaitForUpdates(std::optional<std::chrono::milliseconds> interval = std::nullopt);

private:
    enum class Wake { Arrived, TimeIsOver, HostGone };
    using Deadline = std::optional<std::chrono::steady_clock::time_point>;

    template <typename Answer>
    Answer Await(bool wasSent, std::optional<Answer> Answers::*answer);
    /// `readerGone` ends the wait with a failure; null: nothing does.
    Wake WaitForMail(Deadline deadline, void* readerGone = nullptr);
    [[nodiscard]] bool WaitOnce(std::chrono::milliseconds longest, void* readerGone);
    [[noreturn]] void FailInterrupted() const;
    [[noreturn]] void FailHostGone() const;

    CommandContext& context;
    const HostConnection connection;
    ResponseInbox inbox;
    RequestProxy requests;
};

} // namespace controller_cli
