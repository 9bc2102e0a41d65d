#pragma once

#include "transport/in_process/Endpoint.h"

#include <chrono>
#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace in_process {

/// Connects one server (the engine) and any number of clients (front ends) in one process. Endpoints are created on
/// first use and live as long as the bus. Threads: any; no handler runs under the lock.
class Bus {
public:
    using Peer = EventTransmitterExtension::Peer;

    /// `acknowledgementTimeout`: how long a client waits until the server has handled an event.
    explicit Bus(std::chrono::milliseconds acknowledgementTimeout = event_delivery::acknowledgementTimeout)
        : timeout(acknowledgementTimeout) {}
    Bus(const Bus&) = delete;
    Bus& operator=(const Bus&) = delete;
    /// Waits for running handlers, which may still send; drops queued events. No other thread may use the bus or its
    /// endpoints any more.
    ~Bus();

    /// Returns the endpoint, created if necessary. Throws std::system_error if the system has no thread left for it.
    Endpoint* GetServer();
    Endpoint* GetClient(const std::wstring& name);

    std::chrono::milliseconds Timeout() const { return timeout; }

    /// The server's number; 0 if the server has not been created yet.
    Peer ServerNumber() const;

    /// Returns false if there is no server. `give` acknowledges the event; empty if the sender does not wait.
    [[nodiscard]] bool SendToServer(Peer sender, const std::wstring& eventName, const std::wstring& payload,
                                    Endpoint::Give give);
    void SendToClients(Peer sender, const std::wstring& eventName, const std::wstring& payload);
    /// Returns false if no client has this number.
    [[nodiscard]] bool SendToClient(Peer sender, Peer receiver, const std::wstring& eventName,
                                    const std::wstring& payload);

private:
    const std::chrono::milliseconds timeout;
    mutable std::mutex mutex;
    std::unique_ptr<Server> server;
    std::map<std::wstring, std::unique_ptr<Client>> clients;
};

} // namespace in_process
