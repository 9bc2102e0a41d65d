#include "CommonControllerLib/EventTransmitter.h"
#include "CommonControllerLib/Export.h"
#include "transport/local_socket/Client.h"
#include "transport/local_socket/ProcessEnd.h"
#include "transport/local_socket/Server.h"
#include "transport/local_socket/TransmitterId.h"

#include <chrono>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

namespace {

using local_socket::Client;
using local_socket::Server;
using local_socket::SocketTransmitter;

std::unique_ptr<SocketTransmitter> MakeEnd(const local_socket::TransmitterId& id) {
    const auto log = [](const std::wstring&) {};
    if (id.end == local_socket::End::Server) {
        return Server::Listen(id.name, local_socket::MakeLocalNetwork(log), {}, log);
    }
    return std::make_unique<Client>(id.name, local_socket::MakeLocalNetwork(log), local_socket::Limits{}, log);
}

/// A transmitter with the two required operations only: a call of a third one is undefined.
class TwoOperations final : public EventTransmitter {
public:
    explicit TwoOperations(std::unique_ptr<SocketTransmitter> ownEnd) : end(std::move(ownEnd)) {}

    void AddEventHandler(const std::wstring& eventName, CallbackFunctor* handler) override {
        end->AddEventHandler(eventName, handler);
    }
    bool SendEvent(const std::wstring& eventName, const std::wstring& payload) override {
        return end->SendEvent(eventName, payload);
    }

    void Stop() { (void)end->Stop(std::chrono::seconds(2)); }

private:
    std::unique_ptr<SocketTransmitter> end;
};

/// Never destroyed, because the module's threads may use them until process end.
std::map<std::wstring, std::unique_ptr<TwoOperations>>& Transmitters() {
    static auto& transmitters = *new std::map<std::wstring, std::unique_ptr<TwoOperations>>;
    return transmitters;
}

void StopAll() {
    for (const auto& [id, transmitter] : Transmitters()) {
        transmitter->Stop();
    }
}

} // namespace

/// The ends of local_socket. There is no second export.
extern "C" CONTROLLER_API EventTransmitter* GetEventTransmitter(const std::wstring& transmitterId) {
    static std::mutex mutex;
    static const bool isStopped = (Transmitters(), local_socket::RegisterExitHandler(StopAll), true);
    const std::lock_guard lock(mutex);
    const auto found = Transmitters().find(transmitterId);
    if (found != Transmitters().end()) {
        return found->second.get();
    }
    const auto id = local_socket::ParseTransmitterId(transmitterId);
    std::unique_ptr<SocketTransmitter> end = id && isStopped ? MakeEnd(*id) : nullptr;
    if (!end) {
        return nullptr;
    }
    return (Transmitters()[transmitterId] = std::make_unique<TwoOperations>(std::move(end))).get();
}
