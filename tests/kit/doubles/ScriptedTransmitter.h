#pragma once

#include "CommonControllerLib/EventTransmitter.h"
#include "controller_plugins/EventTransmitterExtension.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

/// A transmitter without a peer: records sent events and registrations, and delivers events of the test.
class ScriptedTransmitter final : public EventTransmitter, public EventTransmitterExtension {
public:
    struct Event {
        std::wstring name;
        std::wstring payload;

        bool operator==(const Event&) const = default;
    };

    // The script
    bool canSend = true;
    /// False: the engine has gone since the last event.
    bool isEngineThere = true;
    /// Why there is no connection.
    std::wstring connectionProblem;
    /// True: the engine is temporarily full.
    bool isBusy = false;
    /// Called at each connection attempt, before `Connect` returns.
    std::function<void()> onConnect;
    /// Called for each sent event, before `SendEvent` returns.
    std::function<void(const Event&)> onSend;
    /// Called for each registered handler, or with null for a removed one.
    std::function<void(const std::wstring& eventName, CallbackFunctor* handler)> onRegister;

    // The recording
    std::vector<Event> sent;
    /// The names of registered handlers, in order.
    std::vector<std::wstring> registered;

    /// Calls the handler of an event like a transmitter's thread; throws std::out_of_range without one.
    [[nodiscard]] bool Deliver(const std::wstring& eventName, const std::wstring& payload);
    bool HasHandlers() const { return !handlers.empty(); }
    /// The identifier with which the module `transmitter_by_address` returns this object.
    std::wstring Id() const;

    void AddEventHandler(const std::wstring& eventName, CallbackFunctor* handler) override;
    bool SendEvent(const std::wstring& eventName, const std::wstring& payload) override;
    Peer CurrentPeer() const override;
    bool SendEventTo(Peer peer, const std::wstring& eventName, const std::wstring& payload) override;
    bool PostEvent(const std::wstring& eventName, const std::wstring& payload) override;
    bool Connect(std::wstring& problem) override;
    bool IsConnected() const override;
    bool IsBusy() const override { return isBusy; }
    Acknowledgement DeferAcknowledgement() override;
    void Acknowledge(Acknowledgement acknowledgement) override;
    void PauseDelivery() override;
    void ResumeDelivery() override;

private:
    std::map<std::wstring, CallbackFunctor*> handlers;
};
