#pragma once

#include "controller_host/HostEngine.h"
#include "controller_host/RequestQueue.h"
#include "formats/Events.h"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

/// Handles the requests of front ends, with one member function per request. Answers go to the requesting front end;
/// job changes are broadcast. Both are queued until `SendAll`, so that one flush of the job list serves all requests
/// of a turn.
class RequestHandler {
public:
    /// Both must outlive this object.
    RequestHandler(HostEngine& hostEngine, EngineTransmitter& eventTransmitter)
        : engine(hostEngine), transmitter(eventTransmitter) {}

    /// The names of all handled requests, including those that are always rejected.
    static std::vector<std::wstring> Names();

    /// Handles one request and queues its answer or rejection, and the acknowledgement after it.
    void Answer(const Request& request);

    /// Sends what is queued, and broadcasts changed jobs to all front ends; no broadcast if `changed` is empty.
    void Broadcast(const std::vector<JobStatusInfo>& changed);

    /// Flushes the job list if a request was answered, and sends what is queued, in order.
    void SendAll();

    /// True once a front end has requested the end of the host.
    bool EndWasRequested() const { return endRequested; }

private:
    using Operation = void (RequestHandler::*)(const Request&);
    struct NamedOperation {
        const wchar_t* name;
        Operation operation;
    };
    static const std::vector<NamedOperation>& Operations();

    void EnqueueJobs(const Request& request);
    void CancelJobs(const Request& request);
    void CancelAllJobs(const Request& request);
    void CheckJobStatus(const Request& request);
    void FetchScenarios(const Request& request);
    void FetchScenarioParameterSets(const Request& request);
    void InitJobs(const Request& request);
    void DeleteJobs(const Request& request);
    void EditJobs(const Request& request);
    void SetQueueState(const Request& request);
    void FetchQueueState(const Request& request);
    void FetchJobs(const Request& request);
    void FetchLocalizedStrings(const Request& request);
    void InitCulture(const Request& request);
    void Terminate(const Request& request);
    void RejectUnsupported(const Request& request);

    /// Rejects the request if its content cannot be parsed.
    template <typename Content>
    [[nodiscard]] bool Read(const Request& request, const events::Event<Content>& event, Content& content);
    template <typename Content>
    void Send(const Request& request, const events::Event<Content>& event,
              const std::type_identity_t<Content>& content);
    void Refuse(const Request& request, const std::wstring& why);

    void QueueBroadcast(const std::vector<JobStatusInfo>& changed);

    HostEngine& engine;
    EngineTransmitter& transmitter;
    bool endRequested = false;
    bool hasAnswers = false;
    std::vector<std::function<void()>> queued;
    /// The size of the queued payloads. Units: elements of the wide text.
    std::size_t queuedSize = 0;
};
