#pragma once

#include <cstdint>
#include <string>

/// The optional operations of an event transmitter, in addition to those of `EventTransmitter`. A module that provides
/// them exports, besides `GetEventTransmitter`, under this undecorated name:
///
///     EventTransmitterExtension* GetEventTransmitterExtension(const std::wstring& transmitterId,
///                                                             std::uint32_t version);
///
/// It returns the extension of the transmitter for the same identifier, or null when it has none of this `version`. The
/// module owns the extension, which lives as long as the transmitter. Without an extension of its version a program
/// works with these limitations:
///
/// - The host sends every answer to every front end, and front ends are not notified when their requests were handled.
/// - The command line cannot detect whether a host is running: it starts one before each command (which ends
///   immediately if another host is running), and detects the end of a host only by a missing answer.
///
/// Threads: any; all operations may also be called from a handler.
class EventTransmitterExtension {
public:
    /// The version of this interface, incremented with every change.
    static constexpr std::uint32_t version = 2;

    /// Identifies the other end of one connection; never reused within a process. 0 means no peer.
    using Peer = std::uint64_t;
    /// Identifies a pending acknowledgement; never reused within a process. 0 means none.
    using Acknowledgement = std::uint64_t;

    /// Front end: connects unless connected. Returns true when connected. On failure returns false and sets `problem`
    /// to the reason, for people; it is empty when no engine is running. Returns immediately without an engine, and
    /// after a few seconds at most with an engine that hangs. Engine: returns `IsConnected()`.
    [[nodiscard]] virtual bool Connect(std::wstring& problem) = 0;

    /// Front end: returns true while the engine is reachable. A module should continue to return true, except within a
    /// handler, until the handlers of all events that arrived have returned; otherwise a front end that waits for an
    /// answer may overlook one that arrived just before the end of the engine. Engine: returns true while front ends
    /// can connect.
    virtual bool IsConnected() const = 0;

    /// Front end: returns true when the last attempt to connect was rejected because the engine has reached its limit
    /// of front ends; a later attempt may succeed. Modules without such a limit keep this default.
    virtual bool IsBusy() const { return false; }

    /// Returns the sender of the event while a handler runs, on the handler's thread; otherwise 0.
    virtual Peer CurrentPeer() const = 0;

    /// Queues an event for one peer, without waiting; used to answer a request. Returns false when that peer is
    /// disconnected.
    [[nodiscard]] virtual bool SendEventTo(Peer peer, const std::wstring& eventName, const std::wstring& payload) = 0;

    /// Sends as `EventTransmitter::SendEvent` does, but a front end does not wait for the engine: returns true when the
    /// event was queued.
    [[nodiscard]] virtual bool PostEvent(const std::wstring& eventName, const std::wstring& payload) = 0;

    /// Defers the acknowledgement of the current event: it is not sent when the handler returns but by `Acknowledge`,
    /// after everything that was sent to the sender before. Call it while a handler runs, on the handler's thread.
    /// Returns 0 outside a handler, and when the sender does not wait.
    virtual Acknowledgement DeferAcknowledgement() = 0;

    /// Sends a deferred acknowledgement, once. 0, and an acknowledgement whose sender has disconnected, are ignored.
    virtual void Acknowledge(Acknowledgement acknowledgement) = 0;

    /// Queues incoming events, without calling handlers, until `ResumeDelivery`, so that no event is delivered before
    /// all handlers are registered. Does not wait for a running handler.
    virtual void PauseDelivery() = 0;
    /// Delivers the queued events, and later ones as they arrive.
    virtual void ResumeDelivery() = 0;

protected:
    EventTransmitterExtension() = default;
    /// For modules only.
    EventTransmitterExtension(const EventTransmitterExtension&) = default;
    /// For modules only.
    EventTransmitterExtension& operator=(const EventTransmitterExtension&) = default;
    ~EventTransmitterExtension() = default;
};
