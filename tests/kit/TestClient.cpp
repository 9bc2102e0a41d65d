#include "kit/TestClient.h"

#include "CommonControllerLib/CallbackFunctor.h"
#include "formats/Messages.h"
#include "kit/Deadline.h"
#include "kit/TestProcess.h"
#include "kit/local_socket/Module.h"

#include <algorithm>
#include <utility>

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr const wchar_t* changes = L"UpdateProgress";
constexpr const wchar_t* refusal = L"RequestRefused";
constexpr const wchar_t* eventNames[] = {L"EnqueueJobsFinish",
                                         L"CancelJobsFinish",
                                         L"InitJobsResponse",
                                         L"DeleteJobsResponse",
                                         L"CheckJobStatusResponse",
                                         L"EditJobsFinish",
                                         L"FetchScenariosResponse",
                                         L"TerminateResponse",
                                         refusal,
                                         changes};

} // namespace

class TestClient::Listener final : public CallbackFunctor {
public:
    Listener(TestClient& client, std::wstring eventName) : owner(client), name(std::move(eventName)) {}

    bool operator()(const std::wstring& content) override {
        owner.Keep({owner.extension->CurrentPeer(), name, content});
        return true;
    }

    const std::wstring& Name() const { return name; }

private:
    TestClient& owner;
    std::wstring name;
};

TestClient::TestClient(const std::wstring& endpointName, Told tell)
    : transmitter(TransmitterFromModule(L"client:" + endpointName)),
      extension(ExtensionFromModule(L"client:" + endpointName)), tellChanges(std::move(tell)) {
    for (const wchar_t* const name : eventNames) {
        listeners.push_back(std::make_unique<Listener>(*this, name));
        transmitter->AddEventHandler(name, listeners.back().get());
    }
}

TestClient::~TestClient() {
    for (const auto& listener : listeners) {
        transmitter->AddEventHandler(listener->Name(), nullptr);
    }
}

std::wstring TestClient::Ask(const std::wstring& request, const std::wstring& content, const std::wstring& answer) {
    auto answered = TryAsk(request, content, answer);
    return answered ? std::move(*answered) : throw std::runtime_error("the host died at " + text::ToUtf8(request));
}

JobEnqueueResult TestClient::Enqueue(const ScheduledRequest& request) {
    return Read<JobEnqueueResult>(
        Ask(L"EnqueueJobs", messages::Serialize(events::enqueueJobs, request), L"EnqueueJobsFinish"));
}

std::vector<JobIdInfo> TestClient::Enqueue(const std::wstring& jobsFile) {
    std::vector<EnqueueJobsInfo> requests;
    if (!ControllerCSWrapper::ReadEnqueueJobsFile(jobsFile, requests)) {
        throw std::runtime_error("cannot read the jobs file");
    }
    std::vector<JobIdInfo> jobs;
    for (const EnqueueJobsInfo& request : requests) {
        const std::vector<JobIdInfo> made = Enqueue(request).jobIds;
        jobs.insert(jobs.end(), made.begin(), made.end());
    }
    return jobs;
}

std::vector<JobListInfo> TestClient::Jobs() {
    return Read<std::vector<JobListInfo>>(
        Ask(L"InitJobsRequest", ControllerCSWrapper::Serialize(L"InitJobsRequest"), L"InitJobsResponse"));
}

void TestClient::Edit(const JobsEdit& edit) {
    Ask(L"EditJobsRequest", messages::Serialize(events::editJobsRequest, edit), L"EditJobsFinish");
}

void TestClient::Cancel(const std::wstring& jobId) {
    Ask(L"CancelJobs", ControllerCSWrapper::Serialize(L"CancelJobs", std::vector{jobId}), L"CancelJobsFinish");
}

std::vector<std::wstring> TestClient::Delete(const std::vector<std::wstring>& jobIds) {
    return Read<std::vector<std::wstring>>(
        Ask(L"DeleteJobsRequest", ControllerCSWrapper::Serialize(L"DeleteJobsRequest", jobIds), L"DeleteJobsResponse"));
}

void TestClient::Terminate() {
    Ask(L"TerminateRequest", ControllerCSWrapper::Serialize(L"TerminateRequest"), L"TerminateResponse");
}

JobStatusInfo TestClient::AwaitStatus(const std::wstring& jobId, JobStatus status) {
    HearKept();
    for (std::size_t next = 0;; ++next) {
        if (next == told.size() && !NextNamed(changes)) {
            throw std::runtime_error("the host died before job " + text::ToUtf8(jobId) + " got there");
        }
        if (next < told.size() && told[next].id == jobId && told[next].status == status) {
            return told[next];
        }
    }
}

