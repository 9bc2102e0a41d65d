#pragma once

#include "CommonControllerLib/EventTransmitter.h"
#include "controller_plugins/EventTransmitterExtension.h"
#include "transport/event_delivery/EventDelivery.h"

#include <string>

namespace in_process {

class Bus;

/// One end of a line: its handlers, and the thread that they run on, one event at a time in the order of sending. What
/// an end sends is only queued at the other, so a handler may send; a front end waits until its event is acknowledged.
class Endpoint : public EventTransmitter, public EventTransmitterExtension {
public:
    using Give = event_delivery::Acknowledgements::Give;

    Endpoint(Bus& ownBus, Peer ownNumber, event_delivery::EventDelivery::Begin begin)
        : bus(ownBus), number(ownNumber), deliveries(begin) {}
    Endpoint(const Endpoint&) = delete;
    Endpoint& operator=(const Endpoint&) = delete;

    void AddEventHandler(const std::wstring& eventName, CallbackFunctor* handler) final;
    /// There is nothing to connect.
    bool Connect(std::wstring& problem) final;
    Peer CurrentPeer() const final;
    Acknowledgement DeferAcknowledgement() final;
    void Acknowledge(Acknowledgement acknowledgement) final;
    void PauseDelivery() final;
    void ResumeDelivery() final;

    /// What the other side knows this end by.
    Peer Number() const { return number; }
    /// Queues an event for this end's handler. An event without a handler is dropped when its turn comes, and a handler
    /// that throws has refused its event. `give` acknowledges it in any case.
    void Receive(Peer sender, const std::wstring& eventName, const std::wstring& payload, Give give);
    /// Waits for a handler that runs, and calls none any more.
    void EndDeliveries() { deliveries.End(); }

protected:
    ~Endpoint() = default;

    void CallHandler(Peer sender, const std::wstring& eventName, const std::wstring& payload);

    Bus& bus;

private:
    const Peer number;

protected:
    // Last: it ends before what its work uses.
    event_delivery::EventDelivery deliveries;
};

/// The engine's end: sends to every front end, or to one.
class Server final : public Endpoint {
public:
    Server(Bus& ownBus, Peer ownNumber)
        : Endpoint(ownBus, ownNumber, event_delivery::EventDelivery::Begin::WithFirstHandler) {}
    [[nodiscard]] bool SendEvent(const std::wstring& eventName, const std::wstring& payload) override;
    [[nodiscard]] bool SendEventTo(Peer peer, const std::wstring& eventName, const std::wstring& payload) override;
    [[nodiscard]] bool PostEvent(const std::wstring& eventName, const std::wstring& payload) override;
    /// It can always be reached.
    bool IsConnected() const override;
};

/// A front end's end: sends to the engine, once somebody has asked for the engine's end.
class Client final : public Endpoint {
public:
    Client(Bus& ownBus, Peer ownNumber) : Endpoint(ownBus, ownNumber, event_delivery::EventDelivery::Begin::AtOnce) {}
    [[nodiscard]] bool SendEvent(const std::wstring& eventName, const std::wstring& payload) override;
    [[nodiscard]] bool SendEventTo(Peer peer, const std::wstring& eventName, const std::wstring& payload) override;
    [[nodiscard]] bool PostEvent(const std::wstring& eventName, const std::wstring& payload) override;
    bool IsConnected() const override;
};

} // namespace in_process
