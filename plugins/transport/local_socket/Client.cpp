#include "transport/local_socket/Client.h"

#include <utility>

namespace local_socket {

Client::Client(const std::string& placeName, std::unique_ptr<Network> ownNetwork, const Limits& peerLimits,
               Network::Log logFunction)
    : SocketTransmitter(placeName, std::move(ownNetwork), peerLimits, std::move(logFunction), Begin::AtOnce) {
    Run();
    // If no engine is there yet, the first event tries again.
    std::wstring problem;
    (void)OpenOrConnect(problem);
    const std::lock_guard<std::mutex> one(connecting);
    firstProblem = std::move(problem);
}

Client::~Client() {
    End();
}

bool Client::SendEvent(const std::wstring& eventName, const std::wstring& payload) {
    if (event_delivery::DeliveryThread::IsCurrent()) {
        return PostEvent(eventName, payload);
    }
    const EventNumber number = ++lastNumber;
    const SharedFrame frame = Encode(eventName, payload, number);
    const std::shared_ptr<Session> open = frame ? OpenOrConnect() : nullptr;
    auto acknowledged = std::make_shared<event_delivery::Promise>();
    event_delivery::Future outcome = acknowledged->GetFuture();
    // The session owns the promise: when this client stops, the promise is dropped, which ends the wait.
    return open && SendOver(*open, frame, number, std::move(acknowledged)) && outcome.Get();
}

bool Client::SendEventTo(Peer peer, const std::wstring& eventName, const std::wstring& payload) {
    const std::shared_ptr<Session> open = OpenSession();
    if (!open || open->Number() != peer) {
        return false;
    }
    const SharedFrame frame = Encode(eventName, payload);
    return frame && SendOver(*open, frame, 0, nullptr);
}

bool Client::PostEvent(const std::wstring& eventName, const std::wstring& payload) {
    const SharedFrame frame = Encode(eventName, payload);
    const std::shared_ptr<Session> open = frame ? OpenOrConnect() : nullptr;
    return open && SendOver(*open, frame, 0, nullptr);
}

bool Client::Connect(std::wstring& problem) {
    problem = TakeFirstProblem();
    return problem.empty() && OpenOrConnect(problem) != nullptr;
}

bool Client::IsConnected() const {
    // A handler does not wait for itself.
    const bool mayWait = !event_delivery::DeliveryThread::IsCurrent();
    const std::lock_guard<std::mutex> guard(network->Lock());
    return IsSessionOpen() || (mayWait && IsDelivering() && !IsStopped());
}

bool Client::IsSessionOpen() const {
    return session && session->IsOpen();
}

std::shared_ptr<Session> Client::OpenOrConnect() {
    std::wstring ignored;
    return OpenOrConnect(ignored);
}

std::shared_ptr<Session> Client::OpenOrConnect(std::wstring& problem) {
    const std::lock_guard<std::mutex> one(connecting);
    problem.clear();
    firstProblem.clear();
    if (std::shared_ptr<Session> open = OpenSession()) {
        return open;
    }
    if (HasEnded()) {
        return nullptr;
    }
    Connection connection = network->Connect(place);
    if (connection.channel) {
        return PerformHandshake(std::move(connection.channel), problem);
    }
    problem = std::move(connection.failure);
    Note(connection.isBusy, problem.empty() ? problem : L"Cannot connect to the engine: " + problem);
    return nullptr;
}

std::wstring Client::TakeFirstProblem() {
    const std::lock_guard<std::mutex> one(connecting);
    return std::exchange(firstProblem, {});
}

/// A client that waits for room retries often; only the first of these attempts is logged.
void Client::Note(bool foundNoRoom, const std::wstring& message) {
    const bool isKnown = isBusy.exchange(foundNoRoom) && foundNoRoom;
    if (!isKnown && !message.empty()) {
        Log(message);
    }
}

std::shared_ptr<Session> Client::OpenSession() const {
    const std::lock_guard<std::mutex> guard(network->Lock());
    return IsSessionOpen() ? session : nullptr;
}

bool Client::HasEnded() const {
    const std::lock_guard<std::mutex> guard(network->Lock());
    return IsStopped();
}

std::shared_ptr<Session> Client::PerformHandshake(std::unique_ptr<Channel> channel, std::wstring& problem) {
    std::unique_lock<std::mutex> guard(network->Lock());
    if (IsStopped()) {
        return nullptr;
    }
    session = MakeSession(Session::Role::Client, std::move(channel));
    std::shared_ptr<Session> fresh = session;
    fresh->Start();
    // The handshake deadline of the session bounds this wait.
    sessionChanged.wait(guard, [&fresh] { return fresh->IsOpen() || fresh->IsClosed(); });
    if (fresh->IsOpen()) {
        isBusy = false;
        return fresh;
    }
    problem = closeReason;
    return nullptr;
}

bool Client::SendOver(Session& open, const SharedFrame& frame, EventNumber number, SharedPromise acknowledged) {
    Sending sending = Sending::PeerGone;
    {
        const std::lock_guard<std::mutex> guard(network->Lock());
        const bool isAwaited = acknowledged != nullptr;
        auto settle = [this, promise = std::move(acknowledged)](Outcome outcome) { Settle(promise, outcome); };
        sending = isAwaited ? open.SendAwaited(frame, number, std::move(settle)) : open.Send(frame);
    }
    if (sending == Sending::QueueFull) {
        Log(L"An event is not sent: the engine does not take what was sent before.");
    }
    return sending == Sending::Queued;
}

/// The sender continues when the handlers of all earlier answers have run. A hanging handler does not delay the
/// timeout.
void Client::Settle(const SharedPromise& acknowledged, Outcome outcome) {
    if (outcome == Outcome::TimedOut) {
        Log(L"The engine has not acknowledged an event within " + std::to_wstring(limits.acknowledgement.count()) +
            L" ms.");
        acknowledged->Set(false);
    } else {
        Post([acknowledged, outcome] { acknowledged->Set(outcome == Outcome::Acknowledged); });
    }
}

std::vector<std::shared_ptr<Session>> Client::Sessions() const {
    return session ? std::vector{session} : std::vector<std::shared_ptr<Session>>();
}

void Client::OnHandshake(Session&) {
    sessionChanged.notify_all();
}

void Client::OnClosed(Session& closed, const std::wstring& reason) {
    Note(closed.WasTurnedAway(),
         reason.empty() ? reason : L"The connection to the engine was closed: " + reason + L".");
    closeReason = reason;
    if (session.get() == &closed) {
        session.reset();
    }
    sessionChanged.notify_all();
}

} // namespace local_socket
