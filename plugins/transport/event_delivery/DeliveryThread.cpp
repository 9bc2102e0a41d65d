#include "transport/event_delivery/DeliveryThread.h"
#include "platform/system/NeverDestroyed.h"

#include <memory>
#include <set>
#include <utility>

namespace event_delivery {
namespace {

/// The running threads of all objects. Not thread-local: thread-local storage in a library that is loaded at run time
/// makes the leak checker fail at process exit. Never destroyed, because threads may outlive main().
class RunningThreads {
public:
    void Add() {
        const std::lock_guard<std::mutex> guard(lock);
        ids.insert(std::this_thread::get_id());
    }

    void Remove() {
        const std::lock_guard<std::mutex> guard(lock);
        ids.erase(std::this_thread::get_id());
    }

    bool HasCurrent() {
        const std::lock_guard<std::mutex> guard(lock);
        return ids.contains(std::this_thread::get_id());
    }

private:
    std::mutex lock;
    std::set<std::thread::id> ids;
};

RunningThreads& TheRunningThreads() {
    static RunningThreads& threads = platform::MakeNeverDestroyed<RunningThreads>();
    return threads;
}

} // namespace

DeliveryThread::DeliveryThread() : thread([this] { Run(); }) {}

DeliveryThread::~DeliveryThread() {
    End();
}

void DeliveryThread::End() {
    if (thread.joinable()) {
        // The join waits for the work in progress.
        (void)Stop(std::chrono::milliseconds::zero());
    }
    if (thread.joinable()) {
        thread.join();
    }
}

bool DeliveryThread::IsCurrent() {
    return TheRunningThreads().HasCurrent();
}

void DeliveryThread::Pause() {
    const std::lock_guard<std::mutex> guard(lock);
    paused = true;
}

void DeliveryThread::Resume() {
    {
        const std::lock_guard<std::mutex> guard(lock);
        paused = false;
    }
    changed.notify_all();
}

void DeliveryThread::Post(Work work) {
    {
        const std::lock_guard<std::mutex> guard(lock);
        if (stopping) {
            return;
        }
        queue.push_back(std::move(work));
    }
    changed.notify_all();
}

bool DeliveryThread::Stop(std::chrono::milliseconds timeout) {
    std::deque<Work> dropped;
    std::unique_lock<std::mutex> guard(lock);
    stopping = true;
    dropped.swap(queue);
    changed.notify_all();
    if (thread.get_id() == std::this_thread::get_id() || !changed.wait_for(guard, timeout, [this] { return ended; })) {
        return false;
    }
    guard.unlock();
    if (thread.joinable()) {
        thread.join();
    }
    return true;
}

void DeliveryThread::Run() {
    TheRunningThreads().Add();
    while (const Work work = Next()) {
        work();
    }
    TheRunningThreads().Remove();
    const std::lock_guard<std::mutex> guard(lock);
    ended = true;
    changed.notify_all();
}

DeliveryThread::Work DeliveryThread::Next() {
    std::unique_lock<std::mutex> guard(lock);
    changed.wait(guard, [this] { return stopping || (!paused && !queue.empty()); });
    if (stopping) {
        return {};
    }
    Work work = std::move(queue.front());
    queue.pop_front();
    return work;
}

} // namespace event_delivery
