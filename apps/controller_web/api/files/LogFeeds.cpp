#include "controller_web/api/files/LogFeeds.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <utility>

#include "controller_web/api/FeedClients.h"
#include "controller_web/api/files/FilesBelow.h"
#include "formats/RunFileNames.h"
#include "platform/files/File.h"

namespace web {
namespace {

constexpr std::chrono::milliseconds lookInterval{250};
constexpr std::size_t blockSize = std::size_t{64} << 10;

} // namespace

struct LogFeeds::Shared {
    std::mutex mutex;
    std::condition_variable changed;
    bool isStopping = false;
    FeedClients clients;
};

class LogFeeds::Feed final : public EventFeed {
public:
    Feed(std::shared_ptr<Shared> owner, std::shared_ptr<FeedClients::Client> logClient, std::wstring workDirectory,
         std::function<bool()> jobHasEnded)
        : shared(std::move(owner)), client(std::move(logClient)), directory(std::move(workDirectory)),
          hasEnded(std::move(jobHasEnded)) {}

    ~Feed() override { shared->clients.Remove(client); }

    Feed(const Feed&) = delete;
    Feed& operator=(const Feed&) = delete;

    /// What a job has written before its end is read after its end.
    std::shared_ptr<const std::string> Next() override {
        const bool isLast = hasEnded();
        std::string block = ReadBlock();
        isAtEnd = isLast && block.empty();
        return block.empty() ? nullptr : std::make_shared<const std::string>(std::move(block));
    }

    bool IsAtEnd() const override { return isAtEnd; }

    void OnNews(std::function<void()> wake) override { client->OnNews(std::move(wake)); }

private:
    /// The file is not held open: it may be removed with its job. A file that was truncated is read from the beginning.
    std::string ReadBlock() {
        platform::File file;
        std::string block(blockSize, '\0');
        std::size_t count = 0;
        if (OpenFileBelow(directory, {run_protocol::logFileName}, file)) {
            position = file.Size() < position ? 0 : position;
            if (!file.ReadAt(position, block.data(), block.size(), count)) {
                count = 0;
            }
        }
        position += count;
        block.resize(count);
        return block;
    }

    std::shared_ptr<Shared> shared;
    std::shared_ptr<FeedClients::Client> client;
    const std::wstring directory;
    const std::function<bool()> hasEnded;
    std::uint64_t position = 0;
    bool isAtEnd = false;
};

LogFeeds::LogFeeds() : shared(std::make_shared<Shared>()), thread([this] { Loop(); }) {}

LogFeeds::~LogFeeds() {
    {
        const std::lock_guard lock(shared->mutex);
        shared->isStopping = true;
    }
    shared->changed.notify_all();
    thread.join();
}

void LogFeeds::Loop() {
    std::unique_lock lock(shared->mutex);
    while (!shared->isStopping) {
        shared->changed.wait(lock, [this] { return shared->isStopping || shared->clients.Count() > 0; });
        shared->changed.wait_for(lock, lookInterval, [this] { return shared->isStopping; });
        lock.unlock();
        shared->clients.WakeAll();
        lock.lock();
    }
}

std::unique_ptr<EventFeed> LogFeeds::Open(const std::wstring& workDirectory, std::function<bool()> hasEnded) {
    std::shared_ptr<FeedClients::Client> client;
    {
        const std::lock_guard lock(shared->mutex);
        client = shared->clients.Add(mostFeeds);
    }
    shared->changed.notify_all();
    return client == nullptr ? nullptr
                             : std::make_unique<Feed>(shared, std::move(client), workDirectory, std::move(hasEnded));
}

} // namespace web
