#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

namespace test_support {

/// How long anything may take that a test waits for; far more than it needs.
inline constexpr std::chrono::seconds patience{200};

/// Ends the test program, with all processes that it has started, and a message when it still exists after `longest`:
/// for waits that know no time limit.
class Deadline {
public:
    explicit Deadline(std::string what, std::chrono::seconds longest = patience);
    ~Deadline();
    Deadline(const Deadline&) = delete;
    Deadline& operator=(const Deadline&) = delete;

    /// Adds to what the message shows: what a process has printed so far.
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
