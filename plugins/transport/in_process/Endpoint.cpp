#include "transport/in_process/Endpoint.h"

#include "transport/event_delivery/Promise.h"
#include "transport/in_process/Bus.h"

#include <memory>
#include <utility>

namespace in_process {

using event_delivery::DeliveryThread;

void Endpoint::AddEventHandler(const std::wstring& eventName, CallbackFunctor* handler) {
    deliveries.SetHandler(eventName, handler);
}

bool Endpoint::Connect(std::wstring& problem) {
    problem.clear();
    return IsConnected();
}

EventTransmitterExtension::Peer Endpoint::CurrentPeer() const {
    return deliveries.CurrentPeer();
}

EventTransmitterExtension::Acknowledgement Endpoint::DeferAcknowledgement() {
    return deliveries.acknowledgements.Defer();
}

void Endpoint::Acknowledge(Acknowledgement acknowledgement) {
    deliveries.acknowledgements.Acknowledge(acknowledgement);
}

void Endpoint::PauseDelivery() {
    deliveries.Pause();
}

void Endpoint::ResumeDelivery() {
    deliveries.Resume();
}

void Endpoint::Receive(Peer sender, const std::wstring& eventName, const std::wstring& payload, Give give) {
    deliveries.Post([this, sender, eventName, payload, give = std::move(give)] {
        deliveries.acknowledgements.Deliver(give, [&] { CallHandler(sender, eventName, payload); });
    });
}

void Endpoint::CallHandler(Peer sender, const std::wstring& eventName, const std::wstring& payload) {
    try {
        deliveries.Deliver(sender, eventName, payload);
    } catch (...) {
        // The exception has no receiver: a sender learns that its event was handled, not how.
    }
}

bool Server::SendEvent(const std::wstring& eventName, const std::wstring& payload) {
    bus.SendToClients(Number(), eventName, payload);
    return true;
}

bool Server::SendEventTo(Peer peer, const std::wstring& eventName, const std::wstring& payload) {
    return bus.SendToClient(Number(), peer, eventName, payload);
}

bool Server::PostEvent(const std::wstring& eventName, const std::wstring& payload) {
    return SendEvent(eventName, payload);
}

bool Server::IsConnected() const {
    return true;
}

/// The acknowledgement is queued behind the answers that were sent before it.
bool Client::SendEvent(const std::wstring& eventName, const std::wstring& payload) {
    if (DeliveryThread::IsCurrent()) {
        return PostEvent(eventName, payload);
    }
    auto acknowledged = std::make_shared<event_delivery::Promise>();
    event_delivery::Future outcome = acknowledged->GetFuture();
    // The callback owns the promise: when either endpoint is destroyed, the promise is dropped, which ends the wait.
    Give give = [this, kept = std::move(acknowledged)] { deliveries.Post([kept] { kept->Set(true); }); };
    return bus.SendToServer(Number(), eventName, payload, std::move(give)) && outcome.Get(bus.Timeout());
}

bool Client::SendEventTo(Peer peer, const std::wstring& eventName, const std::wstring& payload) {
    return bus.ServerNumber() == peer && PostEvent(eventName, payload);
}

bool Client::PostEvent(const std::wstring& eventName, const std::wstring& payload) {
    return bus.SendToServer(Number(), eventName, payload, {});
}

bool Client::IsConnected() const {
    return bus.ServerNumber() != 0;
}

} // namespace in_process
