#pragma once

#include <string>

#include "CommonControllerLib/EventTransmitter.h"
#include "controller_plugins/EventTransmitterExtension.h"

/// The engine's event transmitter with the optional extension of its module. Works without the extension. Threads: as
/// the transmitter.
class EngineTransmitter {
public:
    using Peer = EventTransmitterExtension::Peer;
    using Acknowledgement = EventTransmitterExtension::Acknowledgement;

    /// Both must outlive this object; `moduleExtension` may be null.
    EngineTransmitter(EventTransmitter& moduleTransmitter, EventTransmitterExtension* moduleExtension)
        : transmitter(moduleTransmitter), extension(moduleExtension) {}

    void AddEventHandler(const std::wstring& eventName, CallbackFunctor* handler);

    /// Sends to all front ends.
    void Broadcast(const std::wstring& eventName, const std::wstring& payload);
    /// Sends to one front end, or to all without the extension. Returns false if the front end has disconnected.
    [[nodiscard]] bool SendTo(Peer peer, const std::wstring& eventName, const std::wstring& payload);

    // Same as in `EventTransmitterExtension`. Without an extension there are no peers, and acknowledging and pausing do
    // nothing.
    Peer CurrentPeer() const;
    Acknowledgement DeferAcknowledgement();
    void Acknowledge(Acknowledgement acknowledgement);
    void PauseDelivery();
    void ResumeDelivery();

private:
    EventTransmitter& transmitter;
    EventTransmitterExtension* extension;
};
