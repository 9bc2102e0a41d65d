#include "event_delivery/DeliveryThread.h"

#include <utility>

namespace event_delivery {
namespace {

thread_local bool isDeliveryThread = false;

} // namespace

DeliveryThread::DeliveryThread() : thread([this] { Run(); }) {}

DeliveryThread::~DeliveryThread() {
    End();
}

void DeliveryThread::End() {
    if (thread.joinable()) {
        // Work under way is waited for by the join.
        (void)Stop(std::chrono::milliseconds::zero());
    }
    if (thread.joinable()) {
        thread.join();
    }
}

bool DeliveryThread::IsCurrent() {
    return isDeliveryThread;
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

bool DeliveryThread::Stop(std::chrono::milliseconds patience) {
    std::deque<Work> dropped;
    std::unique_lock<std::mutex> guard(lock);
    stopping = true;
    dropped.swap(queue);
    changed.notify_all();
    if (thread.get_id() == std::this_thread::get_id() || !changed.wait_for(guard, patience, [this] { return ended; })) {
        return false;
    }
    guard.unlock();
    if (thread.joinable()) {
        thread.join();
    }
    return true;
}

void DeliveryThread::Run() {
    isDeliveryThread = true;
    while (const Work work = Next()) {
        work();
    }
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
