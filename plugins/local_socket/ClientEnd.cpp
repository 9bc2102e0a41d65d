#include "local_socket/ClientEnd.h"

#include <utility>

namespace local_socket {

ClientEnd::ClientEnd(const std::string& placeName, std::unique_ptr<Network> ownNetwork, const Limits& peerLimits,
                     Network::Log logFunction)
    : SocketTransmitter(placeName, std::move(ownNetwork), peerLimits, std::move(logFunction)) {
    Run();
    // Without an engine now, the first event tries again.
    (void)Connect();
}

ClientEnd::~ClientEnd() {
    End();
}

bool ClientEnd::SendEvent(const std::wstring& eventName, const std::wstring& payload) {
    const SharedFrame frame = Encode(eventName, payload);
    return frame && SendOver(Connect(), frame);
}

bool ClientEnd::SendEventTo(Peer peer, const std::wstring& eventName, const std::wstring& payload) {
    const std::shared_ptr<Session> open = OpenSession();
    if (!open || open->Number() != peer) {
        return false;
    }
    const SharedFrame frame = Encode(eventName, payload);
    return frame && SendOver(open, frame);
}

bool ClientEnd::IsConnected() const {
    return OpenSession() != nullptr;
}

std::shared_ptr<Session> ClientEnd::Connect() {
    const std::lock_guard<std::mutex> one(connecting);
    if (std::shared_ptr<Session> open = OpenSession()) {
        return open;
    }
    if (HasEnded()) {
        return nullptr;
    }
    Connection connection = network->Connect(place);
    if (!connection.failure.empty()) {
        Log(L"Cannot connect to the engine: " + connection.failure);
    }
    return connection.channel ? Greet(std::move(connection.channel)) : nullptr;
}

std::shared_ptr<Session> ClientEnd::OpenSession() const {
    const std::lock_guard<std::mutex> guard(network->Lock());
    return session && session->IsOpen() ? session : nullptr;
}

bool ClientEnd::HasEnded() const {
    const std::lock_guard<std::mutex> guard(network->Lock());
    return IsStopped();
}

std::shared_ptr<Session> ClientEnd::Greet(std::unique_ptr<Channel> channel) {
    std::unique_lock<std::mutex> guard(network->Lock());
    if (IsStopped()) {
        return nullptr;
    }
    session = MakeSession(Session::Role::Front, std::move(channel));
    const std::shared_ptr<Session> fresh = session;
    fresh->Start();
    // The session's own deadline ends this.
    sessionChanged.wait(guard, [&fresh] { return fresh->IsOpen() || fresh->IsClosed(); });
    return fresh->IsOpen() ? fresh : nullptr;
}

bool ClientEnd::SendOver(const std::shared_ptr<Session>& open, const SharedFrame& frame) {
    if (!open) {
        return false;
    }
    Sending sending = Sending::PeerGone;
    {
        const std::lock_guard<std::mutex> guard(network->Lock());
        sending = open->Send(frame);
    }
    if (sending == Sending::QueueFull) {
        Log(L"An event is not sent: the engine does not take what was sent before.");
    }
    return sending == Sending::Queued;
}

void ClientEnd::CloseSessions() {
    if (const std::shared_ptr<Session> last = session) {
        last->Close(L"");
    }
}

void ClientEnd::OnGreeted(Session&) {
    sessionChanged.notify_all();
}

void ClientEnd::OnClosed(Session& closed, const std::wstring& reason) {
    if (!reason.empty()) {
        Log(L"The connection to the engine was closed: " + reason + L".");
    }
    if (session.get() == &closed) {
        session.reset();
    }
    sessionChanged.notify_all();
}

} // namespace local_socket
