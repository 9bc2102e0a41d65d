#pragma once

#include <chrono>
#include <condition_variable>
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

/// What both ends of the line have in common: a network with its thread, the handlers, and the thread they run on.
class SocketTransmitter : public EventTransmitter, public EventTransmitterExtension, protected SessionObserver {
public:
    SocketTransmitter(const SocketTransmitter&) = delete;
    SocketTransmitter& operator=(const SocketTransmitter&) = delete;
    /// Those derived call `End` first, while they are whole.
    virtual ~SocketTransmitter();

    /// Ends the sessions and both threads; from now on nothing is sent. What was sent before reaches those peers that
    /// take it within `Limits::drain`. False when a handler did not return within `patience`: then this object must
    /// stay.
    [[nodiscard]] bool Stop(std::chrono::milliseconds patience);

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

    /// Stops, and waits for a handler that runs, which may still use this object; so it must not be called out of one.
    void End();
    /// Starts the network's thread.
    void Run();
    /// With the lock held.
    bool IsStopped() const { return isStopped; }
    /// Those that have not ended. With the lock held.
    virtual std::vector<std::shared_ptr<Session>> Sessions() const = 0;
    /// A new session, not yet started, under a number that no other has. With the lock held.
    std::shared_ptr<Session> MakeSession(Session::Role role, std::unique_ptr<Channel> channel);
    /// The encoded event, null when it is too big to be sent; the log says so.
    SharedFrame Encode(const std::wstring& eventName, const std::wstring& payload, EventNumber number = 0) const;
    /// Work for the thread that handlers run on, behind what came before.
    void Post(event_delivery::DeliveryThread::Work work) { deliveries.Post(std::move(work)); }
    /// Writes one line that names this end of the line.
    void Log(const std::wstring& message) const;

    void OnEvent(Session& session, Frame event) final;

    const std::string place;
    const Limits limits;
    const std::unique_ptr<Network> network;
    /// A session was greeted or has ended.
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
    event_delivery::EventDelivery deliveries;
    std::thread networkThread;
};

} // namespace local_socket
