#pragma once

#include <atomic>
#include <chrono>
#include <string>
#include <utility>

#include "transport/event_delivery/Acknowledgements.h"
#include "transport/event_delivery/DeliveryThread.h"
#include "transport/event_delivery/HandlerTable.h"

namespace event_delivery {

/// The receiving side of one endpoint: its handlers, the thread that runs them (one event at a time, in order), and its
/// pending acknowledgements. Threads: any.
class EventDelivery {
public:
    /// When delivery starts. Events that come earlier stay queued.
    enum class Begin { AtOnce, WithFirstHandler };

    explicit EventDelivery(Begin begin);

    /// Same as `HandlerTable::Set`.
    void SetHandler(const std::wstring& eventName, CallbackFunctor* handler);
    /// Same as `HandlerTable::Deliver`. Called from posted work only.
    void Deliver(HandlerTable::Peer sender, const std::wstring& eventName, const std::wstring& payload) {
        handlers.Deliver(sender, eventName, payload);
    }
    HandlerTable::Peer CurrentPeer() const { return handlers.CurrentPeer(); }

    void Pause();
    void Resume();

    void Post(DeliveryThread::Work work) { thread.Post(std::move(work)); }
    [[nodiscard]] bool Stop(std::chrono::milliseconds timeout) { return thread.Stop(timeout); }
    void End() { thread.End(); }

    Acknowledgements acknowledgements;

private:
    HandlerTable handlers;
    std::atomic<bool> isPaused = false;
    // Last member: destroyed first, because its work uses the other members.
    DeliveryThread thread;
};

} // namespace event_delivery
