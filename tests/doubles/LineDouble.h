#pragma once

#include "CommonControllerLib/EventTransmitter.h"
#include "controller_plugins/EventTransmitterExtension.h"

#include <condition_variable>
#include <map>
#include <mutex>
#include <string>
#include <vector>

/// The engine's end of a line whose other side is the test: it delivers requests and keeps what is sent.
class LineDouble final : public EventTransmitter, public EventTransmitterExtension {
public:
    struct Sent {
        /// 0: to everybody.
        Peer peer = 0;
        std::wstring name;
        std::wstring payload;
    };
    /// An acknowledgement, among what is sent, has this name and its number as payload.
    static constexpr const wchar_t* acknowledged = L"acknowledged";

    void AddEventHandler(const std::wstring& eventName, CallbackFunctor* handler) override;
    bool SendEvent(const std::wstring& eventName, const std::wstring& payload) override;
    Peer CurrentPeer() const override { return currentPeer; }
    bool SendEventTo(Peer peer, const std::wstring& eventName, const std::wstring& payload) override;
    bool PostEvent(const std::wstring& eventName, const std::wstring& payload) override;
    bool Connect(std::wstring& problem) override;
    bool IsConnected() const override { return true; }
    /// Each of a new number.
    Acknowledgement DeferAcknowledgement() override { return ++deferred; }
    void Acknowledge(Acknowledgement acknowledgement) override;
    void PauseDelivery() override { isPaused = true; }
    void ResumeDelivery() override { isPaused = false; }

    /// Delivers an event of a front end; false when nobody takes it.
    [[nodiscard]] bool Deliver(Peer peer, const std::wstring& eventName, const std::wstring& payload);
    /// Waits until an event of this name has been sent that was not waited for yet, and gives it. Throws
    /// std::runtime_error when none comes in 30 s.
    Sent WaitFor(const std::wstring& eventName);
    /// True when an event of this name has been sent that was not waited for yet.
    bool HasSent(const std::wstring& eventName);
    /// The names of all that was sent and not waited for, in order.
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
