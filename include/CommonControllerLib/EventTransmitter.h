#pragma once

#include "CommonControllerLib/CallbackFunctor.h"

#include <string>

/// One end of the connection between front ends and the engine. A transmitter module creates it, owns it for the life
/// of the process, and returns it from its export `GetEventTransmitter`; nothing else deletes it.
///
/// A module must implement exactly these two operations, in this order, without a virtual destructor before them; the
/// library calls nothing else. Further operations, which the host and the command line use when present, are optional:
/// see `EventTransmitterExtension`.
///
/// Threads: any; both operations may also be called from a handler.
class EventTransmitter {
public:
    /// Delivers every later event of this name to `handler`. A later handler for the same name replaces the earlier
    /// one; null removes it. After the return the earlier handler does not run again: the call waits for a delivery in
    /// progress, unless it is called from within that delivery. The caller keeps ownership of `handler`, which must
    /// live until it is removed, at the latest before main() returns. Events for an engine that has not yet registered
    /// any handler are kept until it registers its first.
    virtual void AddEventHandler(const std::wstring& eventName, CallbackFunctor* handler) = 0;

    /// Sends an event: from a front end to the engine, or from the engine to every front end.
    ///
    /// Front end: returns true when the engine's handler has handled the event and every answer that the handler sent
    /// to this front end has been delivered. Returns false without a connection, for an event that is too large, when
    /// the engine ends before it acknowledges the event, or when no acknowledgement arrives within 20 s; in the last
    /// two cases it is unknown whether the event was handled. A front end without a connection first tries to connect.
    /// Called from a handler it does not wait for the engine: true means that the event was queued. The caller must not
    /// hold a lock that a handler of this process needs.
    ///
    /// Engine: never waits for front ends. Returns true when the event was queued, even if no front end is connected;
    /// events queued just before the process ends may be lost.
    [[nodiscard]] virtual bool SendEvent(const std::wstring& eventName, const std::wstring& payload) = 0;

protected:
    EventTransmitter() = default;
    /// For modules only.
    EventTransmitter(const EventTransmitter&) = default;
    /// For modules only.
    EventTransmitter& operator=(const EventTransmitter&) = default;
    ~EventTransmitter() = default;
};
