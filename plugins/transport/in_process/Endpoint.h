#pragma once

#include "CommonControllerLib/EventTransmitter.h"
#include "controller_plugins/EventTransmitterExtension.h"
#include "transport/event_delivery/EventDelivery.h"

#include <string>

namespace in_process {

class Bus;

/// One endpoint of a bus: its handlers and the thread that runs them, one event at a time in sending order. Sending
/// only queues the event at the receiver, so handlers may send. A client waits until its event is acknowledged.
class Endpoint : public EventTransmitter, public EventTransmitterExtension {
public:
    using Give = event_delivery::Acknowledgements::Give;

    Endpoint(Bus& ownBus, Peer ownNumber, event_delivery::EventDelivery::Begin begin)
        : bus(ownBus), number(ownNumber), deliveries(begin) {}
    Endpoint(const Endpoint&) = delete;
    Endpoint& operator=(const Endpoint&) = delete;

    void AddEventHandler(const std::wstring& eventName, CallbackFunctor* handler) final;
    /// Same as `IsConnected`: a bus needs no connection.
    [[nodiscard]] bool Connect(std::wstring& problem) final;
    Peer CurrentPeer() const final;
    Acknowledgement DeferAcknowledgement() final;
    void Acknowledge(Acknowledgement acknowledgement) final;
    void PauseDelivery() final;
    void ResumeDelivery() final;

    /// The number by which other endpoints address this one.
    Peer Number() const { return number; }
    /// Queues an event for this endpoint's handler. An event without a handler is dropped when its turn comes. A
    /// handler that throws has rejected its event. `give` acknowledges the event in all cases.
    void Receive(Peer sender, const std::wstring& eventName, const std::wstring& payload, Give give);
    /// Waits for the running handler and calls no further ones.
    void EndDeliveries() { deliveries.End(); }

protected:
    ~Endpoint() = default;

    void CallHandler(Peer sender, const std::wstring& eventName, const std::wstring& payload);

    Bus& bus;

private:
    const Peer number;

protected:
    // Last member: destroyed first, because its work uses the other members.
    event_delivery::EventDelivery deliveries;
};

/// The engine's endpoint: sends to all clients or to one.
class Server final : public Endpoint {
public:
    Server(Bus& ownBus, Peer ownNumber)
        : Endpoint(ownBus, ownNumber, event_delivery::EventDelivery::Begin::WithFirstHandler) {}
    [[nodiscard]] bool SendEvent(const std::wstring& eventName, const std::wstring& payload) override;
    [[nodiscard]] bool SendEventTo(Peer peer, const std::wstring& eventName, const std::wstring& payload) override;
    [[nodiscard]] bool PostEvent(const std::wstring& eventName, const std::wstring& payload) override;
    /// Always true.
    bool IsConnected() const override;
};

/// A front end's endpoint: sends to the server once that exists.
class Client final : public Endpoint {
public:
    Client(Bus& ownBus, Peer ownNumber) : Endpoint(ownBus, ownNumber, event_delivery::EventDelivery::Begin::AtOnce) {}
    [[nodiscard]] bool SendEvent(const std::wstring& eventName, const std::wstring& payload) override;
    [[nodiscard]] bool SendEventTo(Peer peer, const std::wstring& eventName, const std::wstring& payload) override;
    [[nodiscard]] bool PostEvent(const std::wstring& eventName, const std::wstring& payload) override;
    bool IsConnected() const override;
};

} // namespace in_process
