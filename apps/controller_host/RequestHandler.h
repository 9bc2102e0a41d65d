#pragma once

#include "controller_host/HostEngine.h"
#include "controller_host/RequestQueue.h"
#include "formats/Events.h"

#include <string>
#include <vector>

/// Answers the requests of front ends, with one member function per request. Answers go to the requesting front end;
/// job changes are broadcast.
class RequestHandler {
public:
    /// Both must outlive this object.
    RequestHandler(HostEngine& hostEngine, EngineTransmitter& eventTransmitter)
        : engine(hostEngine), transmitter(eventTransmitter) {}

    /// The names of all handled requests, including those that are always rejected.
    static std::vector<std::wstring> Names();

    /// Sends one answer or rejection, and acknowledges the request after it.
    void Answer(const Request& request);

    /// Broadcasts changed jobs to all front ends. Sends nothing if `changed` is empty.
    void Broadcast(const std::vector<JobStatusInfo>& changed);

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
    void FetchLocalizedStrings(const Request& request);
    void InitCulture(const Request& request);
    void Terminate(const Request& request);
    void RefuseForWantOfDialogs(const Request& request);

    /// Rejects the request if its content cannot be parsed.
    template <typename Content>
    [[nodiscard]] bool Read(const Request& request, const events::Event<Content>& event, Content& content);
    template <typename Content>
    void Send(const Request& request, const events::Event<Content>& event,
              const std::type_identity_t<Content>& content);
    void Refuse(const Request& request, const std::wstring& why);

    HostEngine& engine;
    EngineTransmitter& transmitter;
    bool endRequested = false;
};
