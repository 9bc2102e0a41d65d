#pragma once

#include <map>
#include <memory>
#include <string>

#include "transport/local_socket/SocketTransmitter.h"

namespace local_socket {

/// The engine's endpoint: listens, and keeps a session with every connected client.
class Server final : public SocketTransmitter {
public:
    /// Creates a server that listens at `place`. Returns null if it cannot; the log says why.
    [[nodiscard]] static std::unique_ptr<Server> Listen(const std::string& place, std::unique_ptr<Network> network,
                                                        const Limits& limits, Network::Log log);
    /// Waits for a running handler; must not be called from one.
    ~Server() override;

    [[nodiscard]] bool SendEvent(const std::wstring& eventName, const std::wstring& payload) override;
    [[nodiscard]] bool SendEventTo(Peer peer, const std::wstring& eventName, const std::wstring& payload) override;
    [[nodiscard]] bool PostEvent(const std::wstring& eventName, const std::wstring& payload) override;
    /// Same as `IsConnected`: a server does not connect.
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
    /// True after a rejected client. Rejected clients retry often, so that only the first rejection is logged.
    bool isTurningAway = false;
};

} // namespace local_socket
