#include "in_process/Endpoint.h"

#include "in_process/Line.h"

namespace in_process {

void Endpoint::AddEventHandler(const std::wstring& eventName, CallbackFunctor* handler) {
    handlers.Set(eventName, handler);
}

EventTransmitter::Peer Endpoint::CurrentPeer() const {
    return handlers.CurrentPeer();
}

void Endpoint::Receive(Peer sender, const std::wstring& eventName, const std::wstring& payload) {
    deliveries.Post([this, sender, eventName, payload] {
        try {
            handlers.Deliver(sender, eventName, payload);
        } catch (...) {
            // Nobody is left to tell: the sender has long gone on.
        }
    });
}

bool EngineEnd::SendEvent(const std::wstring& eventName, const std::wstring& payload) {
    line.SendToFrontEnds(Number(), eventName, payload);
    return true;
}

bool EngineEnd::SendEventTo(Peer peer, const std::wstring& eventName, const std::wstring& payload) {
    return line.SendToFrontEnd(Number(), peer, eventName, payload);
}

bool EngineEnd::IsConnected() const {
    return true;
}

bool FrontEnd::SendEvent(const std::wstring& eventName, const std::wstring& payload) {
    return line.SendToEngine(Number(), eventName, payload);
}

bool FrontEnd::SendEventTo(Peer peer, const std::wstring& eventName, const std::wstring& payload) {
    return line.EngineNumber() == peer && line.SendToEngine(Number(), eventName, payload);
}

bool FrontEnd::IsConnected() const {
    return line.EngineNumber() != 0;
}

} // namespace in_process
