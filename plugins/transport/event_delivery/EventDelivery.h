#pragma once

#include <atomic>
#include <chrono>
#include <string>
#include <utility>

#include "transport/event_delivery/Acknowledgements.h"
#include "transport/event_delivery/DeliveryThread.h"
#include "transport/event_delivery/HandlerTable.h"

namespace event_delivery {

/// What one end does with the events that come to it: its handlers, the thread that they run on, one event at a time in
/// order, and the acknowledgements that it owes. Any thread.
class EventDelivery {
public:
    /// When events begin to be delivered: those that come before are kept.
    enum class Begin { AtOnce, WithFirstHandler };

    explicit EventDelivery(Begin begin);

    /// As `HandlerTable::Set`.
    void SetHandler(const std::wstring& eventName, CallbackFunctor* handler);
    /// As `HandlerTable::Deliver`. Out of posted work.
    void Deliver(HandlerTable::Peer sender, const std::wstring& eventName, const std::wstring& payload) {
        handlers.Deliver(sender, eventName, payload);
    }
    HandlerTable::Peer CurrentPeer() const { return handlers.CurrentPeer(); }

    void Pause();
    void Resume();

    void Post(DeliveryThread::Work work) { thread.Post(std::move(work)); }
    [[nodiscard]] bool Stop(std::chrono::milliseconds patience) { return thread.Stop(patience); }
    void End() { thread.End(); }

    Acknowledgements acknowledgements;

private:
    HandlerTable handlers;
    std::atomic<bool> isPaused = false;
    // Last: it ends before what its work uses.
    DeliveryThread thread;
};

} // namespace event_delivery
