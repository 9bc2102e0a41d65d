#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

namespace event_delivery {

/// One thread that does what it is given, one piece at a time, in order.
class DeliveryThread {
public:
    using Work = std::function<void()>;

    /// Starts the thread; throws std::system_error when the system has none left.
    DeliveryThread();
    /// As `End`.
    ~DeliveryThread();
    DeliveryThread(const DeliveryThread&) = delete;
    DeliveryThread& operator=(const DeliveryThread&) = delete;

    /// True on the thread of any object of this class.
    static bool IsCurrent();

    /// Queues a piece of work. It must not throw. Dropped once `Stop` was called.
    void Post(Work work);

    /// Work is queued and none is begun until `Resume`. What runs is not waited for.
    void Pause();
    void Resume();

    /// Drops what is queued and waits for the work that runs. False when that did not end within `patience`, or is the
    /// caller itself: then the thread is left to the end of the process, and what its work uses must stay.
    [[nodiscard]] bool Stop(std::chrono::milliseconds patience);

    /// Drops what is queued and ends the thread, however long the work that runs takes. Not out of that work. Once it
    /// returns, nothing uses any more what the work uses.
    void End();

private:
    void Run();
    /// Waits for work; none when the thread is to end.
    Work Next();

    std::mutex lock;
    std::condition_variable changed;
    std::deque<Work> queue;
    bool paused = false;
    bool stopping = false;
    bool ended = false;
    std::thread thread;
};

} // namespace event_delivery
