#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <string>

#include "transport/event_delivery/Promise.h"
#include "transport/local_socket/SocketTransmitter.h"

namespace local_socket {

/// A front end's endpoint: one session with the engine, reopened when there is something to send.
class Client final : public SocketTransmitter {
public:
    /// Tries to connect at once; `IsConnected` has the outcome. If an engine was there but did not answer, the first
    /// `Connect` reports this attempt instead of making another one, which would take as long again.
    Client(const std::string& place, std::unique_ptr<Network> network, const Limits& limits, Network::Log log);
    /// Waits for a running handler; must not be called from one.
    ~Client() override;

    [[nodiscard]] bool SendEvent(const std::wstring& eventName, const std::wstring& payload) override;
    [[nodiscard]] bool SendEventTo(Peer peer, const std::wstring& eventName, const std::wstring& payload) override;
    [[nodiscard]] bool PostEvent(const std::wstring& eventName, const std::wstring& payload) override;
    [[nodiscard]] bool Connect(std::wstring& problem) override;
    /// Returns true also after the end of the connection, until the handlers of the events that arrived before it have
    /// returned: who finds no connection and no answer knows that none arrived. Within a handler it does not wait.
    bool IsConnected() const override;
    bool IsBusy() const override { return isBusy; }

private:
    using SharedPromise = std::shared_ptr<event_delivery::Promise>;

    /// Returns the open session, or a new one after its handshake. On failure, returns null and sets `problem`, which
    /// is empty if no engine listens.
    [[nodiscard]] std::shared_ptr<Session> OpenOrConnect(std::wstring& problem);
    [[nodiscard]] std::shared_ptr<Session> OpenOrConnect();
    [[nodiscard]] std::shared_ptr<Session> OpenSession() const;
    /// The caller holds the network's lock.
    bool IsSessionOpen() const;
    bool HasEnded() const;
    [[nodiscard]] std::wstring TakeFirstProblem();
    /// Records the outcome of a connection attempt or session. An empty message is not logged.
    void Note(bool foundNoRoom, const std::wstring& message);
    [[nodiscard]] std::shared_ptr<Session> PerformHandshake(std::unique_ptr<Channel> channel, std::wstring& problem);
    /// If `acknowledged` is not null, it gets its value when the outcome of the event is known.
    [[nodiscard]] bool SendOver(Session& open, const SharedFrame& frame, EventNumber number,
                                SharedPromise acknowledged);
    /// The caller holds the network's lock.
    void Settle(const SharedPromise& acknowledged, Outcome outcome);

    std::vector<std::shared_ptr<Session>> Sessions() const override;
    void OnHandshake(Session& session) override;
    void OnClosed(Session& closed, const std::wstring& reason) override;

    /// Held while connecting, so that two senders do not create two sessions. Lock order: before the network's lock.
    std::mutex connecting;
    /// Why the constructor's attempt failed; cleared when reported or at the next attempt. Guarded by `connecting`.
    std::wstring firstProblem;
    /// Guarded by the network's lock.
    std::shared_ptr<Session> session;
    /// Why the last session was closed.
    std::wstring closeReason;
    std::atomic<bool> isBusy{false};
    std::atomic<EventNumber> lastNumber{0};
};

} // namespace local_socket
