#include "kit/doubles/ScriptedTransmitter.h"

#include <cstdint>

namespace {

/// A presenter leaves its handler for "CancelJobsFinish" allocated. Keeping it reachable here lets a leak checker find
/// every other leaked handler.
void KeepInReach(CallbackFunctor* handler) {
    static auto& kept = *new std::vector<CallbackFunctor*>;
    kept.push_back(handler);
}

} // namespace

bool ScriptedTransmitter::Deliver(const std::wstring& eventName, const std::wstring& payload) {
    return (*handlers.at(eventName))(payload);
}

std::wstring ScriptedTransmitter::Id() const {
    return std::to_wstring(reinterpret_cast<std::uintptr_t>(static_cast<const EventTransmitter*>(this)));
}

void ScriptedTransmitter::AddEventHandler(const std::wstring& eventName, CallbackFunctor* handler) {
    if (eventName == L"CancelJobsFinish") {
        KeepInReach(handler);
    }
    registered.push_back(eventName);
    handlers[eventName] = handler;
    if (handler == nullptr) {
        handlers.erase(eventName);
    }
    if (onRegister) {
        onRegister(eventName, handler);
    }
}

bool ScriptedTransmitter::SendEvent(const std::wstring& eventName, const std::wstring& payload) {
    sent.push_back({eventName, payload});
    if (onSend) {
        onSend(sent.back());
    }
    return canSend;
}

ScriptedTransmitter::Peer ScriptedTransmitter::CurrentPeer() const {
    return 0;
}

bool ScriptedTransmitter::SendEventTo(Peer, const std::wstring&, const std::wstring&) {
    return false;
}

bool ScriptedTransmitter::PostEvent(const std::wstring& eventName, const std::wstring& payload) {
    return SendEvent(eventName, payload);
}

bool ScriptedTransmitter::Connect(std::wstring& problem) {
    if (onConnect) {
        onConnect();
    }
    problem = connectionProblem;
    return IsConnected();
}

ScriptedTransmitter::Acknowledgement ScriptedTransmitter::DeferAcknowledgement() {
    return 0;
}

void ScriptedTransmitter::Acknowledge(Acknowledgement) {}

void ScriptedTransmitter::PauseDelivery() {}

void ScriptedTransmitter::ResumeDelivery() {}

bool ScriptedTransmitter::IsConnected() const {
    return canSend && isEngineThere;
}
