#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

namespace event_delivery {

/// One thread that executes queued work items, one at a time, in order.
class DeliveryThread {
public:
    using Work = std::function<void()>;

    /// Starts the thread. Throws std::system_error if the system has no thread left.
    DeliveryThread();
    /// Same as `End`.
    ~DeliveryThread();
    DeliveryThread(const DeliveryThread&) = delete;
    DeliveryThread& operator=(const DeliveryThread&) = delete;

    /// True on the thread of any object of this class.
    static bool IsCurrent();

    /// Queues a work item, which must not throw. Dropped once `Stop` was called.
    void Post(Work work);

    /// Queues work without starting it until `Resume` is called. Does not wait for the running work item.
    void Pause();
    void Resume();

    /// Drops the queued work and waits for the running work item. Returns false if that did not finish within
    /// `timeout` or is the caller itself; then the thread runs until the process ends, and the objects used by the
    /// work must stay alive.
    [[nodiscard]] bool Stop(std::chrono::milliseconds timeout);

    /// Drops the queued work and ends the thread, however long the running work item takes. Must not be called from a
    /// work item. After the return, nothing uses the objects of the work any more.
    void End();

private:
    void Run();
    /// Waits for work. Returns an empty function when the thread must end.
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
