#include "controller_web/api/FeedClients.h"

#include <utility>

namespace web {

void FeedClients::Client::OnNews(std::function<void()> callback) {
    const std::lock_guard lock(mutex);
    wake = std::move(callback);
}

void FeedClients::Client::Wake() {
    const std::lock_guard lock(mutex);
    if (wake) {
        wake();
    }
}

std::shared_ptr<FeedClients::Client> FeedClients::Add(std::size_t most) {
    const std::lock_guard lock(mutex);
    return clients.size() >= most ? nullptr : clients.emplace_back(std::make_shared<Client>());
}

void FeedClients::Remove(const std::shared_ptr<Client>& client) {
    client->OnNews(nullptr);
    const std::lock_guard lock(mutex);
    std::erase(clients, client);
}

void FeedClients::WakeAll() const {
    std::vector<std::shared_ptr<Client>> woken;
    {
        const std::lock_guard lock(mutex);
        woken = clients;
    }
    for (const std::shared_ptr<Client>& client : woken) {
        client->Wake();
    }
}

std::size_t FeedClients::Count() const {
    const std::lock_guard lock(mutex);
    return clients.size();
}

} // namespace web
