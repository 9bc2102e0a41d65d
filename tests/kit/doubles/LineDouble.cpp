#include "kit/doubles/LineDouble.h"

#include <algorithm>
#include <chrono>
#include <stdexcept>
#include <utility>

void LineDouble::AddEventHandler(const std::wstring& eventName, CallbackFunctor* handler) {
    const std::lock_guard lock(delivering);
    if (handler == nullptr) {
        handlers.erase(eventName);
    } else {
        handlers[eventName] = handler;
    }
}

bool LineDouble::SendEvent(const std::wstring& eventName, const std::wstring& payload) {
    return Keep({0, eventName, payload});
}

bool LineDouble::SendEventTo(Peer peer, const std::wstring& eventName, const std::wstring& payload) {
    return Keep({peer, eventName, payload});
}

bool LineDouble::PostEvent(const std::wstring& eventName, const std::wstring& payload) {
    return SendEvent(eventName, payload);
}

bool LineDouble::Connect(std::wstring& /*problem*/) {
    return true;
}

void LineDouble::Acknowledge(Acknowledgement acknowledgement) {
    (void)Keep({0, acknowledged, std::to_wstring(acknowledgement)});
}

std::vector<std::wstring> LineDouble::SentNames() {
    const std::lock_guard lock(mutex);
    std::vector<std::wstring> names;
    for (const Sent& event : sent) {
        names.push_back(event.name);
    }
    return names;
}

bool LineDouble::Keep(Sent event) {
    const std::lock_guard lock(mutex);
    sent.push_back(std::move(event));
    arrived.notify_all();
    return true;
}

bool LineDouble::Deliver(Peer peer, const std::wstring& eventName, const std::wstring& payload) {
    const std::lock_guard lock(delivering);
    const auto handler = handlers.find(eventName);
    if (isPaused || handler == handlers.end()) {
        return false;
    }
    currentPeer = peer;
    const bool taken = (*handler->second)(payload);
    currentPeer = 0;
    return taken;
}

LineDouble::Sent LineDouble::WaitFor(const std::wstring& eventName) {
    std::unique_lock lock(mutex);
    auto found = sent.end();
    const bool came = arrived.wait_for(lock, std::chrono::seconds(30), [&] {
        found = std::find_if(sent.begin(), sent.end(), [&](const Sent& event) { return event.name == eventName; });
        return found != sent.end();
    });
    if (!came) {
        throw std::runtime_error("The expected event was not sent");
    }
    Sent event = *found;
    sent.erase(found);
    return event;
}

bool LineDouble::HasSent(const std::wstring& eventName) {
    const std::lock_guard lock(mutex);
    return std::any_of(sent.begin(), sent.end(), [&](const Sent& event) { return event.name == eventName; });
}
