#pragma once

#include "modules/EventTransmitter.h"

#include <condition_variable>
#include <map>
#include <mutex>
#include <string>
#include <vector>

/// The engine's end of a line whose other side is the test: it delivers requests and keeps what is sent.
class LineDouble final : public EventTransmitter {
public:
    struct Sent {
        /// 0: to everybody.
        Peer peer = 0;
        std::wstring name;
        std::wstring payload;
    };

    void AddEventHandler(const std::wstring& eventName, CallbackFunctor* handler) override;
    bool SendEvent(const std::wstring& eventName, const std::wstring& payload) override;
    Peer CurrentPeer() const override { return currentPeer; }
    bool SendEventTo(Peer peer, const std::wstring& eventName, const std::wstring& payload) override;
    bool IsConnected() const override { return true; }

    /// Delivers an event of a front end; false when nobody takes it.
    [[nodiscard]] bool Deliver(Peer peer, const std::wstring& eventName, const std::wstring& payload);
    /// Waits until an event of this name has been sent that was not waited for yet, and gives it. Throws
    /// std::runtime_error when none comes in 30 s.
    Sent WaitFor(const std::wstring& eventName);
    /// True when an event of this name has been sent that was not waited for yet.
    bool HasSent(const std::wstring& eventName);
    bool HasHandlers() const { return !handlers.empty(); }

private:
    [[nodiscard]] bool Keep(Sent event);

    std::map<std::wstring, CallbackFunctor*> handlers;
    Peer currentPeer = 0;
    std::mutex mutex;
    std::condition_variable arrived;
    std::vector<Sent> sent;
};
