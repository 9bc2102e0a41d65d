#include "FrontEnd.h"

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "local_socket/support/Module.h"
#include "support/Deadline.h"
#include "text/Text.h"

#include <algorithm>
#include <stdexcept>

namespace {

constexpr const wchar_t* eventNames[] = {L"EnqueueJobsFinish",  L"CancelJobsFinish",       L"InitJobsResponse",
                                         L"DeleteJobsResponse", L"CheckJobStatusResponse", L"FetchScenariosResponse",
                                         L"TerminateResponse",  L"UpdateProgress",         L"RequestRefused"};

template <class Value>
Value Read(const std::wstring& content) {
    Value value;
    if (!ControllerCSWrapper::Deserialize(content, value)) {
        throw std::runtime_error("cannot read " + text::ToUtf8(content));
    }
    return value;
}

} // namespace

class FrontEnd::Listener final : public CallbackFunctor {
public:
    Listener(FrontEnd& frontEnd, std::wstring eventName) : owner(frontEnd), name(std::move(eventName)) {}

    bool operator()(const std::wstring& content) override {
        owner.Keep({name, content});
        return true;
    }

    const std::wstring& Name() const { return name; }

private:
    FrontEnd& owner;
    std::wstring name;
};

FrontEnd::FrontEnd(const std::wstring& endpointName)
    : transmitter(TransmitterFromModule(L"client:" + endpointName)),
      extension(ExtensionFromModule(L"client:" + endpointName)) {
    for (const wchar_t* const name : eventNames) {
        listeners.push_back(std::make_unique<Listener>(*this, name));
        transmitter->AddEventHandler(name, listeners.back().get());
    }
}

FrontEnd::~FrontEnd() {
    for (const auto& listener : listeners) {
        transmitter->AddEventHandler(listener->Name(), nullptr);
    }
}

std::wstring FrontEnd::Ask(const std::wstring& request, const std::wstring& content, const std::wstring& answer) {
    std::size_t position = CountEvents();
    if (!extension->PostEvent(request, content)) {
        throw std::runtime_error("no host takes " + text::ToUtf8(request));
    }
    return AwaitEvent(answer, position);
}

std::vector<JobIdInfo> FrontEnd::Enqueue(const EnqueueJobsInfo& request) {
    return Read<JobEnqueueResult>(
               Ask(L"EnqueueJobs", ControllerCSWrapper::Serialize(L"EnqueueJobs", request), L"EnqueueJobsFinish"))
        .jobIds;
}

std::vector<JobIdInfo> FrontEnd::Enqueue(const std::wstring& jobsFile) {
    std::vector<EnqueueJobsInfo> requests;
    if (!ControllerCSWrapper::ReadEnqueueJobsFile(jobsFile, requests)) {
        throw std::runtime_error("cannot read the jobs file");
    }
    std::vector<JobIdInfo> jobs;
    for (const EnqueueJobsInfo& request : requests) {
        const std::vector<JobIdInfo> made = Enqueue(request);
        jobs.insert(jobs.end(), made.begin(), made.end());
    }
    return jobs;
}

std::vector<JobListInfo> FrontEnd::Jobs() {
    return Read<std::vector<JobListInfo>>(
        Ask(L"InitJobsRequest", ControllerCSWrapper::Serialize(L"InitJobsRequest"), L"InitJobsResponse"));
}

void FrontEnd::Cancel(const std::wstring& jobId) {
    Ask(L"CancelJobs", ControllerCSWrapper::Serialize(L"CancelJobs", std::vector{jobId}), L"CancelJobsFinish");
}

std::vector<std::wstring> FrontEnd::Delete(const std::vector<std::wstring>& jobIds) {
    return Read<std::vector<std::wstring>>(
        Ask(L"DeleteJobsRequest", ControllerCSWrapper::Serialize(L"DeleteJobsRequest", jobIds), L"DeleteJobsResponse"));
}

void FrontEnd::Terminate() {
    Ask(L"TerminateRequest", ControllerCSWrapper::Serialize(L"TerminateRequest"), L"TerminateResponse");
}

JobStatusInfo FrontEnd::AwaitStatus(const std::wstring& jobId, JobStatus status) {
    for (std::size_t position = 0;;) {
        for (const auto& info : Read<std::vector<JobStatusInfo>>(AwaitEvent(L"UpdateProgress", position))) {
            if (info.id == jobId && info.status == status) {
                return info;
            }
        }
    }
}

void FrontEnd::Keep(Event event) {
    {
        const std::lock_guard lock(mutex);
        events.push_back(std::move(event));
    }
    changed.notify_all();
}

std::size_t FrontEnd::CountEvents() const {
    const std::lock_guard lock(mutex);
    return events.size();
}

std::vector<JobStatusInfo> FrontEnd::NextUpdates(std::chrono::milliseconds longest) {
    Lock lock(mutex);
    std::vector<JobStatusInfo> updates;
    while (FindEvent(lock, L"UpdateProgress", updates.empty() ? longest : std::chrono::milliseconds(0), toldUpdates)) {
        const auto told = Read<std::vector<JobStatusInfo>>(events[toldUpdates++].content);
        updates.insert(updates.end(), told.begin(), told.end());
    }
    return updates;
}

std::wstring FrontEnd::AwaitEvent(const std::wstring& name, std::size_t& from) {
    Lock lock(mutex);
    if (!FindEvent(lock, name, test_support::patience, from)) {
        throw std::runtime_error("waited in vain for " + text::ToUtf8(name));
    }
    return events[from++].content;
}

bool FrontEnd::FindEvent(Lock& lock, const std::wstring& name, std::chrono::milliseconds longest, std::size_t& from) {
    return changed.wait_for(lock, longest, [&] {
        while (from < events.size() && events[from].name != name) {
            ++from;
        }
        return from < events.size();
    });
}
