#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

namespace test_support {

/// The limit for every wait of a test; far more than needed.
inline constexpr std::chrono::seconds timeout{200};

/// Ends the test program and all processes it has started, with a message, if it still exists after `longest`. For
/// waits without a time limit.
class Deadline {
public:
    explicit Deadline(std::string what, std::chrono::seconds longest = timeout);
    ~Deadline();
    Deadline(const Deadline&) = delete;
    Deadline& operator=(const Deadline&) = delete;

    /// Adds the output of a process so far to the message.
    void Show(std::string_view output);

private:
    void Watch();

    std::string awaited;
    std::string shown;
    std::chrono::seconds limit;
    std::mutex mutex;
    std::condition_variable changed;
    bool isOver = false;
    std::thread watcher;
};

} // namespace test_support
