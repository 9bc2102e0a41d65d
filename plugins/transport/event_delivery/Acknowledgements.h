#pragma once

#include <functional>
#include <map>
#include <mutex>
#include <thread>

#include "controller_plugins/EventTransmitterExtension.h"

namespace event_delivery {

/// How long the sender of an event waits for its acknowledgement.
inline constexpr std::chrono::milliseconds acknowledgementTimeout{20000};

/// The pending acknowledgements of one endpoint's received events. Each is given when the handler returns or, if the
/// handler deferred it, when `Acknowledge` is called. Threads: any; only one thread calls `Deliver`.
class Acknowledgements {
public:
    using Id = EventTransmitterExtension::Acknowledgement;
    /// Acknowledges one event to its sender. Empty if the sender does not wait. Called at most once, without a lock of
    /// this class.
    using Give = std::function<void()>;

    /// Calls `deliver`, which calls a handler and must not throw. Then calls `give` unless the handler deferred it.
    void Deliver(Give give, const std::function<void()>& deliver);

    /// Called from within `deliver`: keeps its `give` for `Acknowledge`. Returns 0 on other threads and if the sender
    /// does not wait.
    Id Defer();
    /// Calls the `give` kept under this id, once.
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
