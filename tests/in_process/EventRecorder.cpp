#include "EventRecorder.h"

#include "support/Deadline.h"

#include <utility>

EventRecorder::EventRecorder(std::function<void(const std::wstring&)> what) : action(std::move(what)) {}

bool EventRecorder::operator()(const std::wstring& payload) {
    action(payload);
    {
        const std::lock_guard lock(mutex);
        payloads.push_back(payload);
    }
    changed.notify_all();
    return true;
}

std::vector<std::wstring> EventRecorder::WaitFor(std::size_t count) {
    const test_support::Deadline deadline("events");
    std::unique_lock lock(mutex);
    changed.wait(lock, [&] { return payloads.size() >= count; });
    return payloads;
}
