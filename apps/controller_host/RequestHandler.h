#pragma once

#include "controller_host/HostEngine.h"
#include "controller_host/RequestQueue.h"
#include "formats/Events.h"

#include <string>
#include <vector>

/// Answers the requests of front ends: one member function a request. Answers go to the front end that asked; changes
/// of jobs go to all.
class RequestHandler {
public:
    /// Both outlive the object.
    RequestHandler(HostEngine& hostEngine, EngineTransmitter& eventTransmitter)
        : engine(hostEngine), transmitter(eventTransmitter) {}

    /// The names of all requests that are answered, refusals included.
    static std::vector<std::wstring> Names();

    /// Sends one answer, or a refusal, and acknowledges the request behind it.
    void Answer(const Request& request);

    /// Tells every front end of changed jobs; nothing changed is nothing to tell.
    void Broadcast(const std::vector<JobStatusInfo>& changed);

    /// True once a front end has asked the host to end.
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

    /// Refuses the request when its content cannot be read.
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
