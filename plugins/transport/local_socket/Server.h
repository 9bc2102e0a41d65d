#pragma once

#include <map>
#include <memory>
#include <string>

#include "transport/local_socket/SocketTransmitter.h"

namespace local_socket {

/// The engine's end: listens, and holds a session with every front end that came.
class Server final : public SocketTransmitter {
public:
    /// An engine that listens at `place`; null when the place cannot be taken, the log says why.
    [[nodiscard]] static std::unique_ptr<Server> Listen(const std::string& place, std::unique_ptr<Network> network,
                                                        const Limits& limits, Network::Log log);
    /// Waits for a handler that runs, so it must not be called out of one.
    ~Server() override;

    [[nodiscard]] bool SendEvent(const std::wstring& eventName, const std::wstring& payload) override;
    [[nodiscard]] bool SendEventTo(Peer peer, const std::wstring& eventName, const std::wstring& payload) override;
    [[nodiscard]] bool PostEvent(const std::wstring& eventName, const std::wstring& payload) override;
    /// There is nothing to connect.
    [[nodiscard]] bool Connect(std::wstring& problem) override;
    bool IsConnected() const override;

private:
    using SocketTransmitter::SocketTransmitter;

    [[nodiscard]] bool Listen();
    void OnConnected(std::unique_ptr<Channel> channel, Room room);
    void TurnAway(std::unique_ptr<Channel> channel, bool isFull);

    std::vector<std::shared_ptr<Session>> Sessions() const override;
    void OnHandshake(Session& session) override;
    void OnClosed(Session& session, const std::wstring& reason) override;

    std::map<Peer, std::shared_ptr<Session>> sessions;
    /// The last front end that came was turned away: those who wait for room come often.
    bool isTurningAway = false;
};

} // namespace local_socket
