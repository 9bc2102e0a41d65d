#include "front_end/connection/HostSession.h"

#include <algorithm>

#include "CommonControllerLib/EventTransmitter.h"
#include "formats/Events.h"
#include "front_end/commands/CommandFailure.h"
#include "front_end/connection/ConnectionInterval.h"
#include "front_end/connection/LogHint.h"

namespace front_end {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

/// The last messages of a host may still be on their way to the inbox when the connection is found closed.
constexpr milliseconds lastMailTime{100};

} // namespace

HostSession::HostSession(CommandContext& commandContext, Start start)
    : context(commandContext), connection(ConnectToHost(commandContext, start)),
      requests(connection.transmitter, connection.extension) {
    inbox.SetEventTransmitter(&connection.transmitter);
    inbox.AddHandlers(connection.transmitter);
}

HostSession::~HostSession() {
    inbox.LeaveEventTransmitter(&connection.transmitter);
    inbox.RemoveHandlers(connection.transmitter);
}

std::vector<ListedJob> HostSession::FetchJobs() {
    return Await(requests.InitJobsRequest(), &Answers::jobs);
}

std::vector<ListedJob> HostSession::FetchJobs(const JobsQuery& query) {
    RequestJobs(query);
    return AwaitJobs();
}

void HostSession::RequestJobs(const JobsQuery& query) {
    RequireSent(requests.FetchJobs(query));
}

std::vector<ListedJob> HostSession::AwaitJobs() {
    return Await(true, &Answers::jobs);
}

JobEnqueueResult HostSession::Enqueue(const ScheduledRequest& request) {
    return Await(requests.Enqueue(request), &Answers::enqueued);
}

std::vector<JobStatusInfo> HostSession::Cancel(std::vector<std::wstring> ids) {
    return Await(requests.CancelJobs(ids), &Answers::cancelled);
}

std::vector<JobStatusInfo> HostSession::CancelAll() {
    return Await(requests.CancelAllJobs(), &Answers::cancelled);
}

std::vector<std::wstring> HostSession::Delete(std::vector<std::wstring> ids) {
    return Await(requests.DeleteJobsRequest(ids), &Answers::deleted);
}

std::vector<JobStatusInfo> HostSession::Edit(const JobsEdit& edit) {
    return Await(requests.EditJobs(edit), &Answers::edited);
}

QueueState HostSession::SetQueueState(const QueueState& state) {
    return Await(requests.SetQueueState(state), &Answers::queueState);
}

QueueState HostSession::FetchQueueState() {
    return Await(requests.FetchQueueState(), &Answers::queueState);
}

std::vector<ScenarioInfo> HostSession::FetchScenarios() {
    return Await(requests.FetchScenariosRequest(), &Answers::scenarios);
}

std::vector<std::wstring> HostSession::TakeScenarioProblems() {
    return inbox.Take(&Answers::scenarioProblems).value_or(std::vector<std::wstring>());
}

std::vector<ScenarioParameterSetInfo> HostSession::FetchParameterSets(const std::wstring& scenarioId) {
    return Await(requests.FetchScenarioParameterSetsRequest(scenarioId), &Answers::parameterSets);
}

void HostSession::StopHost() {
    const auto deadline = steady_clock::now() + context.timeout;
    Await(requests.TerminateRequest(), &Answers::terminated);
    if (connection.extension == nullptr) {
        throw CommandFailure{ExitCode::JobFailed, context.texts.Get(L"Errors/HostEndNotSeen")};
    }
    Wake wake = Wake::Readable;
    while (wake == Wake::Readable) {
        wake = WaitForMail(deadline);
    }
    if (wake == Wake::TimeIsOver) {
        throw CommandFailure{ExitCode::JobFailed, context.texts.Get(L"Errors/HostStillEnding")};
    }
}

std::vector<JobStatusInfo> HostSession::WaitForUpdates(std::optional<milliseconds> interval) {
    const auto deadline = interval ? Deadline(steady_clock::now() + *interval) : std::nullopt;
    return CollectUpdates(deadline, {context.console.ReaderGone(), nullptr});
}

std::vector<JobStatusInfo> HostSession::WaitForUpdates(milliseconds interval, void* wake) {
    return CollectUpdates(steady_clock::now() + interval, {nullptr, wake});
}

std::vector<JobStatusInfo> HostSession::CollectUpdates(Deadline deadline, const OtherEnds& ends) {
    for (;;) {
        std::vector<JobStatusInfo> updates = inbox.TakeUpdates();
        if (!updates.empty()) {
            return updates;
        }
        const Wake wake = WaitForMail(deadline, ends);
        if (wake == Wake::HostGone) {
            FailHostGone();
        }
        if (wake == Wake::TimeIsOver) {
            return inbox.TakeUpdates();
        }
    }
}

template <typename Answer>
Answer HostSession::Await(bool wasSent, std::optional<Answer> Answers::*answer) {
    RequireSent(wasSent);
    const auto deadline = steady_clock::now() + context.timeout;
    for (Wake wake = Wake::Readable;; wake = WaitForMail(deadline)) {
        if (std::optional<Answer> taken = inbox.Take(answer)) {
            return std::move(*taken);
        }
        if (const auto refusal = inbox.Take(&Answers::refusal)) {
            throw CommandFailure{ExitCode::JobFailed, *refusal};
        }
        if (wake == Wake::HostGone) {
            FailHostGone();
        }
        if (wake == Wake::TimeIsOver) {
            FailNoAnswer(context);
        }
    }
}

void HostSession::RequireSent(bool wasSent) const {
    if (!wasSent) {
        FailHostGone();
    }
}

HostSession::Wake HostSession::WaitForMail(Deadline deadline, const OtherEnds& ends) {
    for (;;) {
        const bool isConnected = connection.IsOpen();
        milliseconds longest = isConnected ? connectionInterval : lastMailTime;
        if (deadline) {
            const auto left = std::chrono::ceil<milliseconds>(*deadline - steady_clock::now());
            longest = std::clamp(left, milliseconds(0), longest);
        }
        if (const auto wake = WaitOnce(longest, ends)) {
            return *wake;
        }
        if (!isConnected) {
            return Wake::HostGone;
        }
        if (deadline && steady_clock::now() >= *deadline) {
            return Wake::TimeIsOver;
        }
    }
}

std::optional<HostSession::Wake> HostSession::WaitOnce(milliseconds longest, const OtherEnds& ends) {
    std::vector<void*> handles = {inbox.Readable(), context.stop, ends.readerGone, ends.wake};
    std::erase(handles, nullptr);
    const auto signalled = platform::WaitForAny(handles, longest);
    if (!signalled) {
        return std::nullopt;
    }
    if (handles[*signalled] == context.stop) {
        FailInterrupted();
    }
    if (handles[*signalled] == ends.readerGone) {
        throw CommandFailure{ExitCode::ReaderGone, {}};
    }
    if (handles[*signalled] == ends.wake) {
        return Wake::TimeIsOver;
    }
    inbox.Clear();
    return Wake::Readable;
}

/// A terminal shows "^C" at the cursor; the following output starts on a new line.
void HostSession::FailInterrupted() const {
    if (context.console.IsTerminal()) {
        context.console.Write(L"\n");
    }
    throw CommandFailure{ExitCode::Interrupted, {}};
}

void HostSession::FailHostGone() const {
    throw CommandFailure{ExitCode::NoHost, context.texts.Get(L"Errors/HostGone") + LogHint(context)};
}

} // namespace front_end
