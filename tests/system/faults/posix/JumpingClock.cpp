#include "system/faults/posix/JumpingClock.h"

#include <cstdint>
#include <cstdlib>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <time.h>
#include <unistd.h>

namespace {

const std::int64_t* SharedSeconds() {
    static std::int64_t none = 0;
    const char* const path = std::getenv(jumpingClockVariable);
    const int file = path == nullptr ? -1 : open(path, O_RDONLY | O_CLOEXEC);
    if (file < 0) {
        return &none;
    }
    void* const shared = mmap(nullptr, sizeof(std::int64_t), PROT_READ, MAP_SHARED, file, 0);
    close(file);
    return shared == MAP_FAILED ? &none : static_cast<const std::int64_t*>(shared);
}

std::int64_t TurnedBy() {
    static const volatile std::int64_t* const seconds = SharedSeconds();
    return *seconds;
}

timespec TurnedTime() {
    timespec now = {};
    syscall(SYS_clock_gettime, CLOCK_REALTIME, &now);
    now.tv_sec += TurnedBy();
    return now;
}

} // namespace

// The names that the system's headers give these parameters are reserved for it.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)
#pragma GCC visibility push(default)
extern "C" {

int clock_gettime(clockid_t clock, timespec* time) noexcept {
    if (clock == CLOCK_REALTIME || clock == CLOCK_REALTIME_COARSE) {
        *time = TurnedTime();
        return 0;
    }
    return static_cast<int>(syscall(SYS_clock_gettime, clock, time));
}

time_t time(time_t* place) noexcept {
    const time_t seconds = TurnedTime().tv_sec;
    if (place != nullptr) {
        *place = seconds;
    }
    return seconds;
}

int gettimeofday(timeval* place, void*) noexcept {
    const timespec now = TurnedTime();
    *place = {now.tv_sec, now.tv_nsec / 1000};
    return 0;
}
}
#pragma GCC visibility pop
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
