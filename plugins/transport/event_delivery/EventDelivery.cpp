#include "transport/event_delivery/EventDelivery.h"

namespace event_delivery {

EventDelivery::EventDelivery(Begin begin) {
    if (begin == Begin::WithFirstHandler) {
        thread.Pause();
    }
}

void EventDelivery::SetHandler(const std::wstring& eventName, CallbackFunctor* handler) {
    handlers.Set(eventName, handler);
    if (handler != nullptr && !isPaused) {
        thread.Resume();
    }
}

void EventDelivery::Pause() {
    isPaused = true;
    thread.Pause();
}

void EventDelivery::Resume() {
    isPaused = false;
    thread.Resume();
}

} // namespace event_delivery
