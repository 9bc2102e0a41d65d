#pragma once

#include "CommonControllerLib/CallbackFunctor.h"

#include <condition_variable>
#include <cstddef>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

/// A handler that keeps what it was given, and does what a test tells it to.
class EventRecorder final : public CallbackFunctor {
public:
    explicit EventRecorder(std::function<void(const std::wstring&)> what = [](const std::wstring&) {});

    bool operator()(const std::wstring& payload) override;

    /// Waits until so many events have been handled and gives the payloads; ends the program when they do not come.
    std::vector<std::wstring> WaitFor(std::size_t count);

private:
    std::function<void(const std::wstring&)> action;
    std::mutex mutex;
    std::condition_variable changed;
    std::vector<std::wstring> payloads;
};
