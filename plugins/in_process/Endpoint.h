#pragma once

#include "event_delivery/DeliveryThread.h"
#include "event_delivery/HandlerTable.h"
#include "modules/EventTransmitter.h"

#include <string>

namespace in_process {

class Line;

/// One end of a line: its handlers, and the thread that they run on, one event at a time in the order of sending. What
/// an end sends is only queued at the other, so a handler may send, and nobody waits for anybody's handler.
class Endpoint : public EventTransmitter {
public:
    Endpoint(Line& ownLine, Peer ownNumber) : line(ownLine), number(ownNumber) {}
    Endpoint(const Endpoint&) = delete;
    Endpoint& operator=(const Endpoint&) = delete;

    void AddEventHandler(const std::wstring& eventName, CallbackFunctor* handler) final;
    Peer CurrentPeer() const final;

    /// What the other side knows this end by.
    Peer Number() const { return number; }
    /// Queues an event for this end's handler. An event without a handler is dropped when its turn comes, and a handler
    /// that throws has refused its event.
    void Receive(Peer sender, const std::wstring& eventName, const std::wstring& payload);
    /// Waits for a handler that runs, and calls none any more.
    void EndDeliveries() { deliveries.End(); }

protected:
    ~Endpoint() = default;

    Line& line;

private:
    const Peer number;
    event_delivery::HandlerTable handlers;
    // Last: it ends before what its work uses.
    event_delivery::DeliveryThread deliveries;
};

/// The engine's end: sends to every front end, or to one.
class EngineEnd final : public Endpoint {
public:
    using Endpoint::Endpoint;
    [[nodiscard]] bool SendEvent(const std::wstring& eventName, const std::wstring& payload) override;
    [[nodiscard]] bool SendEventTo(Peer peer, const std::wstring& eventName, const std::wstring& payload) override;
    /// It can always be reached.
    bool IsConnected() const override;
};

/// A front end's end: sends to the engine, once somebody has asked for the engine's end.
class FrontEnd final : public Endpoint {
public:
    using Endpoint::Endpoint;
    [[nodiscard]] bool SendEvent(const std::wstring& eventName, const std::wstring& payload) override;
    [[nodiscard]] bool SendEventTo(Peer peer, const std::wstring& eventName, const std::wstring& payload) override;
    bool IsConnected() const override;
};

} // namespace in_process
