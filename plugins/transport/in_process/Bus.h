#pragma once

#include "transport/in_process/Endpoint.h"

#include <chrono>
#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace in_process {

/// Joins the ends of one line: one engine, any number of front ends. Ends are made when first asked for and stay. Any
/// thread; no handler runs under the lock.
class Bus {
public:
    using Peer = EventTransmitterExtension::Peer;

    /// `acknowledgementTimeout`: how long a front end waits until the engine has handled an event.
    explicit Bus(std::chrono::milliseconds acknowledgementTimeout = event_delivery::acknowledgementTimeout)
        : timeout(acknowledgementTimeout) {}
    Bus(const Bus&) = delete;
    Bus& operator=(const Bus&) = delete;
    /// Waits for the handlers that run, which may still send; what is queued is dropped. Nobody else uses the line or
    /// its ends any more.
    ~Bus();

    /// Make the end where it is missing; std::system_error when the system has no thread left for it.
    Endpoint* GetServer();
    Endpoint* GetClient(const std::wstring& name);

    std::chrono::milliseconds Timeout() const { return timeout; }

    /// The engine's number; 0 while nobody has asked for its end.
    Peer ServerNumber() const;

    /// False while there is no engine. `give` acknowledges the event; empty where nobody waits.
    [[nodiscard]] bool SendToServer(Peer sender, const std::wstring& eventName, const std::wstring& payload,
                                    Endpoint::Give give);
    void SendToClients(Peer sender, const std::wstring& eventName, const std::wstring& payload);
    /// False when no front end has this number.
    [[nodiscard]] bool SendToClient(Peer sender, Peer receiver, const std::wstring& eventName,
                                    const std::wstring& payload);

private:
    const std::chrono::milliseconds timeout;
    mutable std::mutex mutex;
    std::unique_ptr<Server> server;
    std::map<std::wstring, std::unique_ptr<Client>> clients;
};

} // namespace in_process