std::vector<JobStatusInfo> TestClient::NextUpdates(milliseconds longest) {
    const Time limit = steady_clock::now() + longest;
    HearKept();
    while (handedOut == told.size() && AwaitArrival(limit) == Arrival::Event) {
        HearKept();
    }
    const auto first = told.begin() + static_cast<std::ptrdiff_t>(std::exchange(handedOut, told.size()));
    return {first, told.end()};
}

bool TestClient::Meet(void* process) {
    host = process;
    hostPeer = 0;
    const std::wstring greeting = L"meeting " + std::to_wstring(++meetings);
    const std::wstring answer = L"CheckJobStatusResponse";
    Send(L"CheckJobStatusRequest", ControllerCSWrapper::Serialize(L"CheckJobStatusRequest", std::vector{greeting}));
    const Time limit = steady_clock::now() + test_support::timeout;
    while (const auto event = Next(answer, limit)) {
        // Only the host that was asked returns this text.
        if (event->name == answer && event->content.find(greeting) != std::wstring::npos) {
            hostPeer = event->peer;
            return true;
        }
    }
    return false;
}

void TestClient::Send(const std::wstring& request, const std::wstring& content) {
    // A dying host closes its connections before its end can be seen.
    if (!extension->PostEvent(request, content) && !(host && test_support::WaitUntilSignalled(host))) {
        throw std::runtime_error("no host takes " + text::ToUtf8(request));
    }
}

/// Earlier events are not its response.
std::optional<std::wstring> TestClient::TryAsk(const std::wstring& request, const std::wstring& content,
                                               const std::wstring& answer) {
    HearKept();
    Send(request, content);
    auto event = NextNamed(answer);
    return event ? std::optional(std::move(event->content)) : std::nullopt;
}

bool TestClient::AwaitChanges(const std::function<bool()>& isReached) {
    while (!isReached()) {
        if (!NextNamed(changes)) {
            return false;
        }
    }
    return true;
}

void TestClient::HearLastWords() {
    while (host != nullptr && NextNamed(changes)) {
    }
    host = nullptr;
}

void TestClient::Keep(Event event) {
    const std::lock_guard lock(mutex);
    events.push_back(std::move(event));
    arrived.Raise();
}

std::optional<TestClient::Event> TestClient::TakeKept() {
    const std::lock_guard lock(mutex);
    while (!events.empty()) {
        Event event = std::move(events.front());
        events.pop_front();
        if (hostPeer == 0 || event.peer == hostPeer) {
            return event;
        }
    }
    arrived.Clear();
    return std::nullopt;
}

TestClient::Arrival TestClient::AwaitArrival(Time limit) {
    const auto left = std::max(std::chrono::ceil<milliseconds>(limit - steady_clock::now()), milliseconds(0));
    std::vector<void*> handles{arrived.Handle(), host};
    std::erase(handles, nullptr);
    const auto signalled = platform::WaitForAny(handles, left);
    if (!signalled) {
        return Arrival::TimeIsOver;
    }
    // The end of a host may be known before its last events arrive.
    while (*signalled == 1 && extension->IsConnected() && !platform::WaitForAny({arrived.Handle()}, milliseconds(1))) {
    }
    const bool hasArrived = *signalled == 0 || platform::WaitForAny({arrived.Handle()}, milliseconds(0));
    return hasArrived ? Arrival::Event : Arrival::HostDied;
}

std::optional<TestClient::Event> TestClient::Next(const std::wstring& awaited, Time limit) {
    for (;;) {
        if (auto event = TakeKept()) {
            return event;
        }
        const Arrival arrival = AwaitArrival(limit);
        if (arrival == Arrival::TimeIsOver) {
            throw std::runtime_error("waited in vain for " + text::ToUtf8(awaited));
        }
        if (arrival == Arrival::HostDied) {
            return std::nullopt;
        }
    }
}

std::optional<TestClient::Event> TestClient::NextNamed(const std::wstring& name) {
    const Time limit = steady_clock::now() + test_support::timeout;
    while (auto event = Next(name, limit)) {
        Hear(*event);
        if (event->name == name) {
            return event;
        }
        if (event->name == refusal) {
            throw std::runtime_error(text::ToUtf8(event->content));
        }
    }
    return std::nullopt;
}

void TestClient::Hear(const Event& event) {
    if (event.name == changes) {
        const auto changed = Read<std::vector<JobStatusInfo>>(event.content);
        told.insert(told.end(), changed.begin(), changed.end());
        if (tellChanges) {
            tellChanges(changed);
        }
    }
}

void TestClient::HearKept() {
    while (const auto event = TakeKept()) {
        Hear(*event);
    }
}
