#pragma once

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

namespace event_delivery {

/// What a sender waits for: whether his event was acknowledged. As std::future<bool>, but a promise that is dropped
/// unkept gives false, and there is no thread-local storage, with which the leak checker fails when threads still send
/// while the process ends. Any thread.
class Future {
public:
    /// Waits as long as it takes.
    [[nodiscard]] bool Get() {
        std::unique_lock<std::mutex> guard(state->lock);
        state->changed.wait(guard, [this] { return state->value.has_value(); });
        return *state->value;
    }

    /// Waits up to `longest`; false when it is over.
    [[nodiscard]] bool Get(std::chrono::milliseconds longest) {
        std::unique_lock<std::mutex> guard(state->lock);
        return state->changed.wait_for(guard, longest, [this] { return state->value.has_value(); }) && *state->value;
    }

private:
    friend class Promise;
    struct State {
        std::mutex lock;
        std::condition_variable changed;
        std::optional<bool> value;
    };
    explicit Future(std::shared_ptr<State> shared) : state(std::move(shared)) {}

    std::shared_ptr<State> state;
};

/// The other end of a `Future`.
class Promise {
public:
    Promise() = default;
    ~Promise() { Set(false); }
    Promise(const Promise&) = delete;
    Promise& operator=(const Promise&) = delete;

    Future GetFuture() const { return Future(state); }

    /// The first value counts.
    void Set(bool value) {
        {
            const std::lock_guard<std::mutex> guard(state->lock);
            if (state->value) {
                return;
            }
            state->value = value;
        }
        state->changed.notify_all();
    }

private:
    std::shared_ptr<Future::State> state = std::make_shared<Future::State>();
};

} // namespace event_delivery
