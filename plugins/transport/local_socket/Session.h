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

/// Who is told what happens to a session. Called with the network's lock held.
class SessionObserver {
public:
    /// The peer has greeted: events may go to it, and come from it.
    virtual void OnHandshake(Session& session) = 0;
    /// An event came. The owner calls `Session::EventHandled` when it is done with it.
    virtual void OnEvent(Session& session, Frame event) = 0;
    /// The session is over, once. `reason` is empty when the peer just went.
    virtual void OnClosed(Session& session, const std::wstring& reason) = 0;

protected:
    ~SessionObserver() = default;
};

/// What became of a frame to be sent.
enum class Sending : std::int32_t {
    Queued,
    /// The peer takes its events so slowly that no more fit into its queue.
    QueueFull,
    PeerGone
};

/// What became of an event that is to be acknowledged.
enum class Outcome : std::int32_t { Acknowledged, PeerGone, TimedOut };

/// An encoded frame, shared between all it goes to.
using SharedFrame = std::shared_ptr<const std::string>;

/// The talk over one connection: greetings, deadlines, and bounded queues both ways. All operations are called with the
/// network's lock held.
class Session : public std::enable_shared_from_this<Session> {
public:
    using Peer = EventTransmitterExtension::Peer;
    /// Called once, with the network's lock held.
    using Settle = std::function<void(Outcome)>;
    /// Who greets first.
    enum class Role : std::int32_t { Client, Server };

    Session(Peer peer, Role role, Network& network, std::unique_ptr<Channel> channel, const Limits& limits,
            SessionObserver& owner);

    /// Begins: greets (front end), reads, and gives the peer its time to greet.
    void Start();

    /// Queues a frame and begins to send it.
    Sending Send(SharedFrame frame);

    /// The same for an event of this number, which no other of this session has; `settle` is told what becomes of it
    /// when it was queued, and not called when it was not.
    [[nodiscard]] Sending SendAwaited(SharedFrame frame, EventNumber number, Settle settle);

    /// The same; a peer that does not take its events is closed. True when the frame was queued.
    [[nodiscard]] bool SendOrClose(SharedFrame frame);

    /// The owner is done with an event that came with this frame.
    void EventHandled(const Frame& event);

    /// Engine, instead of `Start`: tells the front end that there is no room for it, and ends the session. `served` as
    /// `EncodeBusy` takes it.
    void TurnAway(std::uint64_t served);

    /// Ends the session as soon as what was queued is written; from now on nothing is queued, and what comes is
    /// dropped.
    void Finish();

    /// Ends the session; `reason` as `SessionObserver::OnClosed` takes it.
    void Close(const std::wstring& reason);

    Peer Number() const { return peer; }
    bool IsClosed() const { return isClosed; }
    /// Front end: true when the engine had no room for it.
    bool WasTurnedAway() const { return wasTurnedAway; }
    /// True between the greetings and the end.
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

    /// False once a write has failed. What the peer sent before it went may still be read.
    bool canWrite = true;
    std::deque<SharedFrame> outgoing;
    std::size_t outgoingCost = 0;
    /// Of the first frame.
    std::size_t writtenBytes = 0;
};

} // namespace local_socket
