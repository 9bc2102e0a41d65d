#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "CommonControllerLib/EventTransmitter.h"
#include "controller_plugins/EventTransmitterExtension.h"
#include "transport/event_delivery/EventDelivery.h"
#include "transport/local_socket/Limits.h"
#include "transport/local_socket/Network.h"
#include "transport/local_socket/Session.h"

namespace local_socket {

/// Common base of server and client: a network with its thread, the handlers, and the thread that runs them.
class SocketTransmitter : public EventTransmitter, public EventTransmitterExtension, protected SessionObserver {
public:
    SocketTransmitter(const SocketTransmitter&) = delete;
    SocketTransmitter& operator=(const SocketTransmitter&) = delete;
    /// Derived classes call `End` first in their destructors, while they are complete.
    virtual ~SocketTransmitter();

    /// Ends the sessions and both threads; nothing is sent afterwards. Frames sent before reach the peers that take
    /// them within `Limits::drain`. Returns false if a handler did not return within `timeout`; then this object must
    /// stay alive.
    [[nodiscard]] bool Stop(std::chrono::milliseconds timeout);

    void AddEventHandler(const std::wstring& eventName, CallbackFunctor* handler) final;
    Peer CurrentPeer() const final;
    Acknowledgement DeferAcknowledgement() final;
    void Acknowledge(Acknowledgement acknowledgement) final;
    void PauseDelivery() final;
    void ResumeDelivery() final;

protected:
    using Begin = event_delivery::EventDelivery::Begin;

    /// `place` is the name of the endpoint.
    SocketTransmitter(std::string place, std::unique_ptr<Network> network, const Limits& limits, Network::Log log,
                      Begin begin);

    /// Stops, and waits for a running handler, which may still use this object. Must not be called from a handler.
    void End();
    /// Starts the network's thread.
    void Run();
    /// The caller holds the lock.
    bool IsStopped() const { return isStopped; }
    /// True until the handlers of all events that have arrived have returned. The caller holds the lock.
    bool IsDelivering() const { return undelivered != 0; }
    /// The sessions that have not ended. The caller holds the lock.
    virtual std::vector<std::shared_ptr<Session>> Sessions() const = 0;
    /// Creates a session with a unique number; the caller starts it. The caller holds the lock.
    std::shared_ptr<Session> MakeSession(Session::Role role, std::unique_ptr<Channel> channel);
    /// Returns the encoded event, or null if it is too big to be sent; the log says so.
    SharedFrame Encode(const std::wstring& eventName, const std::wstring& payload, EventNumber number = 0) const;
    /// Queues work for the handler thread, behind the work queued before.
    void Post(event_delivery::DeliveryThread::Work work) { deliveries.Post(std::move(work)); }
    /// Writes one line that names this endpoint.
    void Log(const std::wstring& message) const;

    void OnEvent(Session& session, Frame event) final;

    const std::string place;
    const Limits limits;
    const std::unique_ptr<Network> network;
    /// Notified when a handshake completes or a session ends.
    std::condition_variable sessionChanged;

private:
    void EndSessions();
    void EndNetworkThread();
    void Deliver(const std::shared_ptr<Session>& session, const Frame& event);
    void DeliverSafely(Session& session, const Frame& event);
    void CallHandler(Session& session, const Frame& event);
    event_delivery::Acknowledgements::Give AcknowledgementOf(const std::shared_ptr<Session>& session,
                                                             EventNumber number);

    const Network::Log log;
    bool isStopped = false;
    /// Events whose handlers have not returned. Guarded by the network's lock.
    std::size_t undelivered = 0;
    event_delivery::EventDelivery deliveries;
    std::thread networkThread;
};

} // namespace local_socket
