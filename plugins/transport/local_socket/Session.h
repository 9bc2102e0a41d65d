#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "controller_plugins/EventTransmitterExtension.h"
#include "transport/local_socket/Frame.h"
#include "transport/local_socket/Limits.h"
#include "transport/local_socket/Network.h"

namespace local_socket {

class Session;

/// Receives the events of a session. Called with the network's lock held.
class SessionObserver {
public:
    /// The handshake is complete: events may be sent and received.
    virtual void OnHandshake(Session& session) = 0;
    /// An event arrived. The observer calls `Session::EventHandled` when it has finished with it.
    virtual void OnEvent(Session& session, Frame event) = 0;
    /// The session has ended; called once. `reason` is empty if the peer closed the connection.
    virtual void OnClosed(Session& session, const std::wstring& reason) = 0;

protected:
    ~SessionObserver() = default;
};

/// Result of sending a frame.
enum class Sending : std::int32_t {
    Queued,
    /// The peer takes its events too slowly: its queue is full.
    QueueFull,
    PeerGone
};

/// Result of an event that requires an acknowledgement.
enum class Outcome : std::int32_t { Acknowledged, PeerGone, TimedOut };

/// An encoded frame, shared by all its receivers.
using SharedFrame = std::shared_ptr<const std::string>;

/// The protocol on one connection: handshake, deadlines, and bounded queues in both directions. All functions require
/// the network's lock.
class Session : public std::enable_shared_from_this<Session> {
public:
    using Peer = EventTransmitterExtension::Peer;
    /// Called once, with the network's lock held.
    using Settle = std::function<void(Outcome)>;
    /// The client starts the handshake.
    enum class Role : std::int32_t { Client, Server };

    Session(Peer peer, Role role, Network& network, std::unique_ptr<Channel> channel, const Limits& limits,
            SessionObserver& owner);

    /// Starts the session: sends the handshake (client), reads, and starts the handshake deadline.
    void Start();

    /// Queues a frame and starts sending it.
    Sending Send(SharedFrame frame);

    /// Same for an event that requires an acknowledgement. `number` must be unique in this session. `settle` gets the
    /// outcome; it is not called if the frame was not queued.
    [[nodiscard]] Sending SendAwaited(SharedFrame frame, EventNumber number, Settle settle);

    /// Same, but closes the session if the queue is full. True if the frame was queued.
    [[nodiscard]] bool SendOrClose(SharedFrame frame);

    /// Called by the observer when it has finished with this event.
    void EventHandled(const Frame& event);

    /// Server, instead of `Start`: tells the client that there is no room for it, and ends the session. `served`: see
    /// `EncodeBusy`.
    void TurnAway(std::uint64_t served);

    /// Ends the session when the queued frames are written. From now on nothing is queued, and received frames are
    /// dropped.
    void Finish();

    /// Ends the session. `reason`: see `SessionObserver::OnClosed`.
    void Close(const std::wstring& reason);

    Peer Number() const { return peer; }
    bool IsClosed() const { return isClosed; }
    /// Client: true if the server had no room for it.
    bool WasTurnedAway() const { return wasTurnedAway; }
    /// True from the end of the handshake to the end of the session.
    bool IsOpen() const { return isHandshakeDone && !isClosed; }

private:
    struct Awaited {
        std::unique_ptr<Timer> timeout;
        Settle settle;
    };

    void ContinueRead();
    void OnRead(bool succeeded, std::size_t bytes);
    void Take(std::string_view bytes);
    void TakeFrame(Frame frame);
    void TakeFirstFrame(const Frame& frame);
    void TakeHandshake();
    void TakeAcknowledgement(EventNumber number);
    void Refuse(FrameRefusal refusal);
    void WatchTheFrame();
    void EndOf(EventNumber number, Outcome outcome);
    void ContinueWrite();
    void OnWritten(bool succeeded, std::size_t bytes);

    const Peer peer;
    const Role role;
    const Limits limits;
    SessionObserver& owner;
    const std::unique_ptr<Channel> channel;
    Network& network;
    const std::unique_ptr<Timer> deadline;

    bool isHandshakeDone = false;
    bool isClosed = false;
    bool wasTurnedAway = false;
    bool isFinishing = false;

    /// Sent and not yet acknowledged.
    std::map<EventNumber, Awaited> awaited;

    FrameDecoder decoder;
    std::array<char, chunkBytes> readBuffer{};
    /// Received and not yet handled, in bytes and overheads.
    std::size_t undelivered = 0;
    bool isReadingPaused = false;

    /// False once a write has failed. Bytes that the peer sent before it closed may still be read.
    bool canWrite = true;
    std::deque<SharedFrame> outgoing;
    std::size_t outgoingCost = 0;
    /// Bytes of the first queued frame that are written.
    std::size_t writtenBytes = 0;
};

} // namespace local_socket
