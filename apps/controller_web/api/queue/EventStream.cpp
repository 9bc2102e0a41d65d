#include "controller_web/api/queue/EventStream.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "controller_web/api/FeedClients.h"
#include "text/Text.h"

namespace web {
namespace {

using Text = std::shared_ptr<const std::string>;

Text EventText(const std::string& id, std::string_view type, std::string_view json) {
    std::string text = "id: " + id + "\nevent: ";
    text.append(type).append("\ndata: ").append(json).append("\n\n");
    return std::make_shared<const std::string>(std::move(text));
}

/// The browser waits so many milliseconds before it connects again.
Text ResetText(const std::string& id) {
    return std::make_shared<const std::string>("retry: 2000\nid: " + id + "\nevent: reset\ndata: {}\n\n");
}

} // namespace

struct EventStream::Shared {
    mutable std::mutex mutex;
    /// Identifies this process: numbers of another one mean nothing here.
    std::string streamId;
    /// The number of the first kept event.
    std::uint64_t first = 1;
    std::deque<Text> events;
    /// Clients that continue after this number have to fetch everything, and then get all kept events.
    std::uint64_t forgottenUntil = 0;
    std::size_t bytes = 0;
    FeedClients clients;

    std::uint64_t Last() const { return first + events.size() - 1; }
    std::string IdOf(std::uint64_t number) const { return streamId + "-" + std::to_string(number); }

    void Add(Text text) {
        bytes += text->size();
        events.push_back(std::move(text));
        while (events.size() > mostEvents || bytes > mostBytes) {
            DropOldest();
        }
    }

    /// One number is left out, so that no client has received the event before the next one.
    void Forget() {
        forgottenUntil = Last() + 1;
        first = forgottenUntil + 1;
        events.clear();
        bytes = 0;
    }

    void DropOldest() {
        bytes -= events.front()->size();
        events.pop_front();
        ++first;
    }

    /// Nothing if events after this one are no longer kept.
    std::optional<std::uint64_t> PositionOf(const std::string& id) const {
        const std::string prefix = streamId + "-";
        std::uint64_t number = 0;
        const char* const end = id.data() + id.size();
        const bool isOurs = id.starts_with(prefix);
        const auto read = isOurs ? std::from_chars(id.data() + prefix.size(), end, number) : std::from_chars_result();
        if (!isOurs || read.ec != std::errc() || read.ptr != end) {
            return std::nullopt;
        }
        return number + 1 >= first && number <= Last() ? std::optional(number) : std::nullopt;
    }
};

class EventStream::Feed final : public EventFeed {
public:
    Feed(std::shared_ptr<Shared> stream, std::shared_ptr<FeedClients::Client> streamClient,
         std::optional<std::uint64_t> lastReceived)
        : shared(std::move(stream)), client(std::move(streamClient)), received(lastReceived) {}

    ~Feed() override { shared->clients.Remove(client); }

    Feed(const Feed&) = delete;
    Feed& operator=(const Feed&) = delete;

    Text Next() override {
        const std::lock_guard lock(shared->mutex);
        if (!received || *received + 1 < shared->first) {
            received =
                received && shared->forgottenUntil + 1 == shared->first ? shared->forgottenUntil : shared->Last();
            return ResetText(shared->IdOf(*received));
        }
        return *received == shared->Last() ? nullptr : shared->events[++*received - shared->first];
    }

    void OnNews(std::function<void()> wake) override { client->OnNews(std::move(wake)); }

private:
    std::shared_ptr<Shared> shared;
    std::shared_ptr<FeedClients::Client> client;
    /// The number of the last event that the client has; nothing: it has to fetch everything.
    std::optional<std::uint64_t> received;
};

EventStream::EventStream() : shared(std::make_shared<Shared>()) {
    shared->streamId = text::ToUtf8(ControllerCSWrapper::CreateGuid());
}

void EventStream::Publish(std::string_view type, std::string_view json) {
    {
        const std::lock_guard lock(shared->mutex);
        shared->Add(EventText(shared->IdOf(shared->Last() + 1), type, json));
    }
    shared->clients.WakeAll();
}

void EventStream::Reset() {
    {
        const std::lock_guard lock(shared->mutex);
        shared->Forget();
    }
    shared->clients.WakeAll();
}

std::unique_ptr<EventFeed> EventStream::Open(const std::string& lastEventId) {
    std::shared_ptr<FeedClients::Client> client = shared->clients.Add(mostClients);
    if (client == nullptr) {
        return nullptr;
    }
    const std::lock_guard lock(shared->mutex);
    return std::make_unique<Feed>(shared, std::move(client), shared->PositionOf(lastEventId));
}

std::string EventStream::Position() const {
    const std::lock_guard lock(shared->mutex);
    return shared->IdOf(shared->Last());
}

std::size_t EventStream::ClientCount() const {
    return shared->clients.Count();
}

} // namespace web
