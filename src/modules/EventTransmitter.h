#pragma once

#include "modules/CallbackFunctor.h"

#include <cstdint>
#include <string>

/// One end of the line between front ends and the engine. A transmitter module creates it, owns it for the life of the
/// process, and gives it out by its export `GetEventTransmitter`; nobody else deletes it.
///
/// The first two operations are the contract with every module, in this order; no virtual destructor stands before
/// them. All operations may be called from any thread, also out of a handler.
class EventTransmitter {
public:
    /// Names the other side of one connection; never used twice in a process. 0 is nobody.
    using Peer = std::uint64_t;

    /// Delivers every event of this name to `handler` from now on; a later handler for the same name takes the place of
    /// the earlier one, null takes it away. When this returns the earlier handler does not run and will not run again:
    /// it waits for a delivery under way, unless it is called from within that one. The handler stays its maker's and
    /// must live until it has been taken away, at the latest before main() returns.
    virtual void AddEventHandler(const std::wstring& eventName, CallbackFunctor* handler) = 0;

    /// Hands an event on: from a front end to the engine, from the engine to every front end. True when it was handed
    /// on (to nobody is also handed on), false when there is no connection or the event is too big. Does not wait for
    /// the other side to take it, so what is handed on just before a process ends may be lost. A front end without a
    /// connection tries to make one first, which is over at once where no engine is, and after some seconds at most.
    [[nodiscard]] virtual bool SendEvent(const std::wstring& eventName, const std::wstring& payload) = 0;

    /// While a handler runs, on its thread: who sent the event. Otherwise 0.
    virtual Peer CurrentPeer() const = 0;

    /// Hands an event to one peer alone: the answer to whom asked. False when that peer is gone.
    [[nodiscard]] virtual bool SendEventTo(Peer peer, const std::wstring& eventName, const std::wstring& payload) = 0;

    /// Front end: true while the engine is there. Engine: true while it can be reached.
    virtual bool IsConnected() const = 0;

protected:
    EventTransmitter() = default;
    EventTransmitter(const EventTransmitter&) = default;
    EventTransmitter& operator=(const EventTransmitter&) = default;
    ~EventTransmitter() = default;
};
