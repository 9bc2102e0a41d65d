#include "controller_host/RequestInbox.h"

#include <algorithm>
#include <utility>

namespace {

/// So many unanswered requests mean a front end that does not wait for answers; more are refused.
constexpr std::size_t requestLimit = 10000;

} // namespace

class RequestInbox::Handler final : public CallbackFunctor {
public:
    Handler(RequestInbox& requestInbox, std::wstring eventName) : inbox(requestInbox), name(std::move(eventName)) {}

    bool operator()(const std::wstring& payload) override {
        return inbox.Add(Request{inbox.transmitter.CurrentPeer(), name, payload});
    }

    const std::wstring& Name() const { return name; }

private:
    RequestInbox& inbox;
    std::wstring name;
};

RequestInbox::RequestInbox(EventTransmitter& eventTransmitter, const std::vector<std::wstring>& names)
    : transmitter(eventTransmitter) {
    for (const std::wstring& name : names) {
        handlers.push_back(std::make_unique<Handler>(*this, name));
        transmitter.AddEventHandler(name, handlers.back().get());
    }
}

RequestInbox::~RequestInbox() {
    for (const auto& handler : handlers) {
        transmitter.AddEventHandler(handler->Name(), nullptr);
    }
}

std::deque<Request> RequestInbox::TakeAll() {
    const std::lock_guard lock(mutex);
    arrived.Clear();
    characters = 0;
    return std::exchange(requests, {});
}

bool RequestInbox::Add(Request request) {
    const std::lock_guard lock(mutex);
    const std::size_t room = characterLimit - std::min(characters, characterLimit);
    if (requests.size() >= requestLimit || (request.payload.size() > room && !requests.empty())) {
        return false;
    }
    characters += request.payload.size();
    requests.push_back(std::move(request));
    arrived.Raise();
    return true;
}
