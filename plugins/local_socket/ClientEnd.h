#pragma once

#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>

#include "local_socket/SocketTransmitter.h"

namespace local_socket {

/// A front end's end: one session with the engine, made anew when there is something to send.
class ClientEnd final : public SocketTransmitter {
public:
    /// Tries to connect at once; whether it could, `IsConnected` says.
    ClientEnd(const std::string& place, std::unique_ptr<Network> network, const Limits& limits, Network::Log log);
    /// Waits for a handler that runs, so it must not be called out of one.
    ~ClientEnd() override;

    [[nodiscard]] bool SendEvent(const std::wstring& eventName, const std::wstring& payload) override;
    [[nodiscard]] bool SendEventTo(Peer peer, const std::wstring& eventName, const std::wstring& payload) override;
    bool IsConnected() const override;

private:
    /// The open session; else a new one, once both ends have greeted. Null when there is no engine.
    [[nodiscard]] std::shared_ptr<Session> Connect();
    [[nodiscard]] std::shared_ptr<Session> OpenSession() const;
    bool HasEnded() const;
    [[nodiscard]] std::shared_ptr<Session> Greet(std::unique_ptr<Channel> channel);
    [[nodiscard]] bool SendOver(const std::shared_ptr<Session>& open, const SharedFrame& frame);

    void CloseSessions() override;
    void OnGreeted(Session& session) override;
    void OnClosed(Session& closed, const std::wstring& reason) override;

    /// Held while connecting, so that two senders do not make two sessions. Before the network's lock.
    std::mutex connecting;
    /// With the network's lock.
    std::condition_variable sessionChanged;
    std::shared_ptr<Session> session;
};

} // namespace local_socket
