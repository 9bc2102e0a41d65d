#include "controller_host/RequestQueue.h"

#include <algorithm>
#include <utility>

class RequestQueue::Handler final : public CallbackFunctor {
public:
    Handler(RequestQueue& requestQueue, std::wstring eventName) : queue(requestQueue), name(std::move(eventName)) {}

    bool operator()(const std::wstring& payload) override {
        EngineTransmitter& transmitter = queue.transmitter;
        return queue.Add({transmitter.CurrentPeer(), name, payload, transmitter.DeferAcknowledgement()});
    }

    const std::wstring& Name() const { return name; }

private:
    RequestQueue& queue;
    std::wstring name;
};

RequestQueue::RequestQueue(EngineTransmitter& eventTransmitter, const std::vector<std::wstring>& names)
    : transmitter(eventTransmitter) {
    transmitter.PauseDelivery();
    for (const std::wstring& name : names) {
        handlers.push_back(std::make_unique<Handler>(*this, name));
        transmitter.AddEventHandler(name, handlers.back().get());
    }
    transmitter.ResumeDelivery();
}

RequestQueue::~RequestQueue() {
    {
        const std::lock_guard lock(mutex);
        hasEnded = true;
    }
    changed.notify_all();
    for (const auto& handler : handlers) {
        transmitter.AddEventHandler(handler->Name(), nullptr);
    }
}

std::deque<Request> RequestQueue::TakeAll() {
    std::deque<Request> taken;
    {
        const std::lock_guard lock(mutex);
        arrived.Clear();
        characters = 0;
        taken.swap(requests);
    }
    changed.notify_all();
    return taken;
}

bool RequestQueue::Add(Request request) {
    std::unique_lock lock(mutex);
    changed.wait(lock, [&] { return hasEnded || HasRoomFor(request); });
    if (hasEnded) {
        return false;
    }
    characters += request.payload.size();
    requests.push_back(std::move(request));
    arrived.Raise();
    return true;
}

bool RequestQueue::HasRoomFor(const Request& request) const {
    const std::size_t room = characterLimit - std::min(characters, characterLimit);
    return requests.size() < requestLimit && (request.payload.size() <= room || requests.empty());
}
