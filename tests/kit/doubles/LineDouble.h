#pragma once

#include "CommonControllerLib/EventTransmitter.h"
#include "controller_plugins/EventTransmitterExtension.h"

#include <condition_variable>
#include <map>
#include <mutex>
#include <string>
#include <vector>

/// The engine's end of a connection whose peer is the test: delivers requests and records sent events.
class LineDouble final : public EventTransmitter, public EventTransmitterExtension {
public:
    struct Sent {
        /// 0: broadcast.
        Peer peer = 0;
        std::wstring name;
        std::wstring payload;
    };
    /// The name under which an acknowledgement is recorded; its payload is the number.
    static constexpr const wchar_t* acknowledged = L"acknowledged";

    void AddEventHandler(const std::wstring& eventName, CallbackFunctor* handler) override;
    bool SendEvent(const std::wstring& eventName, const std::wstring& payload) override;
    Peer CurrentPeer() const override { return currentPeer; }
    bool SendEventTo(Peer peer, const std::wstring& eventName, const std::wstring& payload) override;
    bool PostEvent(const std::wstring& eventName, const std::wstring& payload) override;
    bool Connect(std::wstring& problem) override;
    bool IsConnected() const override { return true; }
    /// Returns a new number for each.
    Acknowledgement DeferAcknowledgement() override { return ++deferred; }
    void Acknowledge(Acknowledgement acknowledgement) override;
    void PauseDelivery() override { isPaused = true; }
    void ResumeDelivery() override { isPaused = false; }

    /// Delivers an event of a front end; false if it has no handler.
    [[nodiscard]] bool Deliver(Peer peer, const std::wstring& eventName, const std::wstring& payload);
    /// Waits for the next event of this name, and returns it. Throws std::runtime_error after 30 s.
    Sent WaitFor(const std::wstring& eventName);
    /// True if an event of this name was sent that was not waited for yet.
    bool HasSent(const std::wstring& eventName);
    /// The names of all sent events not waited for, in order.
    std::vector<std::wstring> SentNames();
    bool HasHandlers() const { return !handlers.empty(); }

private:
    [[nodiscard]] bool Keep(Sent event);

    /// Held while a handler runs.
    std::mutex delivering;
    std::map<std::wstring, CallbackFunctor*> handlers;
    Peer currentPeer = 0;
    bool isPaused = false;
    Acknowledgement deferred = 0;
    std::mutex mutex;
    std::condition_variable arrived;
    std::vector<Sent> sent;
};
