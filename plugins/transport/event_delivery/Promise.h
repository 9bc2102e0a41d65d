#pragma once

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

namespace event_delivery {

/// The result that a sender waits for: whether its event was acknowledged. Differences to std::future<bool>: a promise
/// destroyed without a value yields false, and it uses no thread-local storage, with which the leak checker fails when
/// threads still send at process exit. Threads: any.
class Future {
public:
    /// Waits without a limit.
    [[nodiscard]] bool Get() {
        std::unique_lock<std::mutex> guard(state->lock);
        state->changed.wait(guard, [this] { return state->value.has_value(); });
        return *state->value;
    }

    /// Waits at most `longest`; false on timeout.
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

/// The writing side of a `Future`.
class Promise {
public:
    Promise() = default;
    ~Promise() { Set(false); }
    Promise(const Promise&) = delete;
    Promise& operator=(const Promise&) = delete;

    Future GetFuture() const { return Future(state); }

    /// Only the first value counts.
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
