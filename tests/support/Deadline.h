#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace test_support {

/// How long anything may take that a test waits for; far more than it needs.
inline constexpr std::chrono::seconds patience{200};

/// Ends the test program with a message when it still exists after `longest`: for waits that know no time limit.
class Deadline {
public:
    explicit Deadline(std::string what, std::chrono::seconds longest = patience);
    ~Deadline();
    Deadline(const Deadline&) = delete;
    Deadline& operator=(const Deadline&) = delete;

private:
    void Watch();

    std::string awaited;
    std::chrono::seconds limit;
    std::mutex mutex;
    std::condition_variable changed;
    bool isOver = false;
    std::thread watcher;
};

} // namespace test_support
