#include "controller_host/EngineTransmitter.h"

void EngineTransmitter::AddEventHandler(const std::wstring& eventName, CallbackFunctor* handler) {
    transmitter.AddEventHandler(eventName, handler);
}

void EngineTransmitter::Broadcast(const std::wstring& eventName, const std::wstring& payload) {
    // An absent front end requests the state when it connects.
    (void)transmitter.SendEvent(eventName, payload);
}

bool EngineTransmitter::SendTo(Peer peer, const std::wstring& eventName, const std::wstring& payload) {
    return extension != nullptr ? extension->SendEventTo(peer, eventName, payload)
                                : transmitter.SendEvent(eventName, payload);
}

EngineTransmitter::Peer EngineTransmitter::CurrentPeer() const {
    return extension != nullptr ? extension->CurrentPeer() : Peer{0};
}

EngineTransmitter::Acknowledgement EngineTransmitter::DeferAcknowledgement() {
    return extension != nullptr ? extension->DeferAcknowledgement() : Acknowledgement{0};
}

void EngineTransmitter::Acknowledge(Acknowledgement acknowledgement) {
    if (extension != nullptr) {
        extension->Acknowledge(acknowledgement);
    }
}

void EngineTransmitter::PauseDelivery() {
    if (extension != nullptr) {
        extension->PauseDelivery();
    }
}

void EngineTransmitter::ResumeDelivery() {
    if (extension != nullptr) {
        extension->ResumeDelivery();
    }
}
