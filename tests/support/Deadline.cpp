#include "support/Deadline.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

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

void Deadline::Watch() {
    std::unique_lock lock(mutex);
    if (!changed.wait_for(lock, limit, [this] { return isOver; })) {
        std::fprintf(stderr, "Waited in vain for %s.\n", awaited.c_str());
        std::fflush(nullptr);
        std::_Exit(1);
    }
}

} // namespace test_support
