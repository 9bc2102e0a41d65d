#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "CommonControllerLib/EventTransmitter.h"
#include "support/Deadline.h"
#include "transport/local_socket/Network.h"

/// Things that threads add and the test waits for.
template <typename T>
class Collected {
public:
    void Add(T thing) {
        {
            const std::lock_guard<std::mutex> guard(lock);
            things.push_back(std::move(thing));
        }
        changed.notify_all();
    }

    /// Waits until there are `count`, and gives all there are then (fewer at the deadline).
    std::vector<T> WaitFor(std::size_t count) const {
        std::unique_lock<std::mutex> guard(lock);
        changed.wait_for(guard, test_support::patience, [&] { return things.size() >= count; });
        return things;
    }

    std::vector<T> All() const { return WaitFor(0); }

private:
    mutable std::mutex lock;
    mutable std::condition_variable changed;
    std::vector<T> things;
};

/// A handler that keeps what it was given, then does what the test wants.
class RecordingHandler final : public CallbackFunctor {
public:
    using Action = std::function<void(const std::wstring& payload)>;

    explicit RecordingHandler(Action what = [](const std::wstring&) {}) : action(std::move(what)) {}

    bool operator()(const std::wstring& payload) override {
        payloads.Add(payload);
        action(payload);
        return true;
    }

    Collected<std::wstring> payloads;

private:
    Action action;
};

/// Keeps log lines.
class RecordingLog {
public:
    local_socket::Network::Log Function() {
        return [this](const std::wstring& line) { lines.Add(line); };
    }

    Collected<std::wstring> lines;
};
