#include "kit/Deadline.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

#include "kit/OtherProcesses.h"

namespace test_support {

Deadline::Deadline(std::string what, std::chrono::seconds longest)
    : awaited(std::move(what)), limit(longest), watcher([this] { Watch(); }) {}

Deadline::~Deadline() {
    {
        const std::lock_guard lock(mutex);
        isOver = true;
    }
    changed.notify_all();
    watcher.join();
}

void Deadline::Show(std::string_view output) {
    const std::lock_guard lock(mutex);
    shown += output;
}

void Deadline::Watch() {
    std::unique_lock lock(mutex);
    if (!changed.wait_for(lock, limit, [this] { return isOver; })) {
        std::fprintf(stderr, "Waited in vain for %s.\n", awaited.c_str());
        if (!shown.empty()) {
            std::fprintf(stderr, "So far it was:\n%s\n", shown.c_str());
        }
        std::fflush(nullptr);
        // They would keep the output of this program open, and block a process that waits for its end.
        EndAllStarted();
        std::_Exit(1);
    }
}

} // namespace test_support
