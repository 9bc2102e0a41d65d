#pragma once

#include <condition_variable>
#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <thread>

#include "CommonControllerLib/CallbackFunctor.h"
#include "controller_plugins/EventTransmitterExtension.h"

/// What every event transmitter needs to hand events to the handlers of its users.
namespace event_delivery {

/// The handlers of one transmitter, by event name, and the one that runs just now. Any thread may set handlers; one
/// thread delivers. No lock is held while a handler runs.
class HandlerTable {
public:
    using Peer = EventTransmitterExtension::Peer;

    /// Sets, replaces or (null) takes away the handler of an event. When this returns the earlier handler does not run
    /// and will not run again, so its maker may delete it; but called out of a handler it does not wait for that one.
    void Set(const std::wstring& eventName, CallbackFunctor* handler);

    /// Calls the handler of this event, if there is one, and returns when it has returned. Its exceptions pass through.
    void Deliver(Peer sender, const std::wstring& eventName, const std::wstring& payload);

    /// On the delivering thread while a handler runs: the sender of its event. Otherwise 0.
    Peer CurrentPeer() const;

private:
    CallbackFunctor* Begin(Peer sender, const std::wstring& eventName);
    void End();
    bool RunsHere() const;

    mutable std::mutex lock;
    std::condition_variable handlerEnded;
    std::map<std::wstring, CallbackFunctor*> handlers;
    /// Counts the deliveries, so that one can be told from the next.
    std::uint64_t delivery = 0;
    CallbackFunctor* running = nullptr;
    std::thread::id runningOn;
    Peer runningFor = 0;
};

} // namespace event_delivery
