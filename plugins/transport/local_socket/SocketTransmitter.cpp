#include "transport/local_socket/SocketTransmitter.h"

#include <atomic>
#include <exception>
#include <optional>
#include <utility>

#include "text/Text.h"
#include "text/Wtf8.h"

namespace local_socket {
namespace {

Session::Peer NextPeer() {
    static std::atomic<Session::Peer> last{0};
    return ++last;
}

} // namespace

SocketTransmitter::SocketTransmitter(std::string placeName, std::unique_ptr<Network> ownNetwork,
                                     const Limits& peerLimits, Network::Log logFunction, Begin begin)
    : place(std::move(placeName)), limits(peerLimits), network(std::move(ownNetwork)), log(std::move(logFunction)),
      deliveries(begin) {}

SocketTransmitter::~SocketTransmitter() {
    EndNetworkThread();
}

bool SocketTransmitter::Stop(std::chrono::milliseconds timeout) {
    EndSessions();
    EndNetworkThread();
    return deliveries.Stop(timeout);
}

void SocketTransmitter::EndSessions() {
    std::unique_lock<std::mutex> guard(network->Lock());
    isStopped = true;
    for (const std::shared_ptr<Session>& session : Sessions()) {
        session->Finish();
    }
    sessionChanged.wait_for(guard, limits.drain, [this] { return Sessions().empty(); });
    for (const std::shared_ptr<Session>& session : Sessions()) {
        session->Close(L"");
    }
}

void SocketTransmitter::End() {
    // `End` waits for the running delivery next.
    (void)Stop(std::chrono::milliseconds::zero());
    deliveries.End();
}

void SocketTransmitter::AddEventHandler(const std::wstring& eventName, CallbackFunctor* handler) {
    deliveries.SetHandler(eventName, handler);
}

SocketTransmitter::Peer SocketTransmitter::CurrentPeer() const {
    return deliveries.CurrentPeer();
}

SocketTransmitter::Acknowledgement SocketTransmitter::DeferAcknowledgement() {
    return deliveries.acknowledgements.Defer();
}

void SocketTransmitter::Acknowledge(Acknowledgement acknowledgement) {
    deliveries.acknowledgements.Acknowledge(acknowledgement);
}

void SocketTransmitter::PauseDelivery() {
    deliveries.Pause();
}

void SocketTransmitter::ResumeDelivery() {
    deliveries.Resume();
}

void SocketTransmitter::Run() {
    networkThread = std::thread([this] { network->Run(); });
}

std::shared_ptr<Session> SocketTransmitter::MakeSession(Session::Role role, std::unique_ptr<Channel> channel) {
    SessionObserver& owner = *this;
    return std::make_shared<Session>(NextPeer(), role, *network, std::move(channel), limits, owner);
}

SharedFrame SocketTransmitter::Encode(const std::wstring& eventName, const std::wstring& payload,
                                      EventNumber number) const {
    std::optional<std::string> frame = EncodeEvent(eventName, payload, number);
    if (!frame) {
        Log(L"The event \"" + eventName + L"\" is not sent: a name has 1 to " + std::to_wstring(maximumNameBytes) +
            L" bytes, a payload at most " + std::to_wstring(maximumPayloadBytes) + L".");
        return nullptr;
    }
    return std::make_shared<const std::string>(*std::move(frame));
}

void SocketTransmitter::Log(const std::wstring& message) const {
    log(L"Event line \"" + std::wstring(place.begin(), place.end()) + L"\": " + message);
}

void SocketTransmitter::OnEvent(Session& session, Frame event) {
    deliveries.Post([this, kept = session.shared_from_this(), frame = std::move(event)] { Deliver(kept, frame); });
    ++undelivered;
}

void SocketTransmitter::EndNetworkThread() {
    network->Stop();
    if (networkThread.joinable()) {
        networkThread.join();
    }
}

void SocketTransmitter::Deliver(const std::shared_ptr<Session>& session, const Frame& event) {
    deliveries.acknowledgements.Deliver(AcknowledgementOf(session, event.number),
                                        [&] { DeliverSafely(*session, event); });
    const std::lock_guard<std::mutex> guard(network->Lock());
    session->EventHandled(event);
    --undelivered;
}

event_delivery::Acknowledgements::Give SocketTransmitter::AcknowledgementOf(const std::shared_ptr<Session>& session,
                                                                            EventNumber number) {
    if (number == 0) {
        return {};
    }
    return [this, weak = std::weak_ptr(session), number] {
        if (const std::shared_ptr<Session> open = weak.lock()) {
            const std::lock_guard<std::mutex> guard(network->Lock());
            // A sender that has disconnected does not wait for it.
            (void)open->SendOrClose(std::make_shared<const std::string>(EncodeAcknowledgement(number)));
        }
    };
}

void SocketTransmitter::DeliverSafely(Session& session, const Frame& event) {
    try {
        CallHandler(session, event);
    } catch (const std::exception& failure) {
        Log(L"A handler failed: " + text::FromUtf8(failure.what()) + L".");
    } catch (...) {
        Log(L"A handler failed.");
    }
}

void SocketTransmitter::CallHandler(Session& session, const Frame& event) {
    const std::optional<std::wstring> name = text::FromWtf8(event.name);
    const std::optional<std::wstring> payload = text::FromWtf8(event.payload);
    if (name && payload) {
        deliveries.Deliver(session.Number(), *name, *payload);
        return;
    }
    const std::lock_guard<std::mutex> guard(network->Lock());
    session.Close(L"it sent bytes that are no text");
}

} // namespace local_socket
