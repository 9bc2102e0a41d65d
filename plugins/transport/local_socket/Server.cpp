#include "transport/local_socket/Server.h"

#include <utility>
#include <vector>

namespace local_socket {

std::unique_ptr<Server> Server::Listen(const std::string& place, std::unique_ptr<Network> network, const Limits& limits,
                                       Network::Log log) {
    std::unique_ptr<Server> engine(
        new Server(place, std::move(network), limits, std::move(log), Begin::WithFirstHandler));
    return engine->Listen() ? std::move(engine) : nullptr;
}

Server::~Server() {
    End();
}

bool Server::SendEvent(const std::wstring& eventName, const std::wstring& payload) {
    const SharedFrame frame = Encode(eventName, payload);
    if (!frame) {
        return false;
    }
    const std::lock_guard<std::mutex> guard(network->Lock());
    for (const std::shared_ptr<Session>& session : Sessions()) {
        if (session->IsOpen()) {
            // A client that does not take its events must not block the others.
            (void)session->SendOrClose(frame);
        }
    }
    return !IsStopped();
}

bool Server::SendEventTo(Peer peer, const std::wstring& eventName, const std::wstring& payload) {
    const SharedFrame frame = Encode(eventName, payload);
    if (!frame) {
        return false;
    }
    const std::lock_guard<std::mutex> guard(network->Lock());
    const auto found = sessions.find(peer);
    if (found == sessions.end() || !found->second->IsOpen()) {
        return false;
    }
    const std::shared_ptr<Session> session = found->second;
    return session->SendOrClose(frame);
}

bool Server::PostEvent(const std::wstring& eventName, const std::wstring& payload) {
    return SendEvent(eventName, payload);
}

bool Server::Connect(std::wstring& problem) {
    problem.clear();
    return IsConnected();
}

bool Server::IsConnected() const {
    const std::lock_guard<std::mutex> guard(network->Lock());
    return !IsStopped();
}

bool Server::Listen() {
    const std::wstring failure = network->Listen(
        place, [this](std::unique_ptr<Channel> channel, Room room) { OnConnected(std::move(channel), room); });
    if (!failure.empty()) {
        Log(L"Cannot listen: " + failure);
        return false;
    }
    Run();
    return true;
}

void Server::OnConnected(std::unique_ptr<Channel> channel, Room room) {
    if (IsStopped()) {
        return;
    }
    const bool isFull = sessions.size() >= limits.peers;
    if (isFull || room == Room::None) {
        TurnAway(std::move(channel), isFull);
        return;
    }
    isTurningAway = false;
    const std::shared_ptr<Session> session = MakeSession(Session::Role::Server, std::move(channel));
    sessions.emplace(session->Number(), session);
    session->Start();
}

void Server::TurnAway(std::unique_ptr<Channel> channel, bool isFull) {
    if (!std::exchange(isTurningAway, true)) {
        Log(isFull ? L"Front ends are turned away: " + std::to_wstring(limits.peers) + L" are connected already."
                   : L"Front ends are turned away: the system gives this process no more open files. " +
                         std::to_wstring(sessions.size()) + L" are connected.");
    }
    MakeSession(Session::Role::Server, std::move(channel))->TurnAway(isFull ? limits.peers : 0);
}

std::vector<std::shared_ptr<Session>> Server::Sessions() const {
    std::vector<std::shared_ptr<Session>> all;
    for (const auto& [peer, session] : sessions) {
        all.push_back(session);
    }
    return all;
}

void Server::OnHandshake(Session&) {}

void Server::OnClosed(Session& session, const std::wstring& reason) {
    if (!reason.empty()) {
        Log(L"Front end " + std::to_wstring(session.Number()) + L" was dropped: " + reason + L".");
    }
    sessions.erase(session.Number());
    sessionChanged.notify_all();
}

} // namespace local_socket
