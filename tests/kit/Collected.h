#pragma once

#include "kit/Deadline.h"

#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <stdexcept>
#include <utility>
#include <vector>

/// Values added by threads, for which the test waits.
template <typename T>
class Collected {
public:
    void Add(T thing) {
        {
            const std::lock_guard guard(lock);
            things.push_back(std::move(thing));
        }
        changed.notify_all();
    }

    /// Waits until there are `count`, and returns all. Throws std::runtime_error after the tests' timeout.
    std::vector<T> WaitFor(std::size_t count) const {
        std::unique_lock guard(lock);
        if (!changed.wait_for(guard, test_support::timeout, [&] { return things.size() >= count; })) {
            throw std::runtime_error("waited in vain for " + std::to_string(count) + ", " +
                                     std::to_string(things.size()) + " came");
        }
        return things;
    }

    std::vector<T> All() const { return WaitFor(0); }

private:
    mutable std::mutex lock;
    mutable std::condition_variable changed;
    std::vector<T> things;
};
