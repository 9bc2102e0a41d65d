#include "platform/processes/StopSignal.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <thread>

namespace platform {
namespace {

constexpr std::array stopSignals = {SIGINT, SIGTERM, SIGHUP};

/// Global, because a signal handler gets only the signal's number.
std::atomic<Event*> raisedBySignals = nullptr;
/// Handlers in progress: a signal may be handled on any thread while the event is destroyed.
std::atomic<int> handlersRunning = 0;
static_assert(std::atomic<Event*>::is_always_lock_free && std::atomic<int>::is_always_lock_free);

extern "C" void OnStopSignal(int) {
    const int interruptedError = errno;
    ++handlersRunning;
    if (Event* const event = raisedBySignals.load()) {
        event->Raise();
    }
    --handlersRunning;
    errno = interruptedError;
}

void SetHandlers(void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int number : stopSignals) {
        sigaction(number, &action, nullptr);
    }
}

} // namespace

StopSignal::StopSignal() {
    raisedBySignals = &event;
    SetHandlers(OnStopSignal);
}

StopSignal::~StopSignal() {
    SetHandlers(SIG_DFL);
    raisedBySignals = nullptr;
    while (handlersRunning != 0) {
        std::this_thread::yield();
    }
}

} // namespace platform
