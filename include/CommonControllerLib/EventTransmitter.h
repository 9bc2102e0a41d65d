#pragma once

#include "CommonControllerLib/CallbackFunctor.h"

#include <string>

/// One end of the line between front ends and the engine. A transmitter module creates it, owns it for the life of the
/// process, and gives it out by its export `GetEventTransmitter`; nobody else deletes it.
///
/// These two operations, in this order, are all that a module must have; no virtual destructor stands before them. The
/// library calls nothing else. What the host and the command line make use of beyond them is optional, see
/// `EventTransmitterExtension`. Both operations may be called from any thread, also out of a handler.
class EventTransmitter {
public:
    /// Delivers every event of this name to `handler` from now on; a later handler for the same name takes the place of
    /// the earlier one, null takes it away. When this returns the earlier handler does not run and will not run again:
    /// it waits for a delivery under way, unless it is called from within that one. The handler stays its maker's and
    /// must live until it has been taken away, at the latest before main() returns. Events for an engine that has no
    /// handler yet are kept until it has its first one.
    virtual void AddEventHandler(const std::wstring& eventName, CallbackFunctor* handler) = 0;

    /// Hands an event on: from a front end to the engine, from the engine to every front end.
    ///
    /// Front end: returns true when the engine's handler has handled the event and every answer that it sent to this
    /// front end before has been delivered here. False when there is no connection, the event is too big, the engine
    /// ends meanwhile, or does not acknowledge the event within 20 s; whether the event was handled is then not known.
    /// A front end without a connection tries to make one first. Out of a handler it does not wait for the engine: true
    /// when the event was queued. The caller holds no lock that a handler of this process needs.
    ///
    /// Engine: never waits for front ends. True when the event was queued (to nobody is also queued); what is queued
    /// just before a process ends may be lost.
    [[nodiscard]] virtual bool SendEvent(const std::wstring& eventName, const std::wstring& payload) = 0;

protected:
    EventTransmitter() = default;
    EventTransmitter(const EventTransmitter&) = default;
    EventTransmitter& operator=(const EventTransmitter&) = default;
    ~EventTransmitter() = default;
};
