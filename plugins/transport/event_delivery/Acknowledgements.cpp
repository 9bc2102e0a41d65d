#include "transport/event_delivery/Acknowledgements.h"

#include <utility>

namespace event_delivery {

void Acknowledgements::Deliver(Give give, const std::function<void()>& deliver) {
    {
        const std::lock_guard<std::mutex> guard(lock);
        deliveringOn = std::this_thread::get_id();
        current = std::move(give);
    }
    deliver();
    if (const Give notDeferred = TakeCurrent()) {
        notDeferred();
    }
}

Acknowledgements::Id Acknowledgements::Defer() {
    const std::lock_guard<std::mutex> guard(lock);
    if (!current || deliveringOn != std::this_thread::get_id()) {
        return 0;
    }
    deferred.emplace(++last, std::exchange(current, {}));
    return last;
}

void Acknowledgements::Acknowledge(Id id) {
    decltype(deferred)::node_type kept;
    {
        const std::lock_guard<std::mutex> guard(lock);
        kept = deferred.extract(id);
    }
    if (kept) {
        kept.mapped()();
    }
}

Acknowledgements::Give Acknowledgements::TakeCurrent() {
    const std::lock_guard<std::mutex> guard(lock);
    return std::exchange(current, {});
}

} // namespace event_delivery
