#pragma once

#include <cstdint>
#include <string>

/// What an event transmitter can do beyond the two operations of `EventTransmitter`. A module that has it exports
/// besides `GetEventTransmitter`, under this undecorated name,
///
///     EventTransmitterExtension* GetEventTransmitterExtension(const std::wstring& transmitterId, std::uint32_t
///     version);
///
/// which gives the extension of the transmitter for the same identifier, or null when it has none of this `version`.
/// The module owns it as long as the transmitter. A program that finds no extension of its version does without:
///
/// - the host sends every answer to every front end, and front ends do not learn when their requests were handled;
/// - the command line cannot see whether a host runs: it starts one before each command (which ends at once where one
///   runs), and notices the end of a host only by the answer that does not come.
///
/// All operations may be called from any thread, also out of a handler.
class EventTransmitterExtension {
public:
    /// Of this interface: raised with every change of it.
    static constexpr std::uint32_t version = 2;

    /// Names the other side of one connection; never used twice in a process. 0 is nobody.
    using Peer = std::uint64_t;
    /// Names an acknowledgement that is still to be given; never used twice in a process. 0 is none.
    using Acknowledgement = std::uint64_t;

    /// Front end: connects where there is no connection. True when there is one now. Otherwise `problem` says why,
    /// for people; it is empty when simply no engine is there. Over at once without an engine, after some seconds at
    /// most with one that hangs. Engine: as `IsConnected`.
    [[nodiscard]] virtual bool Connect(std::wstring& problem) = 0;

    /// Front end: true while the engine is there. Engine: true while it can be reached.
    virtual bool IsConnected() const = 0;

    /// Front end: true when the last attempt to connect met an engine that has no room for another front end now: a
    /// later one may succeed. A module that knows no such engine leaves this as it is.
    virtual bool IsBusy() const { return false; }

    /// While a handler runs, on its thread: who sent the event. Otherwise 0.
    virtual Peer CurrentPeer() const = 0;

    /// Hands an event to one peer alone, without waiting: the answer to whom asked. False when that peer is gone.
    [[nodiscard]] virtual bool SendEventTo(Peer peer, const std::wstring& eventName, const std::wstring& payload) = 0;

    /// As `EventTransmitter::SendEvent`, but a front end does not wait for the engine either: true when the event was
    /// queued.
    [[nodiscard]] virtual bool PostEvent(const std::wstring& eventName, const std::wstring& payload) = 0;

    /// While a handler runs, on its thread: the event is not acknowledged to its sender when the handler returns, but
    /// by `Acknowledge`, behind all that was sent to him before. 0 outside a handler, and where the sender does not
    /// wait.
    virtual Acknowledgement DeferAcknowledgement() = 0;

    /// Gives a deferred acknowledgement, once; 0, and one for a sender who has gone, is nothing to give.
    virtual void Acknowledge(Acknowledgement acknowledgement) = 0;

    /// From now on events are kept, and no handler is called until `ResumeDelivery`: so that none comes before all
    /// handlers are there. A handler that runs is not waited for.
    virtual void PauseDelivery() = 0;
    virtual void ResumeDelivery() = 0;

protected:
    EventTransmitterExtension() = default;
    EventTransmitterExtension(const EventTransmitterExtension&) = default;
    EventTransmitterExtension& operator=(const EventTransmitterExtension&) = default;
    ~EventTransmitterExtension() = default;
};
