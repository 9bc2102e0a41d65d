#pragma once

#include <condition_variable>
#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <thread>

#include "CommonControllerLib/CallbackFunctor.h"
#include "controller_plugins/EventTransmitterExtension.h"

/// Event delivery that all event transmitters share.
namespace event_delivery {

/// The handlers of one transmitter, by event name, and the currently running one. Any thread may set handlers; only one
/// thread delivers. No lock is held while a handler runs.
class HandlerTable {
public:
    using Peer = EventTransmitterExtension::Peer;

    /// Sets, replaces or (null) removes the handler of an event. On return the previous handler neither runs nor will
    /// run again, so its owner may delete it. Exception: called from within a handler, it does not wait for that
    /// handler.
    void Set(const std::wstring& eventName, CallbackFunctor* handler);

    /// Calls the handler of this event, if there is one, and returns when the handler has returned. Passes its
    /// exceptions on.
    void Deliver(Peer sender, const std::wstring& eventName, const std::wstring& payload);

    /// The sender of the event being handled, if called on the delivering thread while a handler runs; otherwise 0.
    Peer CurrentPeer() const;

private:
    CallbackFunctor* Begin(Peer sender, const std::wstring& eventName);
    void End();
    bool RunsHere() const;

    mutable std::mutex lock;
    std::condition_variable handlerEnded;
    std::map<std::wstring, CallbackFunctor*> handlers;
    /// Counts the deliveries, to distinguish one from the next.
    std::uint64_t delivery = 0;
    CallbackFunctor* running = nullptr;
    std::thread::id runningOn;
    Peer runningFor = 0;
};

} // namespace event_delivery
