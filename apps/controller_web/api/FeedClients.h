#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

namespace web {

/// Those who want to know when a source has news. Threads: any.
class FeedClients {
public:
    class Client {
    public:
        /// Null: nothing is called any more, once this function has returned.
        void OnNews(std::function<void()> callback);
        void Wake();

    private:
        /// Held during the callback.
        std::mutex mutex;
        std::function<void()> wake;
    };

    /// Null if there are `most` clients already.
    std::shared_ptr<Client> Add(std::size_t most);
    void Remove(const std::shared_ptr<Client>& client);
    void WakeAll() const;
    std::size_t Count() const;

private:
    mutable std::mutex mutex;
    std::vector<std::shared_ptr<Client>> clients;
};

} // namespace web
