#include "transport/in_process/Bus.h"

#include <algorithm>
#include <atomic>
#include <utility>

namespace in_process {
namespace {

/// Numbers are unique in the whole process.
Bus::Peer NextNumber() {
    static std::atomic<Bus::Peer> last = 0;
    return ++last;
}

} // namespace

Bus::~Bus() {
    // All endpoints still exist here: a running handler may send from any of them to any other.
    for (const auto& [name, client] : clients) {
        client->EndDeliveries();
    }
    if (server) {
        server->EndDeliveries();
    }
}

Endpoint* Bus::GetServer() {
    const std::lock_guard lock(mutex);
    if (!server) {
        server = std::make_unique<Server>(*this, NextNumber());
    }
    return server.get();
}

Endpoint* Bus::GetClient(const std::wstring& name) {
    const std::lock_guard lock(mutex);
    const auto found = clients.find(name);
    if (found != clients.end()) {
        return found->second.get();
    }
    return clients.emplace(name, std::make_unique<Client>(*this, NextNumber())).first->second.get();
}

Bus::Peer Bus::ServerNumber() const {
    const std::lock_guard lock(mutex);
    return server ? server->Number() : 0;
}

bool Bus::SendToServer(Peer sender, const std::wstring& eventName, const std::wstring& payload, Endpoint::Give give) {
    const std::lock_guard lock(mutex);
    if (!server) {
        return false;
    }
    server->Receive(sender, eventName, payload, std::move(give));
    return true;
}

void Bus::SendToClients(Peer sender, const std::wstring& eventName, const std::wstring& payload) {
    const std::lock_guard lock(mutex);
    for (const auto& [name, client] : clients) {
        client->Receive(sender, eventName, payload, {});
    }
}

bool Bus::SendToClient(Peer sender, Peer receiver, const std::wstring& eventName, const std::wstring& payload) {
    const std::lock_guard lock(mutex);
    const auto found = std::find_if(clients.begin(), clients.end(),
                                    [receiver](const auto& entry) { return entry.second->Number() == receiver; });
    if (found == clients.end()) {
        return false;
    }
    found->second->Receive(sender, eventName, payload, {});
    return true;
}

} // namespace in_process
