#include "transport/event_delivery/HandlerTable.h"

#include <utility>

namespace event_delivery {

void HandlerTable::Set(const std::wstring& eventName, CallbackFunctor* handler) {
    std::unique_lock<std::mutex> guard(lock);
    CallbackFunctor* const earlier = std::exchange(handlers[eventName], handler);
    if (handler == nullptr) {
        handlers.erase(eventName);
    }
    if (earlier != nullptr && earlier != handler && earlier == running && !RunsHere()) {
        const std::uint64_t awaited = delivery;
        handlerEnded.wait(guard, [this, awaited] { return running == nullptr || delivery != awaited; });
    }
}

void HandlerTable::Deliver(Peer sender, const std::wstring& eventName, const std::wstring& payload) {
    CallbackFunctor* const handler = Begin(sender, eventName);
    if (handler == nullptr) {
        return;
    }
    struct Ending {
        HandlerTable& table;
        ~Ending() { table.End(); }
    } const ending{*this};
    (*handler)(payload);
}

HandlerTable::Peer HandlerTable::CurrentPeer() const {
    const std::lock_guard<std::mutex> guard(lock);
    return RunsHere() ? runningFor : 0;
}

CallbackFunctor* HandlerTable::Begin(Peer sender, const std::wstring& eventName) {
    const std::lock_guard<std::mutex> guard(lock);
    const auto found = handlers.find(eventName);
    if (found == handlers.end()) {
        return nullptr;
    }
    ++delivery;
    running = found->second;
    runningOn = std::this_thread::get_id();
    runningFor = sender;
    return running;
}

void HandlerTable::End() {
    {
        const std::lock_guard<std::mutex> guard(lock);
        running = nullptr;
    }
    handlerEnded.notify_all();
}

bool HandlerTable::RunsHere() const {
    return running != nullptr && runningOn == std::this_thread::get_id();
}

} // namespace event_delivery
