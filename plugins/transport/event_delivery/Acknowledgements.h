#pragma once

#include <functional>
#include <map>
#include <mutex>
#include <thread>

#include "controller_plugins/EventTransmitterExtension.h"

namespace event_delivery {

/// How long the sender of an event waits until it is acknowledged.
inline constexpr std::chrono::milliseconds acknowledgementTimeout{20000};

/// The acknowledgements that one end owes for the events that come to it: given when the handler has returned, or, if
/// the handler deferred it, when the handler's side says so. Any thread; one thread delivers.
class Acknowledgements {
public:
    using Id = EventTransmitterExtension::Acknowledgement;
    /// Tells the sender of one event. Empty where nobody waits. Called once at most, without any lock of this class.
    using Give = std::function<void()>;

    /// Calls `deliver`, which calls a handler and must not throw; then `give`, unless it was deferred.
    void Deliver(Give give, const std::function<void()>& deliver);

    /// Out of `deliver`: keeps its `give` for `Acknowledge`. 0 on other threads and where nobody waits.
    Id Defer();
    /// Calls what was kept under this id, once.
    void Acknowledge(Id id);

private:
    Give TakeCurrent();

    std::mutex lock;
    std::thread::id deliveringOn;
    Give current;
    Id last = 0;
    std::map<Id, Give> deferred;
};

} // namespace event_delivery
