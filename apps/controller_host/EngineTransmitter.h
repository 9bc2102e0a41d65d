#pragma once

#include <string>

#include "CommonControllerLib/EventTransmitter.h"
#include "controller_plugins/EventTransmitterExtension.h"

/// The engine's event transmitter as the host uses it: with what its module can do beyond the two operations, and
/// without where it cannot. Threads: as the transmitter.
class EngineTransmitter {
public:
    using Peer = EventTransmitterExtension::Peer;
    using Acknowledgement = EventTransmitterExtension::Acknowledgement;

    /// Both outlive the object; `moduleExtension` may be null.
    EngineTransmitter(EventTransmitter& moduleTransmitter, EventTransmitterExtension* moduleExtension)
        : transmitter(moduleTransmitter), extension(moduleExtension) {}

    void AddEventHandler(const std::wstring& eventName, CallbackFunctor* handler);

    /// To every front end.
    void Broadcast(const std::wstring& eventName, const std::wstring& payload);
    /// To one front end; without the extension to all. False when that one is gone.
    [[nodiscard]] bool SendTo(Peer peer, const std::wstring& eventName, const std::wstring& payload);

    // As `EventTransmitterExtension`; without one there is no peer, nothing to acknowledge and nothing to pause.
    Peer CurrentPeer() const;
    Acknowledgement DeferAcknowledgement();
    void Acknowledge(Acknowledgement acknowledgement);
    void PauseDelivery();
    void ResumeDelivery();

private:
    EventTransmitter& transmitter;
    EventTransmitterExtension* extension;
};
