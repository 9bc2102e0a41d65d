#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <string>

#include "transport/event_delivery/Promise.h"
#include "transport/local_socket/SocketTransmitter.h"

namespace local_socket {

/// A front end's end: one session with the engine, made anew when there is something to send.
class Client final : public SocketTransmitter {
public:
    /// Tries to connect at once; whether it could, `IsConnected` says. Where an engine was there that did not answer,
    /// the first `Connect` tells of this attempt instead of making another, which would take as long again.
    Client(const std::string& place, std::unique_ptr<Network> network, const Limits& limits, Network::Log log);
    /// Waits for a handler that runs, so it must not be called out of one.
    ~Client() override;

    [[nodiscard]] bool SendEvent(const std::wstring& eventName, const std::wstring& payload) override;
    [[nodiscard]] bool SendEventTo(Peer peer, const std::wstring& eventName, const std::wstring& payload) override;
    [[nodiscard]] bool PostEvent(const std::wstring& eventName, const std::wstring& payload) override;
    [[nodiscard]] bool Connect(std::wstring& problem) override;
    bool IsConnected() const override;
    bool IsBusy() const override { return isBusy; }

private:
    using SharedPromise = std::shared_ptr<event_delivery::Promise>;

    /// The open session; else a new one, once both ends have greeted. Null when there is no engine; `problem` says why,
    /// and is empty when simply nobody listens.
    [[nodiscard]] std::shared_ptr<Session> OpenOrConnect(std::wstring& problem);
    [[nodiscard]] std::shared_ptr<Session> OpenOrConnect();
    [[nodiscard]] std::shared_ptr<Session> OpenSession() const;
    bool HasEnded() const;
    [[nodiscard]] std::wstring TakeFirstProblem();
    /// What became of an attempt to connect, or of a session; an empty message is not logged.
    void Note(bool foundNoRoom, const std::wstring& message);
    [[nodiscard]] std::shared_ptr<Session> PerformHandshake(std::unique_ptr<Channel> channel, std::wstring& problem);
    /// Where there is something to be waited for, `acknowledged` is kept once it is known what became of the event.
    [[nodiscard]] bool SendOver(Session& open, const SharedFrame& frame, EventNumber number,
                                SharedPromise acknowledged);
    /// With the lock held.
    void Settle(const SharedPromise& acknowledged, Outcome outcome);

    std::vector<std::shared_ptr<Session>> Sessions() const override;
    void OnHandshake(Session& session) override;
    void OnClosed(Session& closed, const std::wstring& reason) override;

    /// Held while connecting, so that two senders do not make two sessions. Before the network's lock.
    std::mutex connecting;
    /// Why the attempt of the constructor failed, until somebody is told or tries again. With `connecting`.
    std::wstring firstProblem;
    /// With the network's lock.
    std::shared_ptr<Session> session;
    /// Why the last session was closed.
    std::wstring closeReason;
    std::atomic<bool> isBusy{false};
    std::atomic<EventNumber> lastNumber{0};
};

} // namespace local_socket
