#pragma once

#include "CommonControllerLib/EventTransmitter.h"
#include "controller_plugins/EventTransmitterExtension.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

/// A transmitter that goes nowhere: records what is sent and registered, and delivers what a test tells it to.
class ScriptedTransmitter final : public EventTransmitter, public EventTransmitterExtension {
public:
    struct Event {
        std::wstring name;
        std::wstring payload;

        bool operator==(const Event&) const = default;
    };

    // The script
    bool canSend = true;
    /// False: the engine has gone since something was sent.
    bool isEngineThere = true;
    /// Why there is no connection.
    std::wstring connectionProblem;
    /// The engine has no room, which may pass.
    bool isBusy = false;
    /// Called with each try to connect, before `Connect` returns.
    std::function<void()> onConnect;
    /// Called with each event that is sent, before `SendEvent` returns.
    std::function<void(const Event&)> onSend;
    /// Called with each handler that is registered or, as null, taken away.
    std::function<void(const std::wstring& eventName, CallbackFunctor* handler)> onRegister;

    // The recording
    std::vector<Event> sent;
    /// The names that handlers were registered under, in order.
    std::vector<std::wstring> registered;

    /// Calls the handler of an event as a transmitter's thread would; std::out_of_range without one.
    [[nodiscard]] bool Deliver(const std::wstring& eventName, const std::wstring& payload);
    bool HasHandlers() const { return !handlers.empty(); }
    /// What makes the module `transmitter_by_address` hand out this object.
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
